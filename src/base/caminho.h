// Paths, the command line and the environment, between the system's own form and the UTF-8 of all our texts.
// The one place that does it: what else a standard path makes of a plain text depends on the system.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace orvex::base {

std::filesystem::path caminho_de(std::string_view utf8);
std::string texto_de(const std::filesystem::path& caminho);

// Why the system would not write a file: "«C:\x»: não há permissão"; empty without an error.
std::string causa(const std::filesystem::path& ficheiro, const std::error_code& erro);

// A path that the environment names; empty when it names none. To be asked before there is any thread.
std::filesystem::path caminho_do_ambiente(const std::string& nome);

// Absolute, without "." and "..", as far as the system can tell. What is relative is so to `pasta`, or to
// where the program was started.
std::filesystem::path caminho_completo(const std::filesystem::path& caminho,
                                       const std::filesystem::path& pasta = {});

// The same text for all ways to write a complete path where the system takes them for one.
std::string chave_do_caminho(const std::filesystem::path& caminho);

// The command line, the program's name first. What main was given has lost letters on some systems; there
// the system is asked again.
std::vector<std::string> linha_de_comando(int argc, const char* const* argv);

// The program that runs. Its name as called tells nothing when it was found on the path, and is asked where
// the system does not tell.
std::filesystem::path caminho_do_programa(const std::string& chamado);

} // namespace orvex::base
