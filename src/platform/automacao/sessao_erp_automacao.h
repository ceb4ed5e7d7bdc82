// The ERP beside which the program is used: a component that is reached by name, through automation.
//
// What the component gives lives on a thread of the session's own, in an apartment of that thread's; whoever
// calls waits for it. So the caller's window can be painted however long the component takes, and the
// component may show windows of its own. docs/erp-automation.md says what a component must do.
#pragma once

#include "platform/espera/espera.h"
#include "startup/sessao_erp.h"

namespace orvex::platform::automacao {

class Ligacao; // what lives on that thread

// Every failure is a Falha that begins with the operation's name. A component that ends in mid-call is told
// of once more at each call that follows; nothing is sent to it any more. When the session goes, the objects
// that it made are released, even those that somebody still holds (any call of theirs then fails), and it is
// logged off before the component itself is released; a component that takes longer over it than
// `tempo_para_sair` is left behind with its thread.
class SessaoERPAutomacao : public startup::SessaoERP {
  public:
    static constexpr std::chrono::seconds tempo_para_sair{10};

    // The class is named as it is registered, or by its number in braces. Throws Falha when there is none
    // that this program could load. Without a way of waiting the caller just waits.
    explicit SessaoERPAutomacao(const std::string& componente, espera::Espera espera = {});
    explicit SessaoERPAutomacao(std::shared_ptr<Ligacao> ligacao) : ligacao_(std::move(ligacao)) {}
    SessaoERPAutomacao(const SessaoERPAutomacao&) = delete;
    SessaoERPAutomacao& operator=(const SessaoERPAutomacao&) = delete;
    ~SessaoERPAutomacao() override;

    void ModoLigacao(std::int16_t modo) override;
    bool Liga(const std::array<std::string, 5>& valores) override;
    startup::ReferenciaERP CriaObjecto(const std::string& classe) override;

    void PreparaDocStock(bool sempre_verdadeiro) override;
    startup::ChaveDocumento CriaDocStock(const startup::PedidoDocStock& pedido) override;

    std::int16_t SubmeteDocumento(std::int16_t especie, const startup::ReferenciaERP& documento) override;
    startup::ReferenciaERP DocumentoSubmetido() override;

    startup::ResultadoERP AnulaDocumento(std::int16_t sempre_um,
                                         const startup::ChaveDocumento& chave) override;
    startup::ResultadoERP ResultadoUltimo() override;

    startup::ReferenciaERP Empresa() override;
    void Desliga() override;

  private:
    std::shared_ptr<Ligacao> ligacao_;
};

} // namespace orvex::platform::automacao
