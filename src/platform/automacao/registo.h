// Finding a component by the name that the settings give it.
#pragma once

#include "platform/automacao/com.h"

#include <string>

namespace orvex::platform::automacao {

// The session of the component's class, in process or out of it as it is registered. `classe` is its name, or
// its number in braces. Throws Falha saying why there is none.
Referencia<IDispatch> cria_componente(const std::string& classe);

} // namespace orvex::platform::automacao
