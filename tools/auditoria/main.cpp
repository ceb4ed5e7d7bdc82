// orvex-auditoria: compares the ledger with itself and with the ERP.
#include "aceites.h"
#include "base/caminho.h"
#include "base/descricao.h"
#include "instalacao.h"
#include "linha_comando.h"
#include "progresso_terminal.h"
#include "saida.h"
#include "startup/ficheiro.h"
#include "tools/comum/pasta_do_programa.h"

#include <iostream>

namespace {

using namespace orvex;
using namespace orvex::auditoria;

enum Fim { limpo = 0, nao_viu = 1, ha_que_corrigir = 2 };

int audita_instalacao(const Opcoes& opcoes, const std::filesystem::path& pasta) {
    if (const std::string defeito = startup::defeito_da_pasta(pasta); !defeito.empty())
        throw base::Falha("«" + base::texto_de(pasta) + "» " + defeito + ".");
    const auto pastas = startup::PastasInstalacao::de(std::filesystem::absolute(pasta).lexically_normal());
    const auto agora = base::DataHora::agora();
    Pedido pedido{.casa = Casa::le(startup::Parametros(pastas.programa)),
                  .hoje = agora,
                  .abre = {},
                  .filtro = opcoes.filtro,
                  .espera = opcoes.espera};
    if (!opcoes.aceites.empty()) pedido.aceites = le_aceites(opcoes.aceites);
    std::string empresa;
    abre_instalacao(pastas, pedido, empresa);
    ProgressoTerminal progresso;
    const Relatorio relatorio = audita(pedido, progresso);
    progresso.acaba();
    std::cout << (opcoes.json ? json(relatorio, empresa, agora) : texto(relatorio, empresa, agora))
              << std::flush;
    if (!std::cout) throw base::Falha("O resultado não pôde ser escrito.");
    if (!opcoes.escreve_aceites.empty()) escreve_aceites(opcoes.escreve_aceites, relatorio);
    if (!relatorio.nao_vistos.empty()) return nao_viu;
    return relatorio.limpo() ? limpo : ha_que_corrigir;
}

} // namespace

int main(int argc, char** argv) {
    const auto argumentos = base::linha_de_comando(argc, argv);
    try {
        const Opcoes opcoes = le_argumentos(std::span(argumentos).subspan(1));
        if (opcoes.ajuda) {
            std::cout << uso() << "\n";
            return limpo;
        }
        return audita_instalacao(
            opcoes, opcoes.pasta.empty() ? pasta_do_programa(base::caminho_de(argumentos[0])) : opcoes.pasta);
    } catch (const std::exception& falha) {
        std::cerr << base::descricao(falha) << "\nNada foi verificado.\n";
        return nao_viu;
    }
}
