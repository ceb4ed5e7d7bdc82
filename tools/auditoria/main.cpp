// orvex-auditoria: compares the ledger with itself and with the ERP.
#include "aceites.h"
#include "instalacao.h"
#include "linha_comando.h"
#include "progresso_terminal.h"
#include "saida.h"
#include "tools/comum/exame_da_instalacao.h"

namespace {

using namespace orvex;
using namespace orvex::auditoria;

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
    return relatorio.limpo() ? tudo_certo : ha_defeitos;
}

} // namespace

int main(int argc, char** argv) {
    return exame_da_instalacao(argc, argv, le_argumentos, uso(), audita_instalacao, "Nada foi verificado.");
}
