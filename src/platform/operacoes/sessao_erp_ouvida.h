// An ERP session that tells a listener what is asked of it and of its objects, and changes nothing: neither
// what is asked, nor the answers, nor the kind of a failure.
#pragma once

#include "platform/operacoes/ouvinte.h"
#include "startup/sessao_erp.h"

namespace orvex::platform::operacoes {

class SessaoERPOuvida : public startup::SessaoERP {
  public:
    // The listener must outlive the session and its objects.
    SessaoERPOuvida(std::unique_ptr<startup::SessaoERP> real, Ouvinte& ouvinte)
        : real_(std::move(real)), ouvinte_(ouvinte) {}

    void ModoLigacao(std::int16_t modo) override { real_->ModoLigacao(modo); }
    bool Liga(const std::array<std::string, 5>& valores) override;
    startup::ReferenciaERP CriaObjecto(const std::string& classe) override;

    void PreparaDocStock(bool sempre_verdadeiro) override;
    startup::ChaveDocumento CriaDocStock(const startup::PedidoDocStock& pedido) override;

    std::int16_t SubmeteDocumento(std::int16_t especie, const startup::ReferenciaERP& documento) override;
    startup::ReferenciaERP DocumentoSubmetido() override;

    startup::ResultadoERP AnulaDocumento(std::int16_t sempre_um,
                                         const startup::ChaveDocumento& chave) override;
    startup::ResultadoERP ResultadoUltimo() override;

    startup::ReferenciaERP Empresa() override { return real_->Empresa(); }
    void Desliga() override { real_->Desliga(); }

  private:
    std::unique_ptr<startup::SessaoERP> real_;
    Ouvinte& ouvinte_;
};

} // namespace orvex::platform::operacoes
