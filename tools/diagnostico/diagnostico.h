// Tells whether an installation can work, without changing anything in it: only questions are asked.
#pragma once

#include "startup/instalacao.h"

#include <string>
#include <vector>

namespace orvex::diagnostico {

using startup::bits_do_programa;
inline std::string de_bits(int bits) { return std::to_string(bits) + " bits"; }

enum class Estado {
    ok,
    erro,           // the program would fail, or write what is wrong; the text says what to do
    aviso,          // works, but hardly as it was meant
    informacao,     // neither good nor bad
    nao_verificado, // could not be asked, or was not answered; never to be taken as good
};

struct Resultado {
    std::string o_que;
    Estado estado;
    std::string texto; // holds no password
};
using Resultados = std::vector<Resultado>;

// Never throws for what is wrong with the installation; what depends on something that failed is told as not
// verified, everything else is verified all the same. `sem_32_bits` says why the program of the word size
// that the settings choose does not do it.
Resultados diagnostica(const startup::PastasInstalacao& pastas, const std::string& sem_32_bits = {});

bool tem_erros(const Resultados& resultados);
std::string texto(const Resultados& resultados); // one line each

std::string enumera(const std::vector<std::string>& nomes); // "a, b"

} // namespace orvex::diagnostico
