// What is asked of the two sessions, told before and after it is done to whoever listens.
#pragma once

#include <chrono>
#include <exception>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>

namespace orvex::platform::operacoes {

struct Operacao {
    enum class Especie {
        // of the database and its record sets
        abre,
        consulta,
        abre_actualizavel,
        executa,
        le,
        conta,
        altera,
        comprimento,
        inicia,
        tranca,
        confirma,
        desfaz,
        em_transaccao,
        // of the ERP and its objects
        liga,
        cria_objecto,
        obtem,
        poe,
        chama,
        prepara_stock,
        cria_stock,
        submete,
        submetido,
        anula,
        resultado,
    };

    Especie especie{};
    // What it is about, without the values of a row or document: the statement, the short name of an object
    // and its member.
    std::string_view nome{};
    std::string_view membro{};
    // The whole of it, made only for who asks, while the operation lasts.
    std::function<std::string()> texto{};
};

struct Fim {
    std::chrono::nanoseconds duracao{};
    const std::exception* falha = nullptr; // none when it was done
};

class Ouvinte {
  public:
    virtual ~Ouvinte() = default;

    // What it throws keeps the operation from being done, and goes to whoever asked for it.
    virtual void antes(const Operacao&) {}
    // What it throws goes to the asker in place of the answer.
    virtual void depois(const Operacao&, const Fim&) {}
    // A text that may be repeated nowhere.
    virtual void segredo(const std::string&) {}
};

// What a failure is told of: the operation in which it came, or the statement that was sent only now
// (startup::FalhaAdiada), of which nothing was told before but that it was asked for.
Operacao a_que_falhou(const Operacao& esta, const std::exception& falha);

// Does the work, and tells of it. A failure goes on as it is.
template <typename Trabalho>
auto com_ouvinte(Ouvinte& ouvinte, const Operacao& operacao, Trabalho trabalho) {
    using Relogio = std::chrono::steady_clock;
    ouvinte.antes(operacao);
    const auto inicio = Relogio::now();
    const auto faz = [&] {
        try {
            return trabalho();
        } catch (const std::exception& falha) {
            ouvinte.depois(a_que_falhou(operacao, falha), {Relogio::now() - inicio, &falha});
            throw;
        }
    };
    if constexpr (std::is_void_v<std::invoke_result_t<Trabalho>>) {
        faz();
        ouvinte.depois(operacao, {Relogio::now() - inicio});
    } else {
        auto resultado = faz();
        ouvinte.depois(operacao, {Relogio::now() - inicio});
        return resultado;
    }
}

} // namespace orvex::platform::operacoes
