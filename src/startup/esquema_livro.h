// The two ledger tables: made sure of at every start, before any screen exists.
#pragma once

#include "startup/sessao_bd.h"

namespace orvex::startup {

// Creates both tables when xel_ORVEX is missing. A failure of its probe for any other reason is left for the
// first statement that needs the table to report.
void VerificaTabelas(SessaoBD& BD);

// Adds the weight columns to xel_ORVEX_Mov when they cannot be read.
void VerificaPesos(SessaoBD& BD);

} // namespace orvex::startup
