// What became of a note once it was issued: the ERP's header says whether it was cancelled, which leaves no
// row in the ledger, and the ledger which of its lines came back.
#pragma once

#include "livro/chaves.h"

#include <cstdint>
#include <map>
#include <string>

namespace orvex::livro {

struct GuiaEmitida {
    bool anulada = false;
    std::string NomeCliente;                        // as the ERP has it now; empty for no such client
    std::map<std::int64_t, std::string> devolvidas; // the number of a line, and the return: GD/1/7
};

// In one step. Throws Falha for a note that the ERP does not show, and what the session throws.
GuiaEmitida guia_emitida(startup::SessaoBD& BD, const Documento& guia, const std::string& TpDocDevolucao);

} // namespace orvex::livro
