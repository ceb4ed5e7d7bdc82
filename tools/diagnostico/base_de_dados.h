// The part of the diagnosis about the database.
#pragma once

#include "catalogo.h"
#include "diagnostico.h"

#include <memory>

namespace orvex::diagnostico {

// The driver, the connection, and what is behind it. Gives the session, or none where it did not open.
std::unique_ptr<startup::SessaoBD>
verifica_base_de_dados(const std::optional<startup::DefinicoesBD>& definicoes, Resultados& resultados);

// Of a session that is open: whether the connection is encrypted as asked.
void verifica_encriptacao(startup::SessaoBD& BD, const startup::DefinicoesBD& definicoes,
                          Resultados& resultados);

// Its tables, columns, rights and indexes.
void verifica_tabelas(startup::SessaoBD& BD, const startup::DefinicoesBD& definicoes, Resultados& resultados);

} // namespace orvex::diagnostico
