#include "confirmacao/observador.h"

namespace orvex::confirmacao {

const char* nome(Fluxo fluxo) {
    switch (fluxo) {
    case Fluxo::emite_guia:
        return "emite_guia";
    case Fluxo::anula_guia:
        return "anula_guia";
    case Fluxo::devolve:
        return "devolve";
    case Fluxo::ajusta:
        return "ajusta";
    case Fluxo::substitui_ajuste:
        return "substitui_ajuste";
    case Fluxo::anula_ajuste:
        return "anula_ajuste";
    case Fluxo::transfere_para_orvex:
        return "transfere_para_orvex";
    case Fluxo::transfere_para_cliente:
        return "transfere_para_cliente";
    }
    return "";
}

Observador& sem_observador() {
    static Observador nenhum;
    return nenhum;
}

} // namespace orvex::confirmacao
