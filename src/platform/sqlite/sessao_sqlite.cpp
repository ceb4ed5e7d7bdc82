#include "platform/sqlite/sessao_sqlite.h"

#include "platform/sqlite/motor.h"
#include "startup/construtor_ligacao.h"

namespace orvex::platform::sqlite {

using startup::ConjuntoRegistos;

SessaoSQLite::SessaoSQLite() : SessaoSQLite(espera_normal_ms) {}
SessaoSQLite::SessaoSQLite(int espera_ms) : espera_ms_(espera_ms) {}
SessaoSQLite::~SessaoSQLite() = default;

bool SessaoSQLite::Abre(const std::string& ligacao) {
    Fecha();
    try {
        const std::string pasta = startup::ConstrutorLigacao::le(ligacao)["Database"];
        motor_ = std::make_unique<Motor>(std::filesystem::path(std::u8string(pasta.begin(), pasta.end())),
                                         espera_ms_);
    } catch (const std::exception& falha) {
        causa_ = falha.what();
    }
    return motor_ != nullptr;
}

Motor& SessaoSQLite::motor() {
    if (motor_ == nullptr)
        throw base::Falha("A base de dados não está aberta. " + causa_, startup::numeros_bd::falha_geral);
    return *motor_;
}

std::unique_ptr<ConjuntoRegistos> SessaoSQLite::Consulta(const std::string& sql) {
    return motor().consulta(sql, Motor::Modo::leitura);
}
std::unique_ptr<ConjuntoRegistos> SessaoSQLite::AbreActualizavel(const std::string& sql) {
    return motor().consulta(sql, Motor::Modo::actualizavel);
}
void SessaoSQLite::Executa(const std::string& sql) { motor().executa(sql); }

void SessaoSQLite::IniciaTransaccao() { motor().inicia_transaccao(); }
void SessaoSQLite::ConfirmaTransaccao() { motor().transaccao("COMMIT"); }
void SessaoSQLite::AnulaTransaccao() { motor().transaccao("ROLLBACK"); }
bool SessaoSQLite::EmTransaccao() { return motor_ != nullptr && motor_->em_transaccao(); }

void SessaoSQLite::Fecha() {
    motor_.reset();
    causa_.clear();
}

} // namespace orvex::platform::sqlite
