#include "tests/adjust/ecra_ajuste.h"
#include "tests/falhas/ciclo_de_falhas.h"

using namespace orvex::testes;

namespace {

struct Quebras : EcraAjuste {
    Quebras() : EcraAjuste(2) {}
};

bool utilizavel(Quebras& ajustes) {
    if (!ajustes.vazio()) return false;
    ajustes.item("CEDIDA");
    return !ajustes.ecra.Label2(1).Caption.empty() && ajustes.caixas().empty() && !ajustes.janela.ocupada;
}

void carrega(Quebras& ajustes) {
    ajustes.ajusta("REEL'1", "3");
    ajustes.carrega("1");
    ajustes.quantidade("1,5");
}

} // namespace

TEST(FalhasAjustes, confirming_an_adjustment) {
    ciclo_de_falhas(Fluxo<Quebras>{"Confirming an adjustment",
                                   [](Quebras& ajustes) {
                                       ajustes.item("REEL'1");
                                       ajustes.quantidade("4,5");
                                   },
                                   [](Quebras& ajustes) { ajustes.confirma(); }, utilizavel});
}

TEST(FalhasAjustes, replacing_an_adjustment) {
    Fluxo<Quebras> fluxo{"Replacing an adjustment", carrega, [](Quebras& ajustes) { ajustes.confirma(); },
                         utilizavel};
    fluxo.segue_com_recusa = true; // the old document stays in force and is named
    ciclo_de_falhas(fluxo);
}

TEST(FalhasAjustes, cancelling_an_adjustment) {
    ciclo_de_falhas(Fluxo<Quebras>{"Cancelling an adjustment", carrega,
                                   [](Quebras& ajustes) { ajustes.anula(); }, utilizavel});
}
