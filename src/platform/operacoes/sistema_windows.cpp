#include "platform/operacoes/sistema.h"

#include "base/caminho.h"

#include <array>
#include <windows.h>

namespace orvex::platform::operacoes {
namespace {

namespace fs = std::filesystem;

std::error_code erro_do_sistema() { return {static_cast<int>(::GetLastError()), std::system_category()}; }

// Bytes appended under this right go to the end in one piece, whoever else appends.
HANDLE abre(const fs::path& ficheiro, DWORD partilha, DWORD existencia) {
    return ::CreateFileW(ficheiro.c_str(), FILE_APPEND_DATA | SYNCHRONIZE, partilha, nullptr, existencia,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
}

constexpr DWORD com_todos = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

} // namespace

fs::path pasta_do_registo() {
    const fs::path local = base::caminho_do_ambiente("LOCALAPPDATA"); // may be on a share
    return local.empty() ? local : local / "orvex";
}

std::string utilizador_da_maquina() {
    std::array<wchar_t, 257> nome{};
    DWORD tamanho = static_cast<DWORD>(nome.size());
    return ::GetUserNameW(nome.data(), &tamanho) != 0 ? base::texto_de(fs::path(nome.data())) : "";
}

std::string nome_da_maquina() {
    std::array<wchar_t, MAX_COMPUTERNAME_LENGTH + 1> nome{};
    DWORD tamanho = static_cast<DWORD>(nome.size());
    return ::GetComputerNameW(nome.data(), &tamanho) != 0 ? base::texto_de(fs::path(nome.data())) : "";
}

long numero_do_processo() { return static_cast<long>(::GetCurrentProcessId()); }

std::error_code acrescenta(const fs::path& ficheiro, const std::string& bytes) {
    const HANDLE aberto = abre(ficheiro, com_todos, OPEN_ALWAYS);
    if (aberto == INVALID_HANDLE_VALUE) return erro_do_sistema();
    DWORD escritos = 0;
    std::error_code erro;
    if (::WriteFile(aberto, bytes.data(), static_cast<DWORD>(bytes.size()), &escritos, nullptr) == 0)
        erro = erro_do_sistema();
    ::CloseHandle(aberto);
    return erro;
}

// Rights on a folder that is still to be made cannot be asked for without making it.
std::error_code pode_acrescentar(const fs::path& ficheiro) {
    const HANDLE aberto = abre(ficheiro, com_todos, OPEN_EXISTING);
    if (aberto != INVALID_HANDLE_VALUE) {
        ::CloseHandle(aberto);
        return {};
    }
    const std::error_code erro = erro_do_sistema();
    if (erro != std::errc::no_such_file_or_directory) return erro;
    // The system says the same where a file stands in the place of a folder.
    std::error_code sem_nada;
    fs::path acima = ficheiro.parent_path();
    while (acima.has_relative_path() && !fs::exists(acima, sem_nada))
        acima = acima.parent_path();
    return fs::is_directory(acima, sem_nada) ? std::error_code()
                                             : std::make_error_code(std::errc::not_a_directory);
}

Vez::Vez(const fs::path& ficheiro) {
    const HANDLE aberto = abre(ficheiro, 0, OPEN_ALWAYS);
    if (aberto != INVALID_HANDLE_VALUE) aberto_ = reinterpret_cast<std::intptr_t>(aberto);
}

Vez::~Vez() {
    if (minha()) ::CloseHandle(reinterpret_cast<HANDLE>(aberto_));
}

} // namespace orvex::platform::operacoes
