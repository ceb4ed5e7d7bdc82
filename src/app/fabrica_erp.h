// The ERP that the settings name. Without windows, so that programs without any make the very same session.
#pragma once

#include "platform/automacao/espera.h"
#include "startup/definicoes.h"
#include "startup/sessao_erp.h"

#include <memory>

namespace orvex::app {

// Not logged in yet. Throws Falha when the settings name no ERP, or one of a kind that this build lacks.
// An ERP that works on a thread of its own is waited for in the given way, or just waited for.
std::unique_ptr<startup::SessaoERP> cria_sessao_erp(const startup::DefinicoesERP& definicoes,
                                                    const platform::automacao::Espera& espera = {});

} // namespace orvex::app
