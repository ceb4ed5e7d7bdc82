// orvex-diagnostico: tells whether an installation can work.
#include "base/descricao.h"
#include "diagnostico.h"
#include "startup/ficheiro.h"
#include "tools/comum/pasta_do_programa.h"

#include <iostream>

int main(int argc, char** argv) {
    using namespace orvex;
    if (argc > 2 || (argc == 2 && *argv[1] == '-')) {
        std::cerr << "Uso: orvex-diagnostico [PASTA]\n"
                     "Verifica a instalação em PASTA, ou na pasta deste programa, sem nada alterar.\n";
        return 2;
    }
    try {
        const auto pasta = argc == 2 ? std::filesystem::path(argv[1]) : pasta_do_programa(argv[0]);
        if (const std::string defeito = startup::defeito_da_pasta(pasta); !defeito.empty())
            throw base::Falha("«" + startup::texto_de(pasta) + "» " + defeito + ".");
        const auto resultados = diagnostico::diagnostica(
            startup::PastasInstalacao::de(std::filesystem::absolute(pasta).lexically_normal()));
        std::cout << diagnostico::texto(resultados);
        return diagnostico::tem_erros(resultados) ? 1 : 0;
    } catch (const std::exception& falha) {
        std::cerr << base::descricao(falha) << "\n";
        return 1;
    }
}
