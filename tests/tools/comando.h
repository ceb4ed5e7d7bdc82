// The real programs, run from the shell.
#pragma once

#include "tests/apoio/pasta_temporaria.h"

#include <cstdlib>
#include <sys/wait.h>

namespace orvex::testes {

struct Fim {
    int codigo; // -1 where a signal ended it
    std::string texto;
};

// Both outputs are one text.
inline Fim corre(const std::string& comando) {
    const PastaTemporaria pasta;
    const auto saida = pasta.pasta() / "saida";
    const int estado = std::system(("(" + comando + ") >'" + saida.string() + "' 2>&1").c_str());
    return {WIFEXITED(estado) ? WEXITSTATUS(estado) : -1, conteudo_de(saida)};
}

} // namespace orvex::testes
