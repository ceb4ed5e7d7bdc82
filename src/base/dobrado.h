// Text as it is searched: lower case and without accents, for the letters of western European languages.
#pragma once

#include <string>
#include <string_view>

namespace orvex::base {

void dobra_em(std::string_view texto, std::string& destino); // at its end
std::string dobrado(std::string_view texto);

} // namespace orvex::base
