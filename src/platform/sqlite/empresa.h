// The files of an embedded company, for those who work on them directly: the ERP emulation and the maker of
// demo companies. Everyone else goes through SessaoSQLite, which needs no SQLite header.
//
// A company is a folder of two files, both with a write-ahead log: the program's ledger and the ERP's tables.
// Texts of either are declared `nvarchar(n) COLLATE SERVIDOR`, so that they compare as the server compares
// them: without case, accented letters too, and without trailing blanks. A file whose tables name that
// collation can only be used through `abre_base`, which registers it and the server's +.
#pragma once

#include <SQLiteCpp/Database.h>

#include <filesystem>
#include <string_view>

namespace orvex::platform::sqlite {

inline constexpr const char* ficheiro_livro = "livro.db";
inline constexpr const char* ficheiro_erp = "erp.db";
inline constexpr int espera_normal_ms = 5000; // for a lock held by another program

// Opens one file. With SQLite::OPEN_CREATE among the flags the file is made when it is missing and given its
// write-ahead log. Throws SQLite::Exception.
SQLite::Database abre_base(const std::filesystem::path& ficheiro, int indicadores = SQLite::OPEN_READWRITE,
                           int espera_ms = espera_normal_ms);

// Room for the pages of a long note and of the lists around it; the engine's own 2 MB would read them again
// and again.
inline constexpr const char* memoria_paginas = "cache_size = -16384"; // a pragma; negative is KB

// Makes the ledger's file with the gross weights of the ERP's lines (U_DocGcLin1), which live beside the
// ledger because they are written with it. The two ledger tables are made by start-up. What exists already is
// kept.
void cria_livro(const std::filesystem::path& pasta);

// The order of the SERVIDOR collation: negative, zero or positive. An accented letter follows its plain one.
int compara_servidor(std::string_view a, std::string_view b);

} // namespace orvex::platform::sqlite
