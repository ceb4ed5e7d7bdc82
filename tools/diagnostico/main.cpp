// orvex-diagnostico: tells whether an installation can work.
#include "app/passagem.h"
#include "base/caminho.h"
#include "base/descricao.h"
#include "diagnostico.h"
#include "palavras_passe.h"
#include "platform/consola/consola.h"
#include "tools/comum/instalacao_pedida.h"

#include <iostream>

namespace {

using namespace orvex;

constexpr const char* uso =
    "Uso: orvex-diagnostico [--protege-palavras-passe] [PASTA]\n"
    "Verifica a instalação em PASTA, ou na pasta deste programa, sem nada alterar.\n"
    "  --protege-palavras-passe  em vez disso, guarda as palavras-passe das definições de modo\n"
    "                            que só esta máquina as abra (Windows)\n";

int corre(bool protege, const startup::PastasInstalacao& pastas, const std::filesystem::path& programa) {
    if (protege) {
        diagnostico::protege_palavras_passe(pastas, std::cout);
        return 0;
    }
    // What is told is what the program would meet, which is of the word size that the settings choose.
    std::string sem_32_bits;
    try {
        if (const auto fim = app::passa_a_32_bits(pastas, programa)) return *fim;
    } catch (const base::Falha& falha) {
        sem_32_bits = falha.what();
    }
    const auto resultados = diagnostico::diagnostica(pastas, sem_32_bits);
    std::cout << diagnostico::texto(resultados);
    return diagnostico::tem_erros(resultados) ? 1 : 0;
}

} // namespace

int main(int argc, char** argv) {
    const platform::consola::Consola consola;
    auto argumentos = base::linha_de_comando(argc, argv);
    const std::string programa = argumentos[0];
    argumentos.erase(argumentos.begin());
    const bool protege = std::erase(argumentos, "--protege-palavras-passe") > 0;
    if (argumentos.size() > 1 || (argumentos.size() == 1 && argumentos[0].starts_with("-"))) {
        std::cerr << uso;
        return 2;
    }
    try {
        return corre(
            protege,
            instalacao_pedida(argumentos.empty() ? std::filesystem::path() : base::caminho_de(argumentos[0]),
                              programa),
            base::caminho_do_programa(programa));
    } catch (const std::exception& falha) {
        std::cerr << base::descricao(falha) << "\n";
        return 1;
    }
}
