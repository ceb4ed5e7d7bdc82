// orvex-diagnostico: tells whether an installation can work.
#include "base/caminho.h"
#include "base/descricao.h"
#include "diagnostico.h"
#include "startup/ficheiro.h"
#include "tools/comum/pasta_do_programa.h"

#include <iostream>

int main(int argc, char** argv) {
    using namespace orvex;
    const auto argumentos = base::linha_de_comando(argc, argv);
    if (argumentos.size() > 2 || (argumentos.size() == 2 && argumentos[1].starts_with("-"))) {
        std::cerr << "Uso: orvex-diagnostico [PASTA]\n"
                     "Verifica a instalação em PASTA, ou na pasta deste programa, sem nada alterar.\n";
        return 2;
    }
    try {
        const auto pasta = argumentos.size() == 2 ? base::caminho_de(argumentos[1])
                                                  : pasta_do_programa(base::caminho_de(argumentos[0]));
        if (const std::string defeito = startup::defeito_da_pasta(pasta); !defeito.empty())
            throw base::Falha("«" + base::texto_de(pasta) + "» " + defeito + ".");
        const auto resultados = diagnostico::diagnostica(
            startup::PastasInstalacao::de(std::filesystem::absolute(pasta).lexically_normal()));
        std::cout << diagnostico::texto(resultados);
        return diagnostico::tem_erros(resultados) ? 1 : 0;
    } catch (const std::exception& falha) {
        std::cerr << base::descricao(falha) << "\n";
        return 1;
    }
}
