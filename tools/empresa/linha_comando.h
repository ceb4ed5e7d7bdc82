#pragma once

#include "empresa_demo.h"

#include <span>
#include <string>

namespace orvex::demo {

std::string uso();

// orvex-empresa PASTA [--clientes N] [--artigos N] [--linhas N] [--semente S]. Throws Falha, with a text for
// the user, for anything else.
OpcoesEmpresa le_argumentos(std::span<const std::string> argumentos);

} // namespace orvex::demo
