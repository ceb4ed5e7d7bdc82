// The part of the diagnosis about the automation component of an ERP: what the program would load.
#pragma once

#include "diagnostico.h"
#include "registo.h"

namespace orvex::diagnostico {

// `registada` is what the system has under the name that the settings give.
Resultado verifica_componente(const std::string& componente, const std::optional<ClasseRegistada>& registada);

} // namespace orvex::diagnostico
