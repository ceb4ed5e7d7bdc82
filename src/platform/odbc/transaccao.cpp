// Transactions, and what is known of one when the connection is lost.
#include "platform/odbc/motor_odbc.h"

namespace orvex::platform::odbc {
namespace {

using base::Falha;

startup::ConfirmacaoDesconhecida desconhecida(const Falha& falha) {
    return startup::ConfirmacaoDesconhecida(falha.what() + std::string(nao_se_sabe), falha.numero());
}

} // namespace

Falha com(const Falha& falha, const char* conclusao) {
    return Falha(falha.what() + std::string(conclusao), falha.numero());
}

std::string limite_de_bloqueio(int milissegundos) {
    return "SET LOCK_TIMEOUT " + std::to_string(milissegundos);
}

void MotorODBC::inicia() {
    acaba_o_adiado();
    transaccao_ = Transaccao::nenhuma;
    trancada_ = false;
    testemunha_.reset();
    std::int64_t abertas = 0;
    try {
        abertas = corre(Repete::sim, [&] {
            return instrucao().pergunta(std::string("BEGIN TRANSACTION; ") + transaccoes_abertas);
        });
    } catch (const Falha&) {
        anula();
        throw;
    }
    if (abertas != 1) {
        anula();
        throw Falha("Havia já uma transacção aberta, que foi anulada. Tente novamente.",
                    startup::numeros_bd::falha_geral);
    }
    ligacao_->retira_erro(); // of before: the server has just told how things are
    transaccao_ = Transaccao::aberta;
}

void MotorODBC::confirma() {
    acaba_o_adiado();
    liberta();
    exige_transaccao_viva();
    if (transaccao_ != Transaccao::aberta)
        throw Falha("Não há transacção aberta.", startup::numeros_bd::falha_geral);
    numera_testemunha();
    exige_transaccao_viva();
    try {
        instrucao().executa("COMMIT TRANSACTION");
        transaccao_ = Transaccao::nenhuma;
    } catch (const FalhaODBC& apanhada) {
        const FalhaODBC falha = toma_nota(apanhada);
        const bool recusada = ligacao_ != nullptr; // the server has answered
        if (recusada && transaccao_ == Transaccao::aberta) throw falha;
        if (recusada) throw com(falha, nada_ficou);
        transaccao_ = Transaccao::nenhuma;
        if (!confirmada_afinal(falha)) throw com(falha, nada_ficou);
        engole(falha);
    }
}

// The last number given is this transaction's own: no other program of ours writes meanwhile. A row that is
// not there now, another program's or one deleted since, would prove nothing later.
void MotorODBC::numera_testemunha() {
    if (!testemunha_) return;
    Testemunha& esta = *testemunha_;
    esta.numero = corre(Repete::nao, [&] {
        const std::string ultimo = "IDENT_CURRENT('" + esta.tabela + "')";
        return instrucao().pergunta("SELECT " + ultimo + " AS n FROM " + esta.tabela + esta.condicao + ultimo,
                                    esta.chave);
    });
    if (esta.numero == 0) testemunha_.reset();
}

// Waits for the lost transaction to end, if the server has not noticed yet, instead of reading around it.
bool MotorODBC::confirmada_afinal(const FalhaODBC& falha) {
    if (!testemunha_) throw desconhecida(falha);
    try {
        liga();
        instrucao().executa(limite_de_bloqueio(esperas_.instrucao * 900));
        const bool confirmada = instrucao().pergunta("SELECT COUNT(*) AS n FROM " + testemunha_->tabela +
                                                         " WITH (READCOMMITTEDLOCK)" + testemunha_->condicao +
                                                         std::to_string(testemunha_->numero),
                                                     testemunha_->chave) > 0;
        ligacao_.reset(); // its patience is not that of other statements
        return confirmada;
    } catch (const std::exception& da_procura) {
        engole(da_procura);
        ligacao_.reset();
        throw desconhecida(falha);
    }
}

void MotorODBC::anula() {
    if (passo_ != nullptr) passo_->esquece_respostas();
    if (passo_ != nullptr && transaccao_ != Transaccao::nenhuma) passo_->retira_escritas();
    transaccao_ = Transaccao::nenhuma;
    if (ligacao_ == nullptr) return; // the server did it when the connection was lost
    liberta();
    try {
        instrucao().executa("IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION");
    } catch (const Falha& falha) {
        engole(falha);
        ligacao_.reset(); // which undoes it for certain
    }
}

std::int64_t MotorODBC::abertas_no_servidor() const { return instrucao().pergunta(transaccoes_abertas); }

bool MotorODBC::em_transaccao() {
    envia();
    liberta();
    std::int64_t abertas = 0;
    try {
        if (ligacao_ != nullptr) abertas = abertas_no_servidor();
    } catch (const Falha& falha) {
        engole(falha);
        ligacao_.reset(); // which undoes what may be open
    }
    if (abertas == 0) transaccao_ = Transaccao::nenhuma; // the program now knows
    return abertas > 0;
}

// Whatever the failure that did it was taken for, it is noticed before anything else runs.
bool MotorODBC::anulada_pelo_servidor() {
    if (transaccao_ == Transaccao::aberta && ligacao_ != nullptr && ligacao_->retira_erro()) {
        try {
            if (abertas_no_servidor() == 0) transaccao_ = Transaccao::perdida;
        } catch (const FalhaODBC& apanhada) {
            const FalhaODBC falha = toma_nota(apanhada);
            if (transaccao_ == Transaccao::aberta) throw falha; // nobody can tell; it is asked again
            engole(falha);
        }
    }
    return transaccao_ == Transaccao::perdida;
}

void MotorODBC::exige_transaccao_viva() {
    if (transaccao_ == Transaccao::falhada) throw Falha(*causa_);
    if (anulada_pelo_servidor())
        throw Falha("A transacção foi anulada pelo servidor.", startup::numeros_bd::falha_geral);
}

// What a failure means for the connection and for the transaction on it.
FalhaODBC MotorODBC::toma_nota(const FalhaODBC& apanhada) {
    // A connection that was dead already fails in words of its own.
    FalhaODBC falha = ligacao_ != nullptr && !ligacao_->viva() ? ligacao_perdida(apanhada) : apanhada;
    // After a time-out nobody knows when the server will be listening again.
    const bool perdida =
        falha.natureza() == FalhaODBC::Natureza::ligacao || falha.natureza() == FalhaODBC::Natureza::tempo;
    if (perdida) ligacao_.reset();
    if (transaccao_ == Transaccao::aberta && (perdida || falha.natureza() == FalhaODBC::Natureza::vitima))
        transaccao_ = Transaccao::perdida;
    return falha;
}

} // namespace orvex::platform::odbc
