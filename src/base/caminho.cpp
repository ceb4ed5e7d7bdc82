#include "base/caminho.h"

#include "base/texto.h"

#include <cstdlib>

#ifdef _WIN32
#include <windows.h>

#include <shellapi.h>
#endif

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

std::string chave_do_caminho(const std::filesystem::path& caminho) {
    const bool letras_contam = std::filesystem::path::preferred_separator == '/';
    return letras_contam ? texto_de(caminho) : maiusculas(texto_de(caminho));
}

#ifdef _WIN32
// The standard paths of this compiler take \\server\share for a folder of the current drive.
std::filesystem::path caminho_completo(const std::filesystem::path& caminho,
                                       const std::filesystem::path& pasta) {
    const std::wstring& texto = caminho.native();
    const auto barra = [&](std::size_t onde) { return texto[onde] == L'\\' || texto[onde] == L'/'; };
    const bool de_rede = texto.size() > 2 && barra(0) && barra(1);
    const std::filesystem::path junto = de_rede || pasta.empty() ? caminho : pasta / caminho;
    std::wstring completo(::GetFullPathNameW(junto.c_str(), 0, nullptr, nullptr), L'\0'); // with its end
    const DWORD tamanho =
        ::GetFullPathNameW(junto.c_str(), static_cast<DWORD>(completo.size()), completo.data(), nullptr);
    if (tamanho == 0 || tamanho >= completo.size()) return junto;
    completo.resize(tamanho);
    return completo;
}

std::vector<std::string> linha_de_comando(int argc, const char* const* argv) {
    int quantos = 0;
    LPWSTR* largos = ::CommandLineToArgvW(::GetCommandLineW(), &quantos);
    if (largos == nullptr) return {argv, argv + argc};
    std::vector<std::string> argumentos;
    for (int i = 0; i < quantos; ++i)
        argumentos.push_back(texto_de(largos[i]));
    ::LocalFree(static_cast<HLOCAL>(largos));
    return argumentos;
}

std::filesystem::path caminho_do_programa(const std::string& /*chamado*/) {
    std::wstring proprio(32768, L'\0'); // no path is longer
    proprio.resize(::GetModuleFileNameW(nullptr, proprio.data(), static_cast<DWORD>(proprio.size())));
    return proprio;
}
#else
std::filesystem::path caminho_completo(const std::filesystem::path& caminho,
                                       const std::filesystem::path& pasta) {
    std::error_code erro; // the folder we are in has gone: the path stays relative, and is not found
    const std::filesystem::path completo = std::filesystem::absolute(pasta / caminho, erro);
    return (erro ? pasta / caminho : completo).lexically_normal();
}

std::vector<std::string> linha_de_comando(int argc, const char* const* argv) { return {argv, argv + argc}; }

std::filesystem::path caminho_do_programa(const std::string& chamado) {
    std::error_code erro;
    const auto proprio = std::filesystem::read_symlink("/proc/self/exe", erro);
    return erro ? caminho_completo(caminho_de(chamado)) : proprio;
}
#endif

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
