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

std::optional<Fluxo> le_fluxo(std::string_view texto) {
    for (const Fluxo fluxo : fluxos)
        if (texto == nome(fluxo)) return fluxo;
    return std::nullopt;
}

Observador& sem_observador() {
    static Observador nenhum;
    return nenhum;
}

void Observadores::intencao(const Intencao& intencao) {
    for (Observador* um : todos_)
        um->intencao(intencao);
}

void Observadores::antes_do_erp(const PedidoERP& pedido) {
    for (Observador* um : todos_)
        um->antes_do_erp(pedido);
}

void Observadores::depois_do_erp(const PedidoERP& pedido, const RespostaERP& resposta) {
    for (Observador* um : todos_)
        um->depois_do_erp(pedido, resposta);
}

void Observadores::antes_de_confirmar() {
    for (Observador* um : todos_)
        um->antes_de_confirmar();
}

void Observadores::feita() noexcept {
    for (Observador* um : todos_)
        um->feita();
}

void Observadores::compensada(const Compensacao& compensacao) noexcept {
    for (Observador* um : todos_)
        um->compensada(compensacao);
}

void Observadores::engolida(const std::string& texto) noexcept {
    for (Observador* um : todos_)
        um->engolida(texto);
}

} // namespace orvex::confirmacao
