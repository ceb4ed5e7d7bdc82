#include "platform/registos/sessao.h"

#include "base/falha.h"

namespace orvex::platform::registos {

using startup::ConjuntoRegistos;

bool Sessao::Abre(const std::string& ligacao) {
    Fecha();
    try {
        motor_ = abre_motor(ligacao);
    } catch (const std::exception& falha) {
        causa_ = falha.what();
    }
    return motor_ != nullptr;
}

Motor& Sessao::motor() {
    if (motor_ == nullptr)
        throw base::Falha("A base de dados não está aberta. " + causa_, startup::numeros_bd::falha_geral);
    return *motor_;
}

std::unique_ptr<ConjuntoRegistos> Sessao::Consulta(const std::string& sql) {
    return motor().consulta(sql, Motor::Modo::leitura);
}

std::unique_ptr<ConjuntoRegistos> Sessao::AbreActualizavel(const std::string& sql) {
    return motor().consulta(sql, Motor::Modo::actualizavel);
}

void Sessao::Fecha() {
    motor_.reset();
    causa_.clear();
}

} // namespace orvex::platform::registos
