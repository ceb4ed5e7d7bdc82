#include "platform/odbc/sessao_odbc.h"

#include "platform/odbc/motor.h"
#include "platform/odbc/texto_ligacao.h"

namespace orvex::platform::odbc {

std::unique_ptr<registos::Motor> SessaoODBC::abre_motor(const std::string& ligacao) {
    return std::make_unique<Motor>(texto_odbc(ligacao), esperas_);
}

Servidor SessaoODBC::servidor() { return dynamic_cast<Motor&>(motor()).servidor(); }

} // namespace orvex::platform::odbc
