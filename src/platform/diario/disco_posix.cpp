#include "platform/diario/disco.h"

#include "base/caminho.h"
#include "base/falha.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvex::platform::diario {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void falha(const fs::path& ficheiro) {
    throw base::Falha(base::causa(ficheiro, std::error_code(errno, std::generic_category())));
}

constexpr mode_t so_do_dono = S_IRUSR | S_IWUSR;

class Descritor {
  public:
    explicit Descritor(int numero) : numero_(numero) {}
    ~Descritor() {
        if (numero_ >= 0) ::close(numero_);
    }
    Descritor(Descritor&& outro) noexcept : numero_(outro.numero_) { outro.numero_ = -1; }
    Descritor& operator=(Descritor&&) = delete;

    int numero() const { return numero_; }

  private:
    int numero_;
};

std::string le_tudo(int descritor, const fs::path& caminho) {
    std::string texto;
    char bloco[4096];
    for (;;) {
        const ssize_t lidos = ::pread(descritor, bloco, sizeof bloco, static_cast<off_t>(texto.size()));
        if (lidos < 0) {
            if (errno == EINTR) continue;
            falha(caminho);
        }
        if (lidos == 0) return texto;
        texto.append(bloco, static_cast<std::size_t>(lidos));
    }
}

class FicheiroPosix : public FicheiroTrancado {
  public:
    FicheiroPosix(Descritor aberto, fs::path caminho)
        : aberto_(std::move(aberto)), caminho_(std::move(caminho)) {}

    std::string le() override { return le_tudo(aberto_.numero(), caminho_); }

    void corta(std::size_t bytes) override {
        if (::ftruncate(aberto_.numero(), static_cast<off_t>(bytes)) != 0) falha(caminho_);
    }

    void acrescenta(std::string_view bytes) override {
        while (!bytes.empty()) {
            const ssize_t escritos = ::write(aberto_.numero(), bytes.data(), bytes.size());
            if (escritos < 0) {
                if (errno == EINTR) continue;
                falha(caminho_);
            }
            bytes.remove_prefix(static_cast<std::size_t>(escritos));
        }
    }

    void descarrega() override {
        if (::fdatasync(aberto_.numero()) != 0) falha(caminho_);
    }

    void muda_nome(const fs::path& novo) override {
        if (::rename(caminho_.c_str(), novo.c_str()) != 0) falha(novo);
        caminho_ = novo;
    }

  private:
    Descritor aberto_;
    fs::path caminho_;
};

class DiscoPosix : public Disco {
  public:
    std::unique_ptr<FicheiroTrancado> cria(const fs::path& novo) override {
        Descritor aberto(::open(novo.c_str(), O_RDWR | O_APPEND | O_CREAT | O_EXCL | O_CLOEXEC, so_do_dono));
        if (aberto.numero() < 0 || ::flock(aberto.numero(), LOCK_EX | LOCK_NB) != 0) falha(novo);
        // Whoever may write in the folder may settle what is in it.
        struct stat pasta {};
        if (::stat(novo.parent_path().c_str(), &pasta) == 0)
            ::fchmod(aberto.numero(), so_do_dono | (pasta.st_mode & (S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH)));
        return std::make_unique<FicheiroPosix>(std::move(aberto), novo);
    }

    std::unique_ptr<FicheiroTrancado> tranca(const fs::path& ficheiro) override {
        Descritor aberto(::open(ficheiro.c_str(), O_RDWR | O_APPEND | O_CLOEXEC | O_NOFOLLOW));
        if (aberto.numero() < 0) {
            if (errno == ENOENT) return nullptr;
            falha(ficheiro);
        }
        if (::flock(aberto.numero(), LOCK_EX | LOCK_NB) != 0) {
            if (errno == EWOULDBLOCK) return nullptr;
            falha(ficheiro);
        }
        // Whoever held it may have given it another name meanwhile.
        struct stat este {};
        struct stat do_nome {};
        if (::fstat(aberto.numero(), &este) != 0) falha(ficheiro);
        if (::stat(ficheiro.c_str(), &do_nome) != 0 || este.st_ino != do_nome.st_ino ||
            este.st_dev != do_nome.st_dev)
            return nullptr;
        return std::make_unique<FicheiroPosix>(std::move(aberto), ficheiro);
    }

    std::string le(const fs::path& ficheiro) override {
        const Descritor aberto(::open(ficheiro.c_str(), O_RDONLY | O_CLOEXEC));
        if (aberto.numero() < 0) falha(ficheiro);
        return le_tudo(aberto.numero(), ficheiro);
    }

    std::vector<fs::path> ficheiros(const fs::path& pasta) override {
        std::vector<fs::path> todos;
        std::error_code erro;
        for (fs::directory_iterator este(pasta, erro), fim; !erro && este != fim; este.increment(erro))
            todos.push_back(este->path());
        if (erro && erro != std::errc::no_such_file_or_directory) throw base::Falha(base::causa(pasta, erro));
        return todos;
    }

    void descarrega_pasta(const fs::path& pasta) override {
        const Descritor aberta(::open(pasta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        // Some shares flush their folders by themselves and refuse to be asked.
        if (aberta.numero() < 0 || (::fsync(aberta.numero()) != 0 && errno != EINVAL && errno != ENOTSUP))
            falha(pasta);
    }
};

} // namespace

Disco& disco_do_sistema() {
    static DiscoPosix disco;
    return disco;
}

} // namespace orvex::platform::diario
