// The way a confirmation ends that failed.
#include "confirmacao/confirmacao.h"

#include "base/descricao.h"

#include <algorithm>
#include <utility>

namespace orvex::confirmacao {

using startup::ChaveDocumento;

namespace {

std::string lista_de(const std::vector<ChaveDocumento>& documentos) {
    std::string texto;
    for (const ChaveDocumento& chave : documentos)
        texto += "\n\r'" + chave.texto() + " '";
    return texto;
}

} // namespace

void Confirmacao::compensa(const std::exception& falha, const std::string& texto_erro) {
    falhou_ = true;
    const std::string anomala = "Situação Anómala\n\rErro: " + texto_erro;
    if (confirmada_) { // only what came after it failed
        avisa(anomala);
        avisa_por_anular(PorAnular);
        if (!caixa_falhada_) conta_feita();
        return relanca_caixa();
    }
    Compensacao fim{.erro = texto_erro,
                    .por_saber = dynamic_cast<const startup::ConfirmacaoDesconhecida*>(&falha) != nullptr};
    desfaz_transaccao();
    avisa(anomala);
    if (fim.por_saber)
        avisa_por_saber(fim);
    else
        anula_criados(fim);
    for (const std::string& documento : por_nomear_)
        avisa_por_verificar(fim.por_saber ? "Se não, o ERP pode ter criado o documento " + documento +
                                                " e não se sabe o seu número: procure-o no ERP e anule-o."
                                          : "Não se sabe se o ERP criou o documento " + documento +
                                                ". Procure-o no ERP e, se existir, anule-o.",
                            fim);
    for (const auto& [chave, certa] : anulacoes_)
        avisa_por_verificar("O documento " + chave.texto() +
                                (certa ? " ficou anulado no ERP, mas pode continuar nos movimentos da ORVEX."
                                       : " pode ter ficado anulado no ERP, e continua nos movimentos da "
                                         "ORVEX: veja o seu estado no ERP."),
                            fim);
    fim.avisado = caixa_falhada_ == nullptr;
    meios_.observador.compensada(fim);
    relanca_caixa();
}

void Confirmacao::relanca_caixa() {
    if (caixa_falhada_) std::rethrow_exception(std::exchange(caixa_falhada_, nullptr));
}

// Asking may fail where the rollback does not. What neither could end, the next transaction's beginning ends.
void Confirmacao::desfaz_transaccao() {
    try {
        if (!meios_.BD.EmTransaccao()) return;
    } catch (const std::exception&) { // those who listen to the session were told
    }
    try {
        meios_.BD.AnulaTransaccao();
    } catch (const std::exception&) {
    }
}

void Confirmacao::anula_criados(Compensacao& fim) {
    for (const ChaveDocumento& chave : DocsCriados) {
        bool anulado = false;
        try {
            anuncia_anulacao(chave);
            anulado = pede_anulacao(chave, Leitura::resposta).sucesso;
        } catch (const std::exception&) { // the observer was told, and the user is
        }
        (anulado ? fim.anulados : fim.por_anular).push_back(chave);
    }
    avisa_por_anular(fim.por_anular);
}

// Nothing is cancelled on a guess.
void Confirmacao::avisa_por_saber(Compensacao& fim) {
    // What the ERP has cancelled is no longer in force, whatever became of the ledger.
    std::vector<ChaveDocumento> em_vigor = DocsCriados;
    std::erase_if(em_vigor, [this](const ChaveDocumento& chave) {
        return std::any_of(anulacoes_.begin(), anulacoes_.end(),
                           [&](const Anulacao& esta) { return esta.certa && esta.chave == chave; });
    });
    const std::string pergunta = "Antes de repetir, veja se " + meios_.sinal;
    if (!em_vigor.empty())
        avisa_por_verificar("Os documentos seguintes continuam em vigor no ERP - " + lista_de(em_vigor) +
                                "\n\r" + pergunta + ": se sim, está tudo feito; se não, anule-os no ERP.",
                            fim);
    else if (anulacoes_.empty())
        avisa_por_verificar(pergunta + ": se sim, está tudo feito" +
                                (por_nomear_.empty() ? "; se não, nada ficou." : "."),
                            fim);
    if (!PorAnular.empty())
        avisa_por_verificar("Se sim, os documentos seguintes, que o ERP não anulou, devem ser anulados "
                            "manualmente - " +
                                lista_de(PorAnular),
                            fim);
}

void Confirmacao::avisa_por_anular(const std::vector<ChaveDocumento>& documentos) {
    if (documentos.empty()) return;
    avisa("Os documentos seguintes devem ser anulados manualmente - " + lista_de(documentos));
}

// A box that cannot be shown keeps no document from being cancelled and no other from being named.
void Confirmacao::avisa(const std::string& texto) {
    if (!falhou_) return meios_.avisa(texto);
    try {
        meios_.avisa(texto);
    } catch (...) {
        if (!caixa_falhada_) caixa_falhada_ = std::current_exception();
    }
}

void Confirmacao::avisa_por_verificar(const std::string& texto, Compensacao& fim) {
    fim.por_verificar.push_back(texto);
    avisa(texto);
}

} // namespace orvex::confirmacao
