#include "platform/sqlite/sessao_sqlite.h"

#include "base/caminho.h"
#include "platform/sqlite/motor_sqlite.h"
#include "startup/construtor_ligacao.h"

namespace orvex::platform::sqlite {

SessaoSQLite::SessaoSQLite() : SessaoSQLite(espera_normal_ms) {}

SessaoSQLite::SessaoSQLite(espera::Espera a_vista) : SessaoSQLite() { a_vista_ = std::move(a_vista); }

std::unique_ptr<registos::Motor> SessaoSQLite::abre_motor(const std::string& ligacao) {
    const std::string pasta = startup::ConstrutorLigacao::le(ligacao)["Database"];
    return std::make_unique<MotorSQLite>(base::caminho_de(pasta), ComoEspera{a_vista_, espera_ms_}, acesso_);
}

} // namespace orvex::platform::sqlite
