// What is to be done about a confirmation that nobody saw the end of: decided by what is read, never by what
// the journal expects.
#pragma once

#include "platform/diario/factos.h"

#include <vector>

namespace orvex::platform::diario {

enum class Desfecho {
    feita,      // ERP and ledger have it whole
    desfeita,   // neither has anything of it, and nothing can still come
    nada,       // neither has anything of it, but an ERP out of process may still be working
    por_decidir // they differ, or may
};

struct Decisao {
    Desfecho desfecho = Desfecho::nada;
    std::vector<startup::ChaveDocumento> feitos{};      // documents created, or cancelled, with their rows
    std::vector<startup::ChaveDocumento> a_anular{};    // in force, and not in the ledger
    std::vector<startup::ChaveDocumento> a_completar{}; // cancelled, and still in the ledger
    std::vector<startup::ChaveDocumento> a_procurar{};  // any one of them may be the document
    std::vector<startup::ChaveDocumento> a_ver{};       // in the ledger and not in force, with no remedy here
};

Decisao decide(const Passos& passos, const Factos& factos);

} // namespace orvex::platform::diario
