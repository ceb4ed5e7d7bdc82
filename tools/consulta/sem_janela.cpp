// Of a build without windows.
#include "tools/consulta/janela.h"

#include <iostream>

namespace orvex::consulta {

int corre_janela(int /*argc*/, char** /*argv*/, const Opcoes& /*opcoes*/) {
    std::cerr << "Este programa não tem janela.\n\n" << uso() << "\n";
    return 1;
}

} // namespace orvex::consulta
