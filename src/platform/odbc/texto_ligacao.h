// The program's connection text in the words of an ODBC driver.
#pragma once

#include "platform/odbc/controladores.h"

#include <string>

namespace orvex::platform::odbc {

#ifdef _WIN32
inline constexpr const char* controlador_normal = "ODBC Driver 18 for SQL Server";
#else
inline constexpr const char* controlador_normal = "FreeTDS";
#endif

// From what ConstrutorLigacao built. Encrypted, and with the server's certificate checked where the driver
// does that, unless the settings say otherwise. Throws Falha for a setting that is not understood.
std::string texto_odbc(const std::string& ligacao, Fala fala);
std::string texto_odbc(const std::string& ligacao); // to what the driver is taken for

// What the driver that the text names is taken for before it is asked.
Fala fala_do_controlador(const std::string& ligacao);

} // namespace orvex::platform::odbc
