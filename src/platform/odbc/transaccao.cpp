// Transactions, and what is known of one when the connection is lost.
#include "platform/odbc/motor.h"

namespace orvex::platform::odbc {
namespace {

using base::Falha;

constexpr const char* em_uso = "Os dados estão a ser gravados por outro posto. Tente novamente.";
constexpr const char* abertas_no_servidor = "SELECT @@TRANCOUNT AS n";

startup::ConfirmacaoDesconhecida nao_se_sabe(const Falha& falha) {
    return startup::ConfirmacaoDesconhecida(
        falha.what() + std::string(" Não se sabe se o que estava a ser gravado ficou na base de dados: "
                                   "verifique antes de repetir."),
        falha.numero());
}

} // namespace

Falha com(const Falha& falha, const char* conclusao) {
    return Falha(falha.what() + std::string(conclusao), falha.numero());
}

std::string limite_de_bloqueio(int milissegundos) {
    return "SET LOCK_TIMEOUT " + std::to_string(milissegundos);
}

void Motor::inicia() {
    transaccao_ = Transaccao::nenhuma;
    trancada_ = false;
    testemunha_.reset();
    std::int64_t abertas = 0;
    try {
        abertas = corre(Repete::sim,
                        [&] { return pergunta(std::string("BEGIN TRANSACTION; ") + abertas_no_servidor); });
    } catch (const Falha&) {
        anula();
        throw;
    }
    if (abertas != 1) {
        anula();
        throw Falha("Havia já uma transacção aberta, que foi anulada. Tente novamente.",
                    startup::numeros_bd::falha_geral);
    }
    transaccao_ = Transaccao::aberta;
}

void Motor::tranca() {
    if (trancada_) return;
    pede_tranca("xel_ORVEX", "Transaction");
    trancada_ = true;
}

void Motor::tranca_para_escrever() {
    if (transaccao_ == Transaccao::aberta && !trancada_) tranca();
}

void Motor::pede_tranca(const char* recurso, const char* dono) {
    const std::string sql = std::string("DECLARE @r int; EXEC @r = sp_getapplock @Resource=N'") + recurso +
                            "', @LockMode=N'Exclusive', @LockOwner=N'" + dono +
                            "', @LockTimeout=" + std::to_string(esperas_.bloqueio * 1000) +
                            "; SELECT @r AS r";
    if (corre(Repete::sim, [&] { return pergunta(sql); }) < 0)
        throw Falha(em_uso, startup::numeros_bd::falha_geral);
}

void Motor::em_exclusivo(const std::function<void()>& trabalho) {
    constexpr const char* recurso = "xel_ORVEX_tabelas";
    const auto larga = [&] {
        executa(std::string("EXEC sp_releaseapplock @Resource=N'") + recurso + "', @LockOwner=N'Session'");
    };
    pede_tranca(recurso, "Session");
    try {
        trabalho();
    } catch (...) {
        try {
            larga();
        } catch (const Falha&) { // lost with its connection
        }
        throw;
    }
    larga();
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
        if (!testemunha_) throw nao_se_sabe(falha);
        bool confirmada = false;
        try {
            liga();
            confirmada = esta_na_base(*testemunha_);
        } catch (const FalhaODBC&) {
            ligacao_.reset();
            throw nao_se_sabe(falha);
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
