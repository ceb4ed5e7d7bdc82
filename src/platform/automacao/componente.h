// A component's session and the objects that it gave, on the thread of their apartment: nothing here is
// called from anywhere else.
#pragma once

#include "platform/automacao/assinaturas.h"
#include "platform/automacao/com.h"

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::platform::automacao {

// The arguments of one call in their order. Those by reference are values of their own until it is over.
class Argumentos {
  public:
    Argumentos& por_valor(Valor valor);
    Argumentos& por_referencia(Valor valor); // of the very type that it has
    Argumentos& de_saida();                  // any type may be left there

    std::vector<VARIANT>& postos() { return postos_; }
    const VARIANT& deixado(std::size_t posicao) const { return valores_[posicao].variant(); }

  private:
    std::deque<Valor> valores_; // what is pointed at stays where it is
    std::vector<VARIANT> postos_;
};

class Componente {
  public:
    using Objecto = std::uint64_t;
    static constexpr Objecto sessao = 0;

    explicit Componente(Referencia<IDispatch> da_sessao);

    // `de_onde` tells objects of different kinds apart, and names them in failures.
    Objecto junta(Referencia<IDispatch> objecto, const std::string& de_onde);
    void larga(Objecto objecto) { objectos_.erase(objecto); }
    const Referencia<IDispatch>& despacho(Objecto objecto) const { return objectos_.at(objecto).despacho; }
    // The member's full name, as failures tell it: "Cab.Ano", or the operation alone for one of the session.
    std::string nome(Objecto objecto, std::string_view membro) const;

    // Throw Falha under the member's full name; once the component has gone, always the same.
    Valor invoca(Objecto objecto, std::string_view membro, WORD modo, Argumentos& argumentos);
    Valor le(Objecto objecto, std::string_view membro);
    void poe(Objecto objecto, std::string_view membro, Valor valor);

    bool terminou() const { return !terminou_.empty(); }
    // From here on there is a log-in to undo, or none.
    void define_ligada(bool ligada) { ligada_ = ligada; }
    // Releases the objects, logs off if need be, releases the session; never throws.
    void fecha() noexcept;

  private:
    struct Aberto {
        Referencia<IDispatch> despacho;
        std::string de_onde;
        std::string tipo; // empty until it is first asked for
    };

    const std::string& tipo_de(Aberto& objecto);
    DISPID pergunta(Aberto& objecto, const std::string& nome, std::string_view membro);
    [[noreturn]] void lanca_e_lembra(const std::string& nome, HRESULT resposta, class Excepcao& excepcao,
                                     const UINT* argumento, std::size_t quantos);

    std::map<Objecto, Aberto> objectos_;
    Objecto ultimo_ = sessao;
    std::map<std::string, DISPID, std::less<>> numeros_; // by type and member
    std::string terminou_;
    bool ligada_ = false;
};

} // namespace orvex::platform::automacao
