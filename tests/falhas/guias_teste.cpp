#include "tests/delivery/ecra_guias.h"
#include "tests/falhas/ciclo_de_falhas.h"

using namespace orvex::testes;

namespace {

bool utilizavel(EcraGuias& guias) {
    if (!guias.vazio() || !guias.no_campo(0)) return false;
    guias.cliente("CL'1");
    return !guias.ecra.Label2(1).Caption.empty() && !guias.linhas(guias.ecra.Detalhe, {"Artigo"}).empty() &&
           guias.caixas().empty() && !guias.janela.ocupada;
}

} // namespace

TEST(FalhasGuias, issuing_a_note) {
    ciclo_de_falhas(Fluxo<EcraGuias>{"Issuing a note",
                                     [](EcraGuias& guias) {
                                         guias.cliente("CL'1");
                                         guias.escolhe(1);
                                         guias.escolhe(3);
                                         guias.edita(3, "Nome", "Nota d'água");
                                     },
                                     [](EcraGuias& guias) { guias.confirma(); }, utilizavel});
}

TEST(FalhasGuias, cancelling_a_note) {
    ciclo_de_falhas(Fluxo<EcraGuias>{"Cancelling a note",
                                     [](EcraGuias& guias) {
                                         guias.emite({1, 3});
                                         guias.carrega("1");
                                     },
                                     [](EcraGuias& guias) { guias.anula(); }, utilizavel});
}

TEST(FalhasGuias, returning_lines_of_a_note) {
    ciclo_de_falhas(Fluxo<EcraGuias>{"Returning lines of a note",
                                     [](EcraGuias& guias) {
                                         guias.emite({1, 3});
                                         guias.carrega("1");
                                         guias.abre_devolucao();
                                         guias.marca(1);
                                         guias.marca(2);
                                     },
                                     [](EcraGuias& guias) { guias.op.prime(guias.ecra.btGV(1)); },
                                     utilizavel});
}
