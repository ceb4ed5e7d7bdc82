// Text on its way to and from the driver: UTF-16 there, UTF-8 in the program.
#pragma once

#include "platform/odbc/odbc.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::platform::odbc {

using TextoLargo = std::vector<SQLWCHAR>;

TextoLargo largo(std::string_view texto); // with a final zero that is not part of the text
std::string estreito(const SQLWCHAR* texto, std::size_t unidades);

} // namespace orvex::platform::odbc
