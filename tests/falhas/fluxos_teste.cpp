#include "tests/adjust/ecra_ajuste.h"
#include "tests/delivery/ecra_guias.h"
#include "tests/falhas/ciclo_de_falhas.h"
#include "tests/transfer/ecra_trf.h"

using namespace orvex::testes;

namespace {

struct Quebras : EcraAjuste {
    Quebras() : EcraAjuste(2) {}
    void carregada() {
        ajusta("REEL'1", "3");
        carrega("1");
        quantidade("1,5");
    }
};

struct GuiaCarregada : EcraGuias {
    GuiaCarregada() {
        emite({1, 3});
        carrega("1");
    }
};

template <int Modo>
struct Trf : EcraTrf {
    Trf() : EcraTrf(Modo) {}
    void indicado() {
        item("REEL'1");
        if (Modo == 2) destino("CL2");
    }
};

} // namespace

TEST(FalhasGuias, issuing_a_note) {
    const auto prepara = [](EcraGuias& guias) {
        guias.cliente("CL'1");
        guias.escolhe(1);
        guias.escolhe(3);
        guias.edita(3, "Nome", "Nota d'água");
    };
    ciclo_de_falhas<EcraGuias>({"Issuing a note", prepara, &EcraGuias::confirma, "CL'1", 1});
}

TEST(FalhasGuias, cancelling_a_note) {
    ciclo_de_falhas<GuiaCarregada>({"Cancelling a note", [](auto&) {}, &EcraGuias::anula, "CL'1", 1});
}

TEST(FalhasGuias, returning_lines_of_a_note) {
    const auto prepara = [](GuiaCarregada& guias) {
        guias.abre_devolucao();
        guias.marca(1);
        guias.marca(2);
    };
    const auto age = [](GuiaCarregada& guias) { guias.op.prime(guias.ecra.btGV(1)); };
    ciclo_de_falhas<GuiaCarregada>({"Returning lines of a note", prepara, age, "CL'1", 1});
}

TEST(FalhasAjustes, confirming_an_adjustment) {
    const auto prepara = [](Quebras& ajustes) {
        ajustes.item("REEL'1");
        ajustes.quantidade("4,5");
    };
    ciclo_de_falhas<Quebras>({"Confirming an adjustment", prepara, &Quebras::confirma, "CEDIDA", 1});
}

TEST(FalhasAjustes, replacing_an_adjustment) { // the old document stays in force and is named
    ciclo_de_falhas<Quebras>(
        {"Replacing an adjustment", &Quebras::carregada, &Quebras::confirma, "CEDIDA", 1, true});
}

TEST(FalhasAjustes, cancelling_an_adjustment) {
    ciclo_de_falhas<Quebras>({"Cancelling an adjustment", &Quebras::carregada, &Quebras::anula, "CEDIDA", 1});
}

TEST(FalhasTransferencias, an_item_back_to_orvex) {
    ciclo_de_falhas<Trf<1>>({"Transfer to ORVEX", &Trf<1>::indicado, &EcraTrf::confirma, "OUTRA", 3});
}

TEST(FalhasTransferencias, an_item_to_another_client) {
    ciclo_de_falhas<Trf<2>>({"Transfer to a client", &Trf<2>::indicado, &EcraTrf::confirma, "OUTRA", 3});
}
