// Finding a component by the name that the settings give it.
#pragma once

#include "platform/automacao/com.h"

#include <optional>
#include <string>

namespace orvex::platform::automacao {

// What programs of one word size see below the classes of the machine and the user: a text, with the values
// of its variables; and the number, in braces, of the class that a name stands for, be it a name without a
// version. None where there is none. The name of a text may be null: it is the key's own.
std::optional<std::wstring> texto_das_classes(const std::wstring& chave, const wchar_t* nome, int bits);
std::optional<std::wstring> numero_da_classe(const std::wstring& classe, int bits);

// The session of the component's class, in process or out of it as it is registered. `classe` is its name, or
// its number in braces. Throws Falha saying why there is none.
Referencia<IDispatch> cria_componente(const std::string& classe);

} // namespace orvex::platform::automacao
