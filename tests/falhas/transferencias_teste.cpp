#include "tests/falhas/ciclo_de_falhas.h"
#include "tests/transfer/ecra_trf.h"

using namespace orvex::testes;

namespace {

template <int Modo>
struct Trf : EcraTrf {
    Trf() : EcraTrf(Modo) {}
};

template <int Modo>
Fluxo<Trf<Modo>> transferencia(const char* nome) {
    return {nome,
            [](Trf<Modo>& trf) {
                trf.item("REEL'1");
                if (Modo == 2) trf.destino("CL2");
            },
            [](Trf<Modo>& trf) { trf.confirma(); },
            [](Trf<Modo>& trf) {
                if (!trf.vazio()) return false;
                trf.item("OUTRA");
                return !trf.ecra.Label2(3).Caption.empty() && trf.caixas().empty() && !trf.janela.ocupada;
            }};
}

} // namespace

TEST(FalhasTransferencias, an_item_back_to_orvex) { ciclo_de_falhas(transferencia<1>("Transfer to ORVEX")); }

TEST(FalhasTransferencias, an_item_to_another_client) {
    ciclo_de_falhas(transferencia<2>("Transfer to a client"));
}
