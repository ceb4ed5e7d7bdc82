// What only the trials on a real server ask of a server: databases of their own, and tables for the ERP's
// rows.
#pragma once

#include "tests/fio/respostas.h"

#include <SQLiteCpp/Database.h>

#include <filesystem>

namespace orvex::testes::tds {

// Carries the statement out and answers it; false when it is of another kind. Databases are folders in
// `pasta`.
bool administra(const std::string& sql, const std::filesystem::path& pasta, SQLite::Database& motor,
                Respostas& respostas);

} // namespace orvex::testes::tds
