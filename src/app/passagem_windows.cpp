#include "app/passagem.h"

#include "base/caminho.h"
#include "base/falha.h"

#include <windows.h>

namespace orvex::app {
namespace {

// Waits for it, and tells how it ended.
int corre(const std::filesystem::path& programa) {
    STARTUPINFOW como{};
    ::GetStartupInfoW(&como);
    como.dwFlags |= STARTF_USESTDHANDLES;
    como.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    como.hStdOutput = ::GetStdHandle(STD_OUTPUT_HANDLE);
    como.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
    // A program with windows writes on the console of who started it, which for the other is this one.
    const bool ligada = ::AttachConsole(ATTACH_PARENT_PROCESS) != 0;
    std::wstring linha = ::GetCommandLineW();
    PROCESS_INFORMATION outro{};
    if (::CreateProcessW(programa.c_str(), linha.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &como,
                         &outro) == 0) {
        const auto erro = static_cast<int>(::GetLastError());
        if (ligada) ::FreeConsole();
        throw base::Falha(
            "O programa de 32 bits que as definições escolhem, com Bits=32 em [ERP], não arrancou. " +
            base::causa(programa, {erro, std::system_category()}) + ".");
    }
    ::SetConsoleCtrlHandler(nullptr, TRUE); // what is typed on the console is for the other
    ::AllowSetForegroundWindow(outro.dwProcessId);
    ::WaitForSingleObject(outro.hProcess, INFINITE);
    DWORD fim = 0;
    ::GetExitCodeProcess(outro.hProcess, &fim);
    ::CloseHandle(outro.hThread);
    ::CloseHandle(outro.hProcess);
    return static_cast<int>(fim);
}

} // namespace

std::optional<int> passa_a_32_bits(const startup::PastasInstalacao& pastas,
                                   const std::filesystem::path& programa) {
    if (startup::bits_do_programa == 32) return std::nullopt;
    // Its own password is for the other to open.
    const auto definicoes = startup::definicoes_erp(pastas.ficheiro_definicoes(),
                                                    [](const std::string& protegida) { return protegida; });
    const auto outro = startup::programa_de_32_bits(definicoes, programa);
    return outro ? std::optional(corre(*outro)) : std::nullopt;
}

} // namespace orvex::app
