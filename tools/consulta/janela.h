// The enquiries' window.
#pragma once

#include "tools/consulta/linha_comando.h"

#include <string>

namespace orvex::consulta {

// Until the user closes it. Gives how the program ends; what fails is told.
int corre_janela(int argc, char** argv, const Opcoes& opcoes);

} // namespace orvex::consulta
