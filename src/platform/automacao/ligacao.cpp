#include "platform/automacao/ligacao.h"

#include "base/falha.h"
#include "platform/automacao/objecto_automacao.h"

namespace orvex::platform::automacao {

using startup::ReferenciaERP;
using startup::ValorERP;

Ligacao::Ligacao(const std::function<Referencia<IDispatch>()>& cria, Espera espera)
    : espera_(std::move(espera)) {
    apartamento_.executa([&] { componente_ = std::make_shared<Componente>(cria()); }, espera_);
}

ReferenciaERP Ligacao::objecto_de(const Valor& valor, const std::string& de_onde) {
    Referencia<IDispatch> despacho = objecto_em(valor.variant());
    if (!despacho) return {};
    return std::make_shared<ObjectoAutomacao>(shared_from_this(),
                                              componente_->junta(std::move(despacho), de_onde), de_onde);
}

ValorERP Ligacao::valor_de(const Valor& valor, TipoMembro tipo, const std::string& de_onde) {
    if (tipo == TipoMembro::por_ler) return {};
    if (tipo != TipoMembro::objecto) return lido(tipo, variante_de(valor.variant()));
    if (ReferenciaERP objecto = objecto_de(valor, de_onde)) return objecto;
    throw base::Falha("Não veio o objecto que se esperava.", base::numeros_falha::tipo_diferente);
}

Referencia<IDispatch> Ligacao::despacho_de(const ReferenciaERP& objecto) {
    const auto* const nosso = dynamic_cast<const ObjectoAutomacao*>(objecto.get());
    if (nosso == nullptr || nosso->ligacao() != this)
        throw base::Falha("O objecto não é deste componente do ERP.");
    return componente_->despacho(nosso->objecto());
}

void Ligacao::larga(Componente::Objecto objecto) {
    apartamento_.entrega([componente = componente_, objecto] { componente->larga(objecto); });
}

void Ligacao::fecha(std::chrono::milliseconds limite) noexcept {
    apartamento_.termina([componente = componente_] { componente->fecha(); }, limite);
}

} // namespace orvex::platform::automacao
