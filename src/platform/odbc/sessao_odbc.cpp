#include "platform/odbc/sessao_odbc.h"

#include "platform/odbc/motor_odbc.h"

namespace orvex::platform::odbc {

std::unique_ptr<registos::Motor> SessaoODBC::abre_motor(const std::string& ligacao) {
    return std::make_unique<MotorODBC>(ligacao, esperas_);
}

Servidor SessaoODBC::servidor() { return dynamic_cast<MotorODBC&>(motor()).servidor(); }

} // namespace orvex::platform::odbc
