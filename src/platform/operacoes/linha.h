// One event as one line of the log: when, by which process, what, and name="value" for each thing known of
// it.
//
//     2026-03-15T10:20:30.123+00:00 [4711] erp operacao="cria" desfecho="feito" chave="GR/1/12/2026"
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::platform::operacoes {

// Texts that may be repeated nowhere, and what stands in their place. One of less than four characters is
// sought as a whole word only: it would be found in the middle of too many others.
class Segredos {
  public:
    void junta(const std::string& segredo);
    std::string tira_de(std::string texto) const;

  private:
    std::vector<std::string> segredos_;
};

class Linha {
  public:
    static constexpr std::size_t texto_maximo = 600; // UTF-16 units of a text that is cut

    Linha(const char* acontecimento, const Segredos& segredos);

    // What the program made itself: keys, codes, weights. Empty values are left out.
    Linha& com(const char* nome, std::string_view valor);
    // What anybody may have written: without secrets, and cut.
    Linha& com_texto(const char* nome, std::string_view valor);

    std::string texto() const { return texto_ + "\n"; }

  private:
    const Segredos& segredos_;
    std::string texto_;
};

} // namespace orvex::platform::operacoes
