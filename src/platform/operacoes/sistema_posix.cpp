#include "platform/operacoes/sistema.h"

#include "base/caminho.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <unistd.h>

namespace orvex::platform::operacoes {
namespace {

namespace fs = std::filesystem;

std::error_code erro_do_sistema() { return {errno, std::generic_category()}; }

// A pipe in the place of the file is refused instead of waited for.
int abre(const fs::path& ficheiro, int modo) {
    return ::open(ficheiro.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NONBLOCK | modo, S_IRUSR | S_IWUSR);
}

} // namespace

fs::path pasta_do_registo() {
    const fs::path estado = base::caminho_do_ambiente("XDG_STATE_HOME");
    if (estado.is_absolute()) return estado / "orvex";
    const fs::path casa = base::caminho_do_ambiente("HOME");
    return casa.is_absolute() ? casa / ".local" / "state" / "orvex" : fs::path();
}

// Who the system says it is; the environment says whatever it was told.
std::string utilizador_da_maquina() {
    const passwd* conta = ::getpwuid(::getuid()); // NOLINT(concurrency-mt-unsafe)
    return conta != nullptr ? conta->pw_name : std::to_string(::getuid());
}

std::string nome_da_maquina() {
    std::array<char, 256> nome{};
    return ::gethostname(nome.data(), nome.size() - 1) == 0 ? nome.data() : "";
}

long numero_do_processo() { return ::getpid(); }

std::error_code acrescenta(const fs::path& ficheiro, const std::string& bytes) {
    const int aberto = abre(ficheiro, O_CREAT);
    if (aberto < 0) return erro_do_sistema();
    const ssize_t escritos = ::write(aberto, bytes.data(), bytes.size());
    std::error_code erro;
    if (escritos < 0)
        erro = erro_do_sistema();
    else if (static_cast<std::size_t>(escritos) < bytes.size())
        erro = std::make_error_code(std::errc::no_space_on_device);
    ::close(aberto);
    return erro;
}

std::error_code pode_acrescentar(const fs::path& ficheiro) {
    const int aberto = abre(ficheiro, 0);
    if (aberto >= 0) {
        ::close(aberto);
        return {};
    }
    if (errno != ENOENT) return erro_do_sistema();
    fs::path pasta = ficheiro.parent_path();
    while (::access(pasta.c_str(), F_OK) != 0 && errno == ENOENT && pasta.has_relative_path())
        pasta = pasta.parent_path();
    return ::access((pasta / ".").c_str(), W_OK | X_OK) == 0 ? std::error_code() : erro_do_sistema();
}

Vez::Vez(const fs::path& ficheiro) {
    const int aberto = abre(ficheiro, O_CREAT);
    if (aberto < 0) return;
    if (::flock(aberto, LOCK_EX | LOCK_NB) == 0)
        aberto_ = aberto;
    else
        ::close(aberto);
}

Vez::~Vez() {
    if (minha()) ::close(static_cast<int>(aberto_));
}

} // namespace orvex::platform::operacoes
