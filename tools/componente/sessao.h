// An ERP session as automation sees it: docs/erp-automation.md tells its operations and their arguments.
#pragma once

#include "tools/componente/despacho.h"

#include <memory>

namespace orvex::componente {

Referencia<IDispatch> despacho_da_sessao(std::unique_ptr<startup::SessaoERP> real);

} // namespace orvex::componente
