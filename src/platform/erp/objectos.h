// The late-bound objects of the emulated document API. They hold on to the session's state, which they
// outlive harmlessly: once the session is logged off, what needs the ERP throws.
#pragma once

#include "platform/erp/documentos.h"

#include <memory>

namespace orvex::platform::erp {

// What a session and the objects it made share.
struct Estado {
    std::unique_ptr<BaseErp> base; // none while logged off
    startup::ResultadoERP ultimo;  // outcome of the last operation of any kind

    BaseErp& aberta() const;
    // Run an operation and keep its outcome: one that writes, one that reads.
    const startup::ResultadoERP& executa(const std::function<void()>& operacao);
    const startup::ResultadoERP& consulta(const std::function<void()>& operacao);
};

// "SageApiNextPlus.DocumentosGcLin", and the header of a document.
class ObjectoRegisto : public startup::ObjectoERP {
  public:
    explicit ObjectoRegisto(std::shared_ptr<Registo> registo) : registo_(std::move(registo)) {}

    startup::ValorERP obtem(std::string_view membro) override { return registo_->obtem(membro); }
    void poe(std::string_view membro, const startup::ValorERP& valor) override;

    Registo& registo() { return *registo_; }

  private:
    startup::ValorERP invoca(std::string_view membro, Argumentos& argumentos) override;

    std::shared_ptr<Registo> registo_;
};

// "SageApiNextPlus.DocumentoComercial".
class DocumentoComercial : public startup::ObjectoERP {
  public:
    explicit DocumentoComercial(std::shared_ptr<Estado> estado);

    startup::ValorERP obtem(std::string_view membro) override;
    // A header is taken by its values, as AdicionaLinha takes a line.
    void poe(std::string_view membro, const startup::ValorERP& valor) override;

    // Checks the document and, when it may be saved, lets Finalizar save it.
    const startup::ResultadoERP& submete();

  private:
    startup::ValorERP invoca(std::string_view membro, Argumentos& argumentos) override;

    base::Variante Validar(Argumentos&);
    base::Variante Ler(Argumentos& chave);                   // year, series, number, type
    base::Variante SugereValoresLin(Argumentos& argumentos); // the line and seven flags
    base::Variante AdicionaLinha(Argumentos& linha);
    base::Variante Finalizar(Argumentos& argumentos); // number (comes back as the one given), 0, type, year

    // 0, or -1 when it was refused; the message becomes UltimaMensagem.
    base::Variante resultado(const startup::ResultadoERP& resultado);

    std::shared_ptr<Estado> estado_;
    std::shared_ptr<Documento> documento_ = std::make_shared<Documento>();
    std::int64_t origem_ = 0;
    std::string ultima_mensagem_;
    bool submetido_ = false;
};

} // namespace orvex::platform::erp
