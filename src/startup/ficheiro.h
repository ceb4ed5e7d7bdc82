// Reading the installation's text files: the settings and the parameters.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace orvex::startup {

// Lines of a text file in UTF-8, without their line ends. Throws Falha, naming the file and what it is (such
// as "de parâmetros"), when it cannot be read.
std::vector<std::string> le_linhas(const std::filesystem::path& ficheiro, const std::string& especie);

// An INI file: [section] lines, name=value lines (the value is everything after the first "=", blanks at its
// ends dropped), remarks that start with ";" or "#". Keys of the result are "section.name", both in upper
// case.
std::map<std::string, std::string> le_ini(const std::filesystem::path& ficheiro);

} // namespace orvex::startup
