#include "tests/ordem/erp_teimoso.h"

#include "base/falha.h"
#include "platform/sqlite/empresa.h"

namespace orvex::testes {
namespace {

const startup::ResultadoERP recusado{false, "O ERP recusou."};

[[noreturn]] void lanca() { throw base::Falha("O ERP não respondeu."); }

class DocumentoTeimoso : public startup::ObjectoERP {
  public:
    DocumentoTeimoso(startup::ReferenciaERP real, ErpTeimoso& erp) : real_(std::move(real)), erp_(erp) {}

    startup::ValorERP obtem(std::string_view membro) override { return real_->obtem(membro); }
    void poe(std::string_view membro, const startup::ValorERP& valor) override { real_->poe(membro, valor); }
    const startup::ReferenciaERP& real() const { return real_; }

  private:
    startup::ValorERP invoca(std::string_view membro, Argumentos& argumentos) override {
        if (membro != "Finalizar") return real_->chama(membro, argumentos);
        const bool feito =
            erp_.cria([real = real_, copia = argumentos]() mutable { real->chama("Finalizar", copia); });
        return feito ? 0 : -1;
    }

    startup::ReferenciaERP real_;
    ErpTeimoso& erp_;
};

} // namespace

void ErpTeimoso::faz_o_que_falta() {
    if (falta_) falta_();
}

void ErpTeimoso::na_base(const char* sql) {
    platform::sqlite::abre_base(empresa_ / platform::sqlite::ficheiro_erp).exec(sql);
}

bool ErpTeimoso::cria(const std::function<void()>& faz) {
    recusou_ = manha_ == Manha::recusa_e_cria;
    if (manha_ == Manha::lanca_e_cria_depois) {
        falta_ = faz;
        lanca();
    }
    na_base("update Numeradores set Ultimo = Ultimo + 7");
    faz();
    if (manha_ == Manha::cria_e_lanca) lanca();
    if (manha_ == Manha::multiplica_linhas)
        na_base("update DocGcLin set NumLinha = NumLinha * 10 where NNumDoc > 7");
    if (manha_ == Manha::troca_linhas)
        na_base("update DocGcLin set NumLinha = -NumLinha where NNumDoc > 7;"
                "update DocGcLin set NumLinha = NumLinha + 4 where NumLinha < 0");
    return !recusou_;
}

startup::ReferenciaERP ErpTeimoso::CriaObjecto(const std::string& classe) {
    const startup::ReferenciaERP real = SessaoERPEmbebida::CriaObjecto(classe);
    if (!classe.ends_with("Comercial")) return real;
    return std::make_shared<DocumentoTeimoso>(real, *this);
}

startup::ChaveDocumento ErpTeimoso::CriaDocStock(const startup::PedidoDocStock& pedido) {
    const auto criada = std::make_shared<startup::ChaveDocumento>();
    const bool feito = cria([this, pedido, criada] { *criada = SessaoERPEmbebida::CriaDocStock(pedido); });
    return feito ? *criada : startup::ChaveDocumento{};
}

std::int16_t ErpTeimoso::SubmeteDocumento(std::int16_t especie, const startup::ReferenciaERP& documento) {
    recusou_ = false;
    return SessaoERPEmbebida::SubmeteDocumento(especie, dynamic_cast<DocumentoTeimoso&>(*documento).real());
}

startup::ReferenciaERP ErpTeimoso::DocumentoSubmetido() {
    return std::make_shared<DocumentoTeimoso>(SessaoERPEmbebida::DocumentoSubmetido(), *this);
}

startup::ResultadoERP ErpTeimoso::AnulaDocumento(std::int16_t um, const startup::ChaveDocumento& chave) {
    recusou_ = manha_ == Manha::recusa_e_anula || manha_ == Manha::recusa_anular;
    if (manha_ == Manha::recusa_anular) return recusado;
    if (manha_ == Manha::diz_que_anula) return {true, ""};
    if (manha_ == Manha::lanca_e_anula_depois) {
        falta_ = [this, um, chave] { SessaoERPEmbebida::AnulaDocumento(um, chave); };
        lanca();
    }
    const startup::ResultadoERP feito = SessaoERPEmbebida::AnulaDocumento(um, chave);
    if (manha_ == Manha::anula_e_lanca) lanca();
    return recusou_ ? recusado : feito;
}

startup::ResultadoERP ErpTeimoso::ResultadoUltimo() {
    if (recusou_) return recusado;
    return manha_ == Manha::diz_que_anula ? startup::ResultadoERP{true, ""}
                                          : SessaoERPEmbebida::ResultadoUltimo();
}

} // namespace orvex::testes
