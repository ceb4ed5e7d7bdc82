#include "tools/componente/programa.h"

#include "base/descricao.h"
#include "base/texto.h"

#include <shellapi.h>

namespace orvex::componente {
namespace {

using base::Falha;
using platform::automacao::utf16_de;
using platform::automacao::utf8_de;

constexpr UINT espera_do_primeiro_ms = 60'000; // who asked for the program may have gone before it began

std::vector<std::string> argumentos() {
    int quantos = 0;
    wchar_t** const todos = ::CommandLineToArgvW(::GetCommandLineW(), &quantos);
    if (todos == nullptr) return {};
    std::vector<std::string> textos;
    for (int i = 0; i < quantos; ++i)
        textos.push_back(utf8_de(todos[i]));
    ::LocalFree(todos);
    return textos;
}

// A program without a console of its own writes to the one that it was started from, if there is one.
void diz(const std::string& texto) {
    if (::AttachConsole(ATTACH_PARENT_PROCESS) == FALSE) return;
    const std::wstring letras = utf16_de(texto + "\r\n");
    const HANDLE consola =
        ::CreateFileW(L"CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (consola == INVALID_HANDLE_VALUE) return;
    ::WriteConsoleW(consola, letras.data(), static_cast<DWORD>(letras.size()), nullptr, nullptr);
    ::CloseHandle(consola);
}

std::wstring comando(const std::vector<std::string>& argumentos) {
    std::wstring ficheiro(32768, L'\0'); // the longest that the system has
    ficheiro.resize(::GetModuleFileNameW(nullptr, ficheiro.data(), static_cast<DWORD>(ficheiro.size())));
    std::wstring linha = L"\"" + ficheiro + L"\"";
    for (std::size_t i = 2; i < argumentos.size(); ++i)
        linha += L" \"" + utf16_de(argumentos[i]) + L"\"";
    return linha;
}

void exige(HRESULT resposta) {
    if (resposta < 0) throw Falha("O sistema não deixou servir o componente.", resposta);
}

// Nobody may come in between the last who leaves and the end.
void despede_se(DWORD linha) {
    ::CoSuspendClassObjects();
    if (Vida::usada())
        ::CoResumeClassObjects();
    else
        ::PostThreadMessageW(linha, WM_QUIT, 0, 0);
}

void serve(const Classe& classe, const FazSessao& faz) {
    exige(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    Vida::ao_acabar = [linha = ::GetCurrentThreadId()] { despede_se(linha); };
    DWORD registo = 0;
    exige(::CoRegisterClassObject(classe.numero, fabrica(faz, Modo::programa).Get(), CLSCTX_LOCAL_SERVER,
                                  REGCLS_MULTIPLEUSE, &registo));
    const UINT_PTR prazo = ::SetTimer(nullptr, 0, espera_do_primeiro_ms, nullptr);
    for (MSG mensagem; ::GetMessageW(&mensagem, nullptr, 0, 0) > 0; ::DispatchMessageW(&mensagem))
        if (mensagem.message == WM_TIMER && mensagem.wParam == prazo && !Vida::usada()) break;
    ::CoRevokeClassObject(registo);
    Vida::ao_acabar = {};
    ::CoUninitialize();
}

} // namespace

int corre_programa(const Classe& classe, const FazSessao& faz) {
    const std::vector<std::string> dados = argumentos();
    const auto pede = [&dados](std::string_view qual) {
        for (std::size_t i = 1; i < dados.size(); ++i)
            if ((dados[i].starts_with('/') || dados[i].starts_with('-')) &&
                base::mesmo_nome(std::string_view(dados[i]).substr(1), qual))
                return true;
        return false;
    };
    try {
        if (pede("regserver"))
            regista(classe, Modo::programa, comando(dados));
        else if (pede("unregserver"))
            retira(classe, Modo::programa);
        else if (pede("Embedding"))
            serve(classe, faz);
        else
            throw Falha("uso: /regserver regista o componente «" + utf8_de(classe.nome) +
                        "», /unregserver retira o registo.");
    } catch (const std::exception& falha) {
        diz(base::descricao(falha));
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

} // namespace orvex::componente
