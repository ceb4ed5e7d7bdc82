// The ERP that the settings name. Without windows, so that programs without any make the very same session.
#pragma once

#include "platform/espera/espera.h"
#include "startup/definicoes.h"
#include "startup/sessao_erp.h"

#include <memory>

namespace orvex::app {

// Not logged in yet. Throws Falha when the settings name no ERP, or one of a kind that this build lacks.
// It is waited for in the given way, or just waited for.
std::unique_ptr<startup::SessaoERP> cria_sessao_erp(const startup::DefinicoesERP& definicoes,
                                                    const platform::espera::Espera& espera = {});

} // namespace orvex::app
