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

// The command line, the program's name first. A letter is what the system hands to main: where that is wide
// characters, no accent is lost on the way.
template <typename Letra>
std::vector<std::string> linha_de_comando(int argc, Letra* const* argv) {
    std::vector<std::string> argumentos;
    argumentos.reserve(static_cast<std::size_t>(argc));
    for (int i = 0; i < argc; ++i)
        argumentos.push_back(texto_de(std::filesystem::path(argv[i])));
    return argumentos;
}

} // namespace orvex::base
