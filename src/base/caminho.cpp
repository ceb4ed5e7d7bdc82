#include "base/caminho.h"

#include <cstdlib>

namespace orvex::base {

std::filesystem::path caminho_de(std::string_view utf8) { return std::u8string(utf8.begin(), utf8.end()); }

std::string texto_de(const std::filesystem::path& caminho) {
    const std::u8string texto = caminho.u8string();
    return {texto.begin(), texto.end()};
}

std::filesystem::path caminho_do_ambiente(const std::string& nome) {
#ifdef _WIN32
    const wchar_t* valor = _wgetenv(caminho_de(nome).c_str());
#else
    const char* valor = std::getenv(nome.c_str()); // NOLINT(concurrency-mt-unsafe)
#endif
    return valor == nullptr ? std::filesystem::path() : std::filesystem::path(valor);
}

std::string causa(const std::filesystem::path& ficheiro, const std::error_code& erro) {
    if (!erro) return {};
    std::string porque = "erro " + std::to_string(erro.value()) + " do sistema";
    if (erro == std::errc::permission_denied || erro == std::errc::read_only_file_system)
        porque = "não há permissão";
    if (erro == std::errc::no_space_on_device) porque = "não há espaço no disco";
    if (erro == std::errc::not_a_directory || erro == std::errc::is_a_directory)
        porque = "há um ficheiro no lugar de uma pasta, ou uma pasta no dele";
    return "«" + texto_de(ficheiro) + "»: " + porque;
}

} // namespace orvex::base
