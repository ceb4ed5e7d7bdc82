#include "tests/ordem/erp_teimoso.h"

#include "platform/sqlite/empresa.h"

namespace orvex::testes {
namespace {

[[noreturn]] void lanca() { throw base::Falha("O ERP não respondeu."); }

} // namespace

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

startup::ValorERP ErpTeimoso::chama(const startup::ReferenciaERP& real, std::string_view membro,
                                    Argumentos& argumentos) {
    if (membro != "Finalizar") return real->chama(membro, argumentos);
    return cria([real, copia = argumentos]() mutable { real->chama("Finalizar", copia); }) ? 0 : -1;
}

startup::ChaveDocumento ErpTeimoso::CriaDocStock(const startup::PedidoDocStock& pedido) {
    const auto criada = std::make_shared<startup::ChaveDocumento>();
    const bool feito = cria([this, pedido, criada] { *criada = SessaoERPEmbebida::CriaDocStock(pedido); });
    return feito ? *criada : startup::ChaveDocumento{};
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
