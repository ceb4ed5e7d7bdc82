// The documents of the ERP as the database shows them, and what the ledger has of each. Asked by whoever has
// to tell what became of a confirmation: nothing here is remembered, so a second answer may differ.
#pragma once

#include "base/datahora.h"
#include "base/moeda.h"
#include "livro/chaves.h"
#include "startup/sessao_bd.h"
#include "startup/sessao_erp.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orvex::livro {

// As statements name it: the key of a document with its series as plain text.
Documento documento_de(const startup::ChaveDocumento& chave);

enum class EstadoERP { inexistente, em_vigor, anulado };
EstadoERP estado_no_erp(startup::SessaoBD& BD, const startup::ChaveDocumento& chave);

// The highest number of the document's year, type and series; 0 where there is none. Its own is ignored.
std::int32_t ultimo_numero(startup::SessaoBD& BD, const startup::ChaveDocumento& chave);
// The highest `Registo` of the holder rows; 0 where there is none.
std::int64_t ultimo_registo(startup::SessaoBD& BD);

struct DocumentoERP {
    startup::ChaveDocumento chave;
    std::string Terceiro; // empty in a document of stock
    base::DataHora Data;  // the day
};
// The documents in force of the same year, type and series whose numbers are beyond that of `depois_de`,
// lowest first.
std::vector<DocumentoERP> documentos_depois_de(startup::SessaoBD& BD,
                                               const startup::ChaveDocumento& depois_de);

// Whether the ledger has a row, of either table, of this document.
bool no_livro(startup::SessaoBD& BD, const startup::ChaveDocumento& chave);
// Whether the item's first two rows beyond the row `depois_de` are a transfer's, which carry no number: out
// of its holder, and to `Destino`.
bool transferencia_no_livro(startup::SessaoBD& BD, const std::string& NumSerie, const std::string& Destino,
                            base::Moeda Quantidade, std::int64_t depois_de);

// What these ask, for a step that announces it.
namespace perguntas {
std::string ultimo_numero(const startup::ChaveDocumento& chave);
std::string ultimo_registo();
} // namespace perguntas

} // namespace orvex::livro
