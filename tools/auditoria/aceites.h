// The file of accepted findings.
#pragma once

#include "auditoria.h"

#include <filesystem>

namespace orvex::auditoria {

// Throws Falha when it cannot be read.
Aceites le_aceites(const std::filesystem::path& ficheiro);
// All that was found now, accepted before or not, each under a line that says it in full. Throws Falha.
void escreve_aceites(const std::filesystem::path& ficheiro, const Relatorio& relatorio);

} // namespace orvex::auditoria
