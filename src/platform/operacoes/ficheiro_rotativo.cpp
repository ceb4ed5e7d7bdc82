#include "platform/operacoes/ficheiro_rotativo.h"

#include "base/caminho.h"
#include "platform/operacoes/sistema.h"

namespace orvex::platform::operacoes {
namespace {

namespace fs = std::filesystem;

constexpr const char* sem_pasta = "o sistema não diz qual é a pasta do utilizador";

bool cheio(const fs::path& ficheiro, std::size_t com_mais) {
    std::error_code erro;
    const std::uintmax_t bytes = fs::file_size(ficheiro, erro);
    return !erro && bytes > 0 && bytes + com_mais > FicheiroRotativo::maior;
}

} // namespace

fs::path FicheiroRotativo::caminho(int quantos_antes) const {
    return pasta_ /
           (quantos_antes == 0 ? "operacoes.log" : "operacoes." + std::to_string(quantos_antes) + ".log");
}

std::string FicheiroRotativo::escreve(const std::string& linha) {
    if (pasta_.empty()) return sem_pasta;
    std::error_code erro;
    if (fs::create_directories(pasta_, erro)) fs::permissions(pasta_, fs::perms::owner_all, erro);
    roda(linha.size());
    return base::causa(caminho(), acrescenta(caminho(), linha));
}

// While another program is at it, what is written still goes to the file that it moves away.
void FicheiroRotativo::roda(std::size_t bytes) {
    if (!cheio(caminho(), bytes)) return;
    const Vez vez(pasta_ / "operacoes.lock");
    if (!vez.minha() || !cheio(caminho(), bytes)) return; // somebody was quicker
    std::error_code erro;
    for (int i = ficheiros - 1; i > 0; --i)
        fs::rename(caminho(i - 1), caminho(i), erro);
}

std::string FicheiroRotativo::defeito() const {
    return pasta_.empty() ? sem_pasta : base::causa(caminho(), pode_acrescentar(caminho()));
}

} // namespace orvex::platform::operacoes
