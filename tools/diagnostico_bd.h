// The part of the diagnosis about the database.
#pragma once

#include "diagnostico.h"
#include "startup/sessao_bd.h"

namespace orvex::diagnostico {

// The driver, the connection, and what is behind it.
void verifica_base_de_dados(const startup::DefinicoesBD& definicoes, Resultados& resultados);

// Tables, columns, rights and indexes of a database that is open.
void verifica_tabelas(startup::SessaoBD& BD, const startup::DefinicoesBD& definicoes, Resultados& resultados);

} // namespace orvex::diagnostico
