#include "startup/arranque.h"

#include "startup/esquema_livro.h"
#include "startup/modos.h"

#include <algorithm>
#include <iterator>

namespace orvex::startup {
namespace {

struct Tarefa {
    const char* argumento;
    TipoEcra ecra;
    int modo;
};

constexpr Tarefa tarefas[] = {
    {"1", TipoEcra::MovStocks, modos_ajuste::sobras},
    {"2", TipoEcra::GuiasRemessa, sem_modo},
    {"3", TipoEcra::MovStocks, modos_ajuste::quebras},
    {"4", TipoEcra::MovStocks, modos_ajuste::consumos},
    {"5", TipoEcra::TrfBobines, modos_transferencia::para_orvex},
    {"6", TipoEcra::TrfBobines, modos_transferencia::para_cliente},
};

} // namespace

bool Arranque::abre_ecra(const std::string& argumento) {
    return std::any_of(std::begin(tarefas), std::end(tarefas),
                       [&](const Tarefa& tarefa) { return argumento == tarefa.argumento; });
}

std::shared_ptr<EcraArranque> Arranque::Main(const std::string& argumento) {
    gFicheiroDefinicoes = pastas_.ficheiro_definicoes();

    if (!LigaERP()) return nullptr;
    AbreBaseDados();
    // Two first starts at once would both find the tables missing, and both make them.
    gBD->EmExclusivo([this] {
        VerificaTabelas(*gBD);
        VerificaPesos(*gBD);
    });

    for (const Tarefa& tarefa : tarefas) {
        if (argumento != tarefa.argumento) continue;
        fabrica_.recupera(*gBD, *gERP);
        auto ecra = fabrica_.cria_ecra(tarefa.ecra, *gBD, *gERP, tarefa.modo);
        ecra->Load();
        ecra->Show();
        return ecra;
    }
    return nullptr;
}

AbreProtegida Arranque::abre_protegidas() const {
    return [this](const std::string& protegida) { return fabrica_.abre_protegida(protegida); };
}

bool Arranque::LigaERP() {
    const DefinicoesERP definicoes = definicoes_erp(gFicheiroDefinicoes, abre_protegidas());
    gERP = fabrica_.cria_sessao_erp(definicoes);
    gERP->ModoLigacao(modo_ligacao);
    if (gERP->Liga(definicoes.valores)) return true;
    fabrica_.mostra_caixa("Não foi possivel ligar ao 100c ...", titulo_programa);
    return false;
}

void Arranque::AbreBaseDados() {
    const DefinicoesBD definicoes = definicoes_bd(gFicheiroDefinicoes, pastas_.catalogo(), abre_protegidas());
    gBD = fabrica_.cria_sessao_bd(definicoes);
    gBD->Abre(texto_ligacao(definicoes));
}

} // namespace orvex::startup
