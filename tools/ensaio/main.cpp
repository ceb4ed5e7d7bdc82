// Runs test programs, those of every suite or the ones named, one after the other in a database made for it
// on a real server, and drops the database however they end.
#include "base/caminho.h"
#include "tools/ensaio/base_ensaio.h"

#include <csignal>
#include <iostream>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace orvex::ensaio;

namespace {

constexpr int falhou = 1, sinal_no_resultado = 128;

// Held back from the start and asked for one by one: none finds the database half made or half dropped.
sigset_t sinais() {
    sigset_t todos;
    sigemptyset(&todos);
    for (const int sinal : {SIGINT, SIGTERM, SIGHUP, SIGCHLD})
        sigaddset(&todos, sinal);
    return todos;
}

// What the program ended with; past 128 where a signal, to it or to us, ended it.
int corre(std::string programa) {
    posix_spawnattr_t atributos;
    posix_spawnattr_init(&atributos);
    sigset_t nenhum;
    sigemptyset(&nenhum);
    posix_spawnattr_setsigmask(&atributos, &nenhum);
    posix_spawnattr_setflags(&atributos, POSIX_SPAWN_SETSIGMASK);
    char* argumentos[]{programa.data(), nullptr};
    pid_t filho = 0;
    const int erro = posix_spawn(&filho, argumentos[0], nullptr, &atributos, argumentos, environ);
    posix_spawnattr_destroy(&atributos);
    if (erro != 0) return falhou;

    int estado = 0, recebido = 0;
    const sigset_t esperados = sinais();
    while (waitpid(filho, &estado, WNOHANG) == 0) {
        const int sinal = sigwaitinfo(&esperados, nullptr);
        if (sinal == SIGCHLD || sinal < 0) continue;
        recebido = sinal;
        kill(filho, SIGTERM);
        waitpid(filho, &estado, 0);
        break;
    }
    if (recebido == 0 && WIFSIGNALED(estado)) recebido = WTERMSIG(estado);
    return recebido != 0 ? sinal_no_resultado + recebido : WEXITSTATUS(estado);
}

int corre_todos(const std::vector<std::string>& programas) {
    int resultado = 0;
    for (const std::string& programa : programas) {
        std::cout << "\n" << programa << std::endl;
        const int este = corre(programa);
        if (este != 0) std::cout << programa << " acabou com " << este << "." << std::endl;
        if (este > sinal_no_resultado) return este; // interrupted: no other begins
        if (este != 0) resultado = falhou;
    }
    return resultado;
}

} // namespace

int main(int argc, char** argv) {
    // No thread is ever started here.
    // NOLINTBEGIN(concurrency-mt-unsafe)
    const sigset_t retidos = sinais();
    sigprocmask(SIG_BLOCK, &retidos, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    setenv(variavel_motor, motor_servidor, 1);
    // What other people's drivers leave behind is not ours to report.
    setenv("ASAN_OPTIONS", "detect_leaks=0", 0);
    // NOLINTEND(concurrency-mt-unsafe)
    auto programas = orvex::base::linha_de_comando(argc, argv);
    programas.erase(programas.begin());
    if (std::istringstream suites(ORVEX_SUITES); programas.empty())
        for (std::string uma; std::getline(suites, uma, ':');)
            programas.push_back(uma);
    try {
        cria_ensaio();
        std::cout << "Base " << base_do_ensaio() << " criada no servidor." << std::endl;
        const int resultado = corre_todos(programas);
        apaga_ensaio();
        std::cout << "Base " << base_do_ensaio() << " apagada." << std::endl;
        return resultado;
    } catch (const std::exception& falha) {
        std::cerr << falha.what() << std::endl;
        return falhou;
    }
}
