// The installation's paths, and reading its text files: the settings and the parameters.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::startup {

// Why a path is no file, or no folder, that can be worked with: "não existe", "é uma pasta, e não um
// ficheiro" and the like; empty when it is one. Whatever it is, it is not opened: a pipe would wait for
// somebody to write.
std::string defeito_do_ficheiro(const std::filesystem::path& caminho);
std::string defeito_da_pasta(const std::filesystem::path& caminho);

// A text file as it lies there. Throws Falha, naming the file, what it is (such as "de parâmetros") and why
// it cannot be read.
std::string le_bytes(const std::filesystem::path& ficheiro, const std::string& qual);
// Its lines in UTF-8, without their line ends.
std::vector<std::string> le_linhas(const std::filesystem::path& ficheiro, const std::string& qual);

// An INI text: [section] lines, name=value lines (the value is everything after the first "=", blanks at its
// ends dropped), remarks that start with ";" or "#". Keys are "section.name", both in upper case; the values
// are parts of the text.
struct LinhaINI {
    std::string chave;
    std::string_view valor;
};
std::vector<LinhaINI> linhas_ini(std::string_view texto);

// The values of a file by their keys; of two lines with one key the first counts.
std::map<std::string, std::string> le_ini(const std::filesystem::path& ficheiro);

} // namespace orvex::startup
