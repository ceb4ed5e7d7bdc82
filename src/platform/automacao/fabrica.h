// The session that the settings name, of an ERP that is reached through automation.
#pragma once

#include "platform/espera/espera.h"
#include "startup/definicoes.h"
#include "startup/sessao_erp.h"

#include <memory>

namespace orvex::platform::automacao {

using espera::Espera;

// Throws Falha where the system has no automation, where the settings name no component, and where the
// component cannot be had.
std::unique_ptr<startup::SessaoERP> sessao_das_definicoes(const startup::DefinicoesERP& definicoes,
                                                          const Espera& espera);

} // namespace orvex::platform::automacao
