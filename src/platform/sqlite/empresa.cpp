#include "platform/sqlite/empresa.h"

#include <sqlite3.h>

#include <string>

namespace orvex::platform::sqlite {
namespace {

int compara(void*, int tamanho_a, const void* a, int tamanho_b, const void* b) {
    return compara_servidor({static_cast<const char*>(a), static_cast<std::size_t>(tamanho_a)},
                            {static_cast<const char*>(b), static_cast<std::size_t>(tamanho_b)});
}

} // namespace

SQLite::Database abre_base(const std::filesystem::path& ficheiro, int indicadores, int espera_ms) {
    SQLite::Database base(ficheiro, indicadores, espera_ms);
    base.check(
        sqlite3_create_collation_v2(base.getHandle(), "SERVIDOR", SQLITE_UTF8, nullptr, compara, nullptr));
    base.exec(std::string("PRAGMA ") + memoria_paginas);
    // A long note is not made to wait while its log is copied into the file; closing does that.
    base.exec("PRAGMA wal_autocheckpoint = 8000");
    if ((indicadores & SQLite::OPEN_CREATE) != 0) base.exec("PRAGMA journal_mode = WAL");
    return base;
}

void cria_livro(const std::filesystem::path& pasta) {
    auto base = abre_base(pasta / ficheiro_livro, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    base.exec(
        "CREATE TABLE IF NOT EXISTS U_DocGcLin1 ("
        "Ano smallint NOT NULL, TpDocUM nvarchar(3) COLLATE SERVIDOR NOT NULL, Serie smallint NOT NULL, "
        "NNumDoc int NOT NULL, NumLinha smallint NOT NULL, PesoBruto money NULL, "
        "PRIMARY KEY (Ano, TpDocUM, Serie, NNumDoc, NumLinha)) WITHOUT ROWID");
}

} // namespace orvex::platform::sqlite
