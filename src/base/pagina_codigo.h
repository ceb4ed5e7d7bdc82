// Text files of the installation are written in the system's 8-bit code page (Windows-1252); the program
// works in UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace orvex::base {

// Gives the file's text in UTF-8. Bytes that are well-formed UTF-8 are taken as it; everything else as
// Windows-1252, where no byte is invalid. A byte-order mark at the beginning is dropped.
std::string texto_de_ficheiro(std::string_view bytes);

} // namespace orvex::base
