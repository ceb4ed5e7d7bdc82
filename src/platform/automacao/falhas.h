// What the automation answers to a call that failed, told as the program tells failures. A Falha of these has
// the answer's own number.
#pragma once

#include "base/falha.h"
#include "platform/automacao/com.h"

#include <optional>
#include <string>

namespace orvex::platform::automacao {

// The component has gone: nothing can be asked of it any more.
class ComponenteTerminou : public base::Falha {
  public:
    using Falha::Falha;
};

// What a component says of its own failure; whatever it says later than at once is asked for when it is read.
class Excepcao {
  public:
    Excepcao() = default;
    Excepcao(const Excepcao&) = delete;
    Excepcao& operator=(const Excepcao&) = delete;
    ~Excepcao();

    EXCEPINFO* para_receber() { return &info_; }
    void completa();
    std::string descricao() const; // empty when it says none
    std::string origem() const;
    HRESULT numero() const; // 0 when it says none

  private:
    EXCEPINFO info_{};
};

// The system's own words for a number, and the number: "Acesso negado. (0x80070005)".
std::string texto_do_sistema(HRESULT numero);
// Without blanks and line ends at either end.
std::string aparado(const std::string& texto);

// `nome` is that of the operation, or of object and member; `argumento`, counted from 1, the one that was
// refused.
[[noreturn]] void lanca(const std::string& nome, HRESULT resposta, Excepcao& excepcao,
                        std::optional<unsigned> argumento = {});

// A failure of ours in what the call was given, or gave back, told under its name.
template <typename Accao>
auto com_nome(const std::string& nome, Accao accao) {
    try {
        return accao();
    } catch (const ComponenteTerminou&) {
        throw;
    } catch (const base::Falha& falha) {
        throw base::Falha(nome + ": " + falha.what(), falha.numero());
    }
}

} // namespace orvex::platform::automacao
