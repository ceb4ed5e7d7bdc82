// The program's own locks: the ledger's, of a transaction, and that of the tables, of a session.
#include "platform/odbc/motor_odbc.h"

namespace orvex::platform::odbc {
namespace {

using base::Falha;

// What the server's procedure returned.
void exige_tranca(std::int64_t resposta) {
    constexpr std::int64_t fora_de_tempo = -1, cancelada = -2, vitima = -3;
    if (resposta >= 0) return;
    std::string texto =
        "O servidor recusou reservar os dados para gravação (sp_getapplock: " + std::to_string(resposta) +
        ").";
    if (resposta == fora_de_tempo) texto = "Os dados estão a ser gravados por outro posto. Tente novamente.";
    if (resposta == cancelada || resposta == vitima)
        texto = "O servidor interrompeu esta operação para deixar passar a de outro posto. Repita-a.";
    throw Falha(texto, startup::numeros_bd::falha_geral);
}

} // namespace

// The lock's own waiting time comes before the one for an answer.
void MotorODBC::pede_tranca(const LigacaoODBC& ligacao, const char* recurso, const char* dono) const {
    const std::string sql = std::string("DECLARE @r int=-999; EXEC @r = sp_getapplock @Resource=N'") +
                            recurso + "', @LockMode=N'Exclusive', @LockOwner=N'" + dono +
                            "', @LockTimeout=" + std::to_string(esperas_.bloqueio * 1000) +
                            "; SELECT @r AS r";
    exige_tranca(
        Instrucao(ligacao, esperas_.bloqueio + esperas_.instrucao, espera::Motivo::posto).pergunta(sql));
}

void MotorODBC::tranca() {
    liberta();
    exige_transaccao_viva();
    if (transaccao_ != Transaccao::aberta)
        throw Falha("Não há transacção aberta.", startup::numeros_bd::falha_geral);
    if (trancada_) return;
    acaba_o_adiado();
    corre(Repete::nao, [&] { pede_tranca(*ligacao_, "xel_ORVEX", "Transaction"); });
    trancada_ = true;
}

void MotorODBC::tranca_para_escrever() {
    if (transaccao_ == Transaccao::aberta && !trancada_) tranca();
}

// A connection that is lost meanwhile takes its lock along; the one opened in its place asks for it again.
void MotorODBC::em_exclusivo(const std::function<void()>& trabalho) {
    acaba_o_adiado();
    corre(Repete::sim, [&] { pede_tranca(*ligacao_, tranca_das_tabelas, "Session"); });
    exclusivo_ = true;
    const auto larga = [&] {
        exclusivo_ = false;
        liberta();
        try {
            if (ligacao_ != nullptr) instrucao().executa(acaba_o_que_ficou());
        } catch (const Falha& falha) {
            engole(falha);
            ligacao_.reset(); // which lets go of it
        }
    };
    try {
        trabalho();
    } catch (...) {
        larga();
        throw;
    }
    larga();
}

} // namespace orvex::platform::odbc
