// Transactions, and what is known of one when the connection is lost.
#include "platform/odbc/motor.h"

namespace orvex::platform::odbc {
namespace {

using base::Falha;

constexpr const char* em_uso = "Os dados estão a ser gravados por outro posto. Tente novamente.";
constexpr const char* abertas_no_servidor = "SELECT @@TRANCOUNT AS n";
constexpr const char* nao_se_sabe =
    " Não se sabe se o que estava a ser gravado ficou na base de dados: verifique antes de repetir.";

} // namespace

Falha com(const Falha& falha, const char* conclusao) {
    return Falha(falha.what() + std::string(conclusao), falha.numero());
}

std::string limite_de_bloqueio(int milissegundos) {
    return "SET LOCK_TIMEOUT " + std::to_string(milissegundos);
}

void Motor::inicia() {
    transaccao_ = Transaccao::nenhuma;
    testemunha_.reset();
    // The lock is the program's own and ends with the transaction: it stops neither readers nor the ERP.
    const std::string sql =
        "BEGIN TRANSACTION; DECLARE @r int; EXEC @r = sp_getapplock @Resource=N'xel_ORVEX', "
        "@LockMode=N'Exclusive', @LockOwner=N'Transaction', @LockTimeout=" +
        std::to_string(esperas_.bloqueio * 1000) + "; SELECT @r AS r";
    std::int64_t concedido = 0;
    try {
        concedido = corre(Repete::sim, [&] { return pergunta(sql); });
    } catch (const Falha&) {
        anula();
        throw;
    }
    if (concedido < 0) {
        anula();
        throw Falha(em_uso, startup::numeros_bd::falha_geral);
    }
    transaccao_ = Transaccao::aberta;
}

void Motor::confirma() {
    // The last number given is this transaction's own: no other program of ours writes meanwhile.
    if (testemunha_)
        testemunha_->numero = corre(Repete::nao, [&] {
            return pergunta("SELECT IDENT_CURRENT('" + testemunha_->tabela + "') AS n");
        });
    liberta();
    exige_transaccao_viva();
    if (transaccao_ != Transaccao::aberta)
        throw Falha("Não há transacção aberta.", startup::numeros_bd::falha_geral);
    try {
        Instrucao(*ligacao_, esperas_).executa("COMMIT TRANSACTION");
        transaccao_ = Transaccao::nenhuma;
    } catch (const FalhaODBC& apanhada) {
        const FalhaODBC falha = toma_nota(apanhada);
        if (ligacao_ != nullptr) throw;
        transaccao_ = Transaccao::nenhuma;
        if (!testemunha_) throw com(falha, nao_se_sabe);
        bool confirmada = false;
        try {
            liga();
            confirmada = esta_na_base(*testemunha_);
        } catch (const FalhaODBC&) {
            ligacao_.reset();
            throw com(falha, nao_se_sabe);
        }
        if (!confirmada) throw com(falha, nada_ficou);
    }
}

// Waits for the lost transaction to end, if the server has not noticed yet, instead of reading around it.
bool Motor::esta_na_base(const Testemunha& testemunha) {
    executa(limite_de_bloqueio(esperas_.instrucao * 900));
    const bool esta =
        pergunta("SELECT COUNT(*) AS n FROM " + testemunha.tabela + " WITH (READCOMMITTEDLOCK) WHERE " +
                 testemunha.coluna + "=" + std::to_string(testemunha.numero)) > 0;
    executa(limite_de_bloqueio(esperas_.bloqueio * 1000));
    return esta;
}

void Motor::anula() {
    transaccao_ = Transaccao::nenhuma;
    if (ligacao_ == nullptr) return; // the server did it when the connection was lost
    liberta();
    try {
        Instrucao(*ligacao_, esperas_).executa("IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION");
    } catch (const FalhaODBC&) {
        ligacao_.reset(); // which undoes it for certain
    }
}

bool Motor::em_transaccao() {
    liberta();
    std::int64_t abertas = 0;
    try {
        if (ligacao_ != nullptr) abertas = pergunta(abertas_no_servidor);
    } catch (const FalhaODBC& falha) {
        toma_nota(falha);
        if (ligacao_ != nullptr) throw;
    }
    if (abertas == 0) transaccao_ = Transaccao::nenhuma; // the program now knows
    return abertas > 0;
}

// A transaction that ended on the server, whatever the failure that did it was taken for, is noticed before
// anything else runs.
void Motor::exige_transaccao_viva() {
    if (transaccao_ == Transaccao::aberta && ligacao_ != nullptr && ligacao_->retira_erro()) {
        try {
            if (pergunta(abertas_no_servidor) == 0) transaccao_ = Transaccao::perdida;
        } catch (const FalhaODBC& falha) {
            toma_nota(falha);
        }
    }
    if (transaccao_ == Transaccao::perdida)
        throw Falha("A transacção foi anulada pelo servidor.", startup::numeros_bd::falha_geral);
}

// What a failure means for the connection and for the transaction on it.
FalhaODBC Motor::toma_nota(const FalhaODBC& apanhada) {
    // A connection that was dead already fails in words of its own.
    FalhaODBC falha = ligacao_ != nullptr && !ligacao_->viva() ? ligacao_perdida(apanhada) : apanhada;
    // After a time-out nobody knows when the server will be listening again.
    const bool perdida =
        falha.especie() == FalhaODBC::Especie::ligacao || falha.especie() == FalhaODBC::Especie::tempo;
    if (perdida) ligacao_.reset();
    if (transaccao_ == Transaccao::aberta && (perdida || falha.especie() == FalhaODBC::Especie::vitima))
        transaccao_ = Transaccao::perdida;
    return falha;
}

} // namespace orvex::platform::odbc
