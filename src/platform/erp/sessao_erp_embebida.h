// The ERP of an embedded company: enough of an ERP to run the program whole, on the company's own erp.db.
//
// Documents are saved and cancelled at once, through a connection of their own: the program's rollback never
// undoes them. A refusal is a value with a message in Portuguese; only what cannot work at all throws Falha:
// a company that cannot be opened, an unknown class or member, a session that is not logged in.
#pragma once

#include "platform/espera/espera.h"
#include "startup/sessao_erp.h"

namespace orvex::platform::erp {

struct Estado;

class SessaoERPEmbebida : public startup::SessaoERP {
  public:
    SessaoERPEmbebida();
    explicit SessaoERPEmbebida(int espera_ms);          // for a lock held by another program
    explicit SessaoERPEmbebida(espera::Espera a_vista); // the usual wait, and who asks is seen waiting

    void ModoLigacao(std::int16_t) override {} // there is one mode only
    // The database is the company's folder.
    bool Liga(const std::array<std::string, 5>& valores) override;
    startup::ReferenciaERP CriaObjecto(const std::string& classe) override;

    void PreparaDocStock(bool) override {}
    startup::ChaveDocumento CriaDocStock(const startup::PedidoDocStock& pedido) override;

    std::int16_t SubmeteDocumento(std::int16_t especie, const startup::ReferenciaERP& documento) override;
    startup::ReferenciaERP DocumentoSubmetido() override { return submetido_; }

    startup::ResultadoERP AnulaDocumento(std::int16_t sempre_um,
                                         const startup::ChaveDocumento& chave) override;
    startup::ResultadoERP ResultadoUltimo() override;

    startup::ReferenciaERP Empresa() override { return empresa_; }
    void Desliga() override;

  private:
    espera::Espera a_vista_;
    int espera_ms_;
    std::shared_ptr<Estado> estado_;
    startup::ReferenciaERP empresa_;
    startup::ReferenciaERP submetido_;
};

} // namespace orvex::platform::erp
