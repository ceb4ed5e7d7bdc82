// The installation's paths, and reading its text files: the settings and the parameters.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace orvex::startup {

// Why a path is no file, or no folder, that can be worked with: "não existe", "é uma pasta, e não um
// ficheiro" and the like; empty when it is one. Whatever it is, it is not opened: a pipe would wait for
// somebody to write.
std::string defeito_do_ficheiro(const std::filesystem::path& caminho);
std::string defeito_da_pasta(const std::filesystem::path& caminho);

// Lines of a text file in UTF-8, without their line ends. Throws Falha, naming the file, what it is (such as
// "de parâmetros") and why it cannot be read.
std::vector<std::string> le_linhas(const std::filesystem::path& ficheiro, const std::string& qual);

// An INI file: [section] lines, name=value lines (the value is everything after the first "=", blanks at its
// ends dropped), remarks that start with ";" or "#". Keys of the result are "section.name", both in upper
// case.
std::map<std::string, std::string> le_ini(const std::filesystem::path& ficheiro);

} // namespace orvex::startup
