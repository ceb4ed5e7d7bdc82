// The ODBC drivers of this machine.
#pragma once

#include <string>
#include <vector>

namespace orvex::diagnostico {

std::vector<std::string> controladores_instalados();

} // namespace orvex::diagnostico
