// orvex-auditoria: compares the ledger with itself and with the ERP.
#include "aceites.h"
#include "base/caminho.h"
#include "base/descricao.h"
#include "instalacao.h"
#include "linha_comando.h"
#include "platform/consola/consola.h"
#include "progresso_terminal.h"
#include "saida.h"
#include "tools/comum/instalacao_pedida.h"

#include <iostream>

namespace {

using namespace orvex;
using namespace orvex::auditoria;

enum Fim { limpo = 0, nao_viu = 1, ha_que_corrigir = 2 };

int audita_instalacao(const Opcoes& opcoes, const startup::PastasInstalacao& pastas) {
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
    const platform::consola::Consola consola;
    const auto argumentos = base::linha_de_comando(argc, argv);
    try {
        const Opcoes opcoes = le_argumentos(std::span(argumentos).subspan(1));
        if (opcoes.ajuda) {
            std::cout << uso() << "\n";
            return limpo;
        }
        return audita_instalacao(opcoes, instalacao_pedida(opcoes.pasta, argumentos[0]));
    } catch (const std::exception& falha) {
        std::cerr << base::descricao(falha) << "\nNada foi verificado.\n";
        return nao_viu;
    }
}
