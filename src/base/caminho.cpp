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

} // namespace orvex::base
