#include "bench/processo.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvex::bench {

Corrida corre(const std::vector<std::string>& comando) {
    std::vector<char*> argumentos;
    argumentos.reserve(comando.size() + 1);
    for (const std::string& argumento : comando)
        argumentos.push_back(const_cast<char*>(argumento.c_str()));
    argumentos.push_back(nullptr);

    std::array<int, 2> cano{};
    if (pipe(cano.data()) != 0) throw std::runtime_error("pipe");
    posix_spawn_file_actions_t accoes;
    posix_spawn_file_actions_init(&accoes);
    posix_spawn_file_actions_adddup2(&accoes, cano[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&accoes, cano[0]);

    const auto inicio = std::chrono::steady_clock::now();
    pid_t filho = 0;
    const int erro = posix_spawn(&filho, argumentos[0], &accoes, nullptr, argumentos.data(), environ);
    posix_spawn_file_actions_destroy(&accoes);
    close(cano[1]);
    if (erro != 0) throw std::runtime_error("não arranca: " + comando[0]);

    std::string saida;
    std::array<char, 4096> bloco{};
    for (ssize_t lidos = 0; (lidos = read(cano[0], bloco.data(), bloco.size())) > 0;)
        saida.append(bloco.data(), static_cast<std::size_t>(lidos));
    close(cano[0]);

    int estado = 0;
    rusage uso{};
    wait4(filho, &estado, 0, &uso);
    const std::chrono::duration<double, std::milli> parede = std::chrono::steady_clock::now() - inicio;
    if (!WIFEXITED(estado) || WEXITSTATUS(estado) != 0) throw std::runtime_error("falhou: " + comando[0]);

    Corrida corrida{parede.count(), uso.ru_maxrss, {}};
    std::istringstream texto(saida);
    for (double numero = 0; texto >> numero;)
        corrida.numeros.push_back(numero);
    return corrida;
}

double mediana(std::vector<double> valores) {
    std::sort(valores.begin(), valores.end());
    return valores.at(valores.size() / 2);
}

} // namespace orvex::bench
