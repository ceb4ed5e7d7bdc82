// The eight flows that write, each prepared up to its last press.
#pragma once

#include "tests/adjust/ecra_ajuste.h"
#include "tests/delivery/ecra_guias.h"
#include "tests/transfer/ecra_trf.h"

namespace orvex::testes {

template <typename TBancada>
struct Fluxo {
    std::function<void(TBancada&)> prepara;
    std::function<void(TBancada&)> age; // the last press
    const char* seguinte;               // typed into the first field afterwards
    int etiqueta;                       // which then has its name
    bool segue_com_recusa = false;      // a refused cancellation does not stop it
    bool pede_ao_erp = true;

    bool utilizavel(TBancada& bancada) const {
        if (!bancada.vazio() || !bancada.no_campo(0)) return false;
        bancada.op.preenche(bancada.ecra.campo(0), seguinte);
        return !bancada.ecra.Label2(etiqueta).Caption.empty() && bancada.caixas().empty() &&
               !bancada.janela.ocupada;
    }
};

namespace fluxos {

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
    GuiaCarregada() { carrega_uma({1, 3}); }
};

template <int Modo>
struct Trf : EcraTrf {
    Trf() : EcraTrf(Modo) {}
    void indicado() {
        item("REEL'1");
        if (Modo == 2) destino("CL2");
    }
};

inline Fluxo<EcraGuias> emite_guia() {
    const auto prepara = [](EcraGuias& guias) {
        guias.cliente("CL'1");
        guias.escolhe(1);
        guias.escolhe(3);
        guias.edita(3, "Nome", "Nota d'água");
    };
    return {prepara, &EcraGuias::confirma, "CL'1", 1};
}

inline Fluxo<GuiaCarregada> anula_guia() {
    return {[](auto&) {}, &EcraGuias::anula, "CL'1", 1};
}

inline Fluxo<GuiaCarregada> devolve() {
    const auto prepara = [](GuiaCarregada& guias) {
        guias.abre_devolucao();
        guias.marca(1);
        guias.marca(2);
    };
    return {prepara, [](GuiaCarregada& guias) { guias.op.prime(guias.ecra.btGV(1)); }, "CL'1", 1};
}

inline Fluxo<Quebras> ajusta() { return {&Quebras::escrita, &Quebras::confirma, "CEDIDA", 1}; }

inline Fluxo<Quebras> substitui_ajuste() { // a document that stays in force is named
    return {&Quebras::carregada, &Quebras::confirma, "CEDIDA", 1, true};
}

inline Fluxo<Quebras> anula_ajuste() { return {&Quebras::carregada, &Quebras::anula, "CEDIDA", 1}; }

inline Fluxo<Trf<1>> transfere_para_orvex() { return {&Trf<1>::indicado, &EcraTrf::confirma, "OUTRA", 3}; }

inline Fluxo<Trf<2>> transfere_para_cliente() {
    return {&Trf<2>::indicado, &EcraTrf::confirma, "OUTRA", 3, false, false};
}

} // namespace fluxos
} // namespace orvex::testes
