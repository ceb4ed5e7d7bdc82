// The tables of an embedded company's ERP. Names and types are those the programs' statements rely on: no
// column makes an unqualified name of one of their joins ambiguous, flags are 0 or -1 and never null, dates
// are yyyy-mm-dd hh:mm:ss.
#pragma once

#include <SQLiteCpp/Database.h>

#include <cstdint>
#include <string>

namespace orvex::platform::erp {

// What a document of a type does to the stock of its lines' articles.
enum class MovimentoStock : std::int16_t { saida = -1, nenhum = 0, entrada = 1, transferencia = 2 };

// The connection must know the collation SERVIDOR; throws SQLite::Exception when a table exists already.
void cria_esquema_erp(SQLite::Database& bd);

// A document type with one series.
void acrescenta_tipo_documento(SQLite::Database& bd, const std::string& codigo, const std::string& descricao,
                               MovimentoStock movimento, std::int16_t serie);

} // namespace orvex::platform::erp
