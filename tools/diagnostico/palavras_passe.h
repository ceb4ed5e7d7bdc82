// The passwords of an installation's settings, put into the system's protected storage.
#pragma once

#include "startup/instalacao.h"

#include <functional>
#include <iosfwd>
#include <string>

namespace orvex::diagnostico {

// The settings with each password protected that was not: everything else, line ends and encoding included,
// stays byte for byte. `protege` gives the text that follows the mark. Throws Falha where the other values
// would then read differently.
std::string com_palavras_passe_protegidas(const std::string& definicoes,
                                          const std::function<std::string(const std::string&)>& protege);

// In the installation's settings, and in the catalogue that may stand in for them; says what was done. A file
// is changed whole or not at all. Throws Falha.
void protege_palavras_passe(const startup::PastasInstalacao& pastas, std::ostream& saida);

} // namespace orvex::diagnostico
