#include "tests/adjust/ecra_ajuste.h"
#include "tests/delivery/ecra_guias.h"
#include "tests/falhas/ciclo_de_falhas.h"
#include "tests/transfer/ecra_trf.h"

using namespace orvex::testes;

namespace {

struct Quebras : EcraAjuste {
    Quebras() : EcraAjuste(2) {}
    void escrita() {
        item("REEL'1");
        quantidade("4,5");
    }
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

TEST(Falhas, AoEmitirUmaGuia) {
    const auto prepara = [](EcraGuias& guias) {
        guias.cliente("CL'1");
        guias.escolhe(1);
        guias.escolhe(3);
        guias.edita(3, "Nome", "Nota d'água");
    };
    ciclo_de_falhas<EcraGuias>({prepara, &EcraGuias::confirma, "CL'1", 1});
}

TEST(Falhas, AoAnularUmaGuia) {
    ciclo_de_falhas<GuiaCarregada>({[](auto&) {}, &EcraGuias::anula, "CL'1", 1});
}

TEST(Falhas, AoDevolverLinhasDeUmaGuia) {
    const auto prepara = [](GuiaCarregada& guias) {
        guias.abre_devolucao();
        guias.marca(1);
        guias.marca(2);
    };
    const auto age = [](GuiaCarregada& guias) { guias.op.prime(guias.ecra.btGV(1)); };
    ciclo_de_falhas<GuiaCarregada>({prepara, age, "CL'1", 1});
}

TEST(Falhas, AoConfirmarUmAjuste) {
    ciclo_de_falhas<Quebras>({&Quebras::escrita, &Quebras::confirma, "CEDIDA", 1});
}

TEST(Falhas, AoSubstituirUmAjuste) { // the old document stays in force and is named
    ciclo_de_falhas<Quebras>({&Quebras::carregada, &Quebras::confirma, "CEDIDA", 1, true});
}

TEST(Falhas, AoAnularUmAjuste) {
    ciclo_de_falhas<Quebras>({&Quebras::carregada, &Quebras::anula, "CEDIDA", 1});
}

TEST(Falhas, AoTransferirUmArtigoParaAOrvex) {
    ciclo_de_falhas<Trf<1>>({&Trf<1>::indicado, &EcraTrf::confirma, "OUTRA", 3});
}

TEST(Falhas, AoTransferirUmArtigoParaOutroCliente) {
    ciclo_de_falhas<Trf<2>>({&Trf<2>::indicado, &EcraTrf::confirma, "OUTRA", 3});
}
