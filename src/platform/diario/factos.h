// What ERP and ledger hold of the confirmation that a journal tells of.
#pragma once

#include "livro/documentos.h"
#include "platform/diario/passos.h"

#include <optional>
#include <vector>

namespace orvex::platform::diario {

struct FactosDocumento {
    startup::ChaveDocumento chave{};
    livro::EstadoERP erp = livro::EstadoERP::inexistente;
    bool no_livro = false;

    friend bool operator==(const FactosDocumento&, const FactosDocumento&) = default;
};

struct Factos {
    // The document it created, where its key is known.
    std::optional<FactosDocumento> criado{};
    // Otherwise those that may be it: in force, numbered after it began, with its client, date and lines, and
    // without rows in the ledger.
    std::vector<startup::ChaveDocumento> candidatos{};
    // Those that it asked the ERP to cancel.
    std::vector<FactosDocumento> anulados{};
    // The rows of a transfer that creates no document.
    bool transferida = false;

    friend bool operator==(const Factos&, const Factos&) = default;
};

// Read under the ledger's lock, in a transaction of its own that is rolled back: with it, no transaction of a
// program that died, or of a connection that was lost, can still be on its way. Outside transactions.
Factos le_factos(startup::SessaoBD& BD, const Passos& passos);

// Rolls back, as far as that goes.
void desfaz(startup::SessaoBD& BD);

} // namespace orvex::platform::diario
