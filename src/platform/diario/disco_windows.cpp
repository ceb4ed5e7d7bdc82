#include "platform/diario/disco.h"

#include "base/caminho.h"
#include "base/falha.h"

#include <windows.h>

namespace orvex::platform::diario {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void falha(const fs::path& ficheiro) {
    throw base::Falha(
        base::causa(ficheiro, std::error_code(static_cast<int>(::GetLastError()), std::system_category())));
}

std::string le_tudo(HANDLE aberto, const fs::path& caminho) {
    std::string texto;
    char bloco[4096];
    for (;;) {
        OVERLAPPED posicao{};
        posicao.Offset = static_cast<DWORD>(texto.size());
        DWORD lidos = 0;
        if (::ReadFile(aberto, bloco, sizeof bloco, &lidos, &posicao) == 0 &&
            ::GetLastError() != ERROR_HANDLE_EOF)
            falha(caminho);
        if (lidos == 0) return texto;
        texto.append(bloco, lidos);
    }
}

// What it is opened with is the lock: it lets others read, and give the file another name, but not write.
constexpr DWORD so_leitura = FILE_SHARE_READ | FILE_SHARE_DELETE;
constexpr DWORD com_todos = so_leitura | FILE_SHARE_WRITE;

class Aberto {
  public:
    explicit Aberto(HANDLE valor) : valor_(valor) {}
    ~Aberto() {
        if (valido()) ::CloseHandle(valor_);
    }
    Aberto(Aberto&& outro) noexcept : valor_(outro.valor_) { outro.valor_ = INVALID_HANDLE_VALUE; }
    Aberto& operator=(Aberto&&) = delete;

    HANDLE valor() const { return valor_; }
    bool valido() const { return valor_ != INVALID_HANDLE_VALUE; }

  private:
    HANDLE valor_;
};

class FicheiroWindows : public FicheiroTrancado {
  public:
    FicheiroWindows(Aberto aberto, fs::path caminho)
        : aberto_(std::move(aberto)), caminho_(std::move(caminho)) {}

    std::string le() override { return le_tudo(aberto_.valor(), caminho_); }

    void corta(std::size_t bytes) override {
        LARGE_INTEGER posicao{};
        posicao.QuadPart = static_cast<LONGLONG>(bytes);
        if (::SetFilePointerEx(aberto_.valor(), posicao, nullptr, FILE_BEGIN) == 0 ||
            ::SetEndOfFile(aberto_.valor()) == 0)
            falha(caminho_);
    }

    void acrescenta(std::string_view bytes) override {
        if (::SetFilePointerEx(aberto_.valor(), {}, nullptr, FILE_END) == 0) falha(caminho_);
        while (!bytes.empty()) {
            DWORD escritos = 0;
            if (::WriteFile(aberto_.valor(), bytes.data(), static_cast<DWORD>(bytes.size()), &escritos,
                            nullptr) == 0)
                falha(caminho_);
            bytes.remove_prefix(escritos);
        }
    }

    void descarrega() override {
        if (::FlushFileBuffers(aberto_.valor()) == 0) falha(caminho_);
    }

    // What flushes a file also flushes the file system's log, which has the name.
    void muda_nome(const fs::path& novo) override {
        if (::MoveFileExW(caminho_.c_str(), novo.c_str(), MOVEFILE_WRITE_THROUGH) == 0) falha(novo);
        caminho_ = novo;
        descarrega();
    }

  private:
    Aberto aberto_;
    fs::path caminho_;
};

class DiscoWindows : public Disco {
  public:
    std::unique_ptr<FicheiroTrancado> cria(const fs::path& novo) override {
        Aberto aberto(abre(novo, CREATE_NEW));
        if (!aberto.valido()) falha(novo);
        return std::make_unique<FicheiroWindows>(std::move(aberto), novo);
    }

    std::unique_ptr<FicheiroTrancado> tranca(const fs::path& ficheiro) override {
        Aberto aberto(abre(ficheiro, OPEN_EXISTING));
        if (!aberto.valido()) {
            const DWORD erro = ::GetLastError();
            if (erro == ERROR_SHARING_VIOLATION || erro == ERROR_FILE_NOT_FOUND) return nullptr;
            falha(ficheiro);
        }
        return std::make_unique<FicheiroWindows>(std::move(aberto), ficheiro);
    }

    std::string le(const fs::path& ficheiro) override {
        const Aberto aberto(::CreateFileW(ficheiro.c_str(), GENERIC_READ, com_todos, nullptr, OPEN_EXISTING,
                                          FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!aberto.valido()) falha(ficheiro);
        return le_tudo(aberto.valor(), ficheiro);
    }

    // The library's own iterator knows no folder with a name beyond 260 letters.
    std::vector<fs::path> ficheiros(const fs::path& pasta) override {
        WIN32_FIND_DATAW este{};
        const HANDLE procura = ::FindFirstFileW((pasta / L"*").c_str(), &este);
        if (procura == INVALID_HANDLE_VALUE) {
            const DWORD erro = ::GetLastError();
            if (erro == ERROR_FILE_NOT_FOUND || erro == ERROR_PATH_NOT_FOUND) return {};
            falha(pasta);
        }
        std::vector<fs::path> todos;
        do
            if ((este.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
                todos.push_back(pasta / este.cFileName);
        while (::FindNextFileW(procura, &este) != 0);
        const DWORD erro = ::GetLastError();
        ::FindClose(procura);
        if (erro == ERROR_NO_MORE_FILES) return todos;
        ::SetLastError(erro);
        falha(pasta);
    }

    void descarrega_pasta(const fs::path&) override {} // done by what changed the name

  private:
    static HANDLE abre(const fs::path& ficheiro, DWORD existencia) {
        return ::CreateFileW(ficheiro.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, so_leitura, nullptr,
                             existencia, FILE_ATTRIBUTE_NORMAL, nullptr);
    }
};

} // namespace

Disco& disco_do_sistema() {
    static DiscoWindows disco;
    return disco;
}

} // namespace orvex::platform::diario
