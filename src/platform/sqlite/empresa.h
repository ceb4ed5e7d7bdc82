// The files of an embedded company, for those who work on them directly: the ERP emulation and the maker of
// demo companies. Everyone else goes through SessaoSQLite, which needs no SQLite header.
//
// A company is a folder of two files, both with a write-ahead log: the program's ledger and the ERP's tables.
// The commit of two files is not one, so all that one confirmation writes lies in the ledger's, the articles'
// notes too (ObservArtigos). The ERP's file carries the mark that the ledger was begun (its user_version is
// not 0): a ledger that is missing or empty is then a loss, not a beginning. Texts of either are declared
// `nvarchar(n) COLLATE SERVIDOR`, so that they compare as the server compares them: without case, accented
// letters too, and without trailing blanks. A file whose tables name that collation can only be used through
// `abre_base`, which registers it and the server's +.
#pragma once

#include "platform/espera/espera.h"

#include <SQLiteCpp/Database.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace orvex::platform::sqlite {

inline constexpr const char* ficheiro_livro = "livro.db";
inline constexpr const char* ficheiro_erp = "erp.db";
inline constexpr const char* ficheiro_exclusivo = "exclusivo.lock"; // of who works alone; always empty
inline constexpr int espera_normal_ms = 5000;                       // for a lock held by another program

// Opens one file. With SQLite::OPEN_CREATE among the flags the file is made when it is missing and given its
// write-ahead log. Throws SQLite::Exception.
SQLite::Database abre_base(const std::filesystem::path& ficheiro, int indicadores = SQLite::OPEN_READWRITE,
                           int espera_ms = espera_normal_ms);

// Whoever waits for a lock, or has a long statement run, is seen to, on the thread that asked. While the
// connection lives, `como` must stay where it is.
struct ComoEspera {
    espera::Espera a_vista;
    int espera_ms = espera_normal_ms;
    espera::Motivo pela_tranca = espera::Motivo::posto;
    espera::Motivo pelo_motor = espera::Motivo::servidor;
    std::chrono::steady_clock::time_point fim{}; // of the wait that lasts
};
void espera_a_vista(SQLite::Database& base, ComoEspera& como); // without a way of waiting, does nothing

// Room for the pages of a long note and of the lists around it; the engine's own 2 MB would read them again
// and again.
inline constexpr const char* memoria_paginas = "cache_size = -16384"; // a pragma; negative is KB

// What was confirmed is on the disk, whatever the engine was built to do by itself: the ERP's documents and
// the ledger's rows are told apart by who was first.
inline constexpr const char* duravel = "synchronous = FULL"; // a pragma

// Makes the ledger's file with the gross weights of the ERP's lines (U_DocGcLin1) and the articles' notes
// (ObservArtigos), which live beside the ledger because they are written with it. The two ledger tables are
// made by start-up. What exists already is kept.
void cria_livro(const std::filesystem::path& pasta);

// Opens a company as the program sees it: the ledger, the ERP's tables attached as `erp`, and Artigos as a
// view of the ERP's with its column Observ from ObservArtigos. Of the view only Observ can be changed; rows
// are added to and deleted from the ERP's table (onde_se_escreve). Neither file is created. A company of
// before the notes lay with the ledger, or before the mark, gets both. Throws Falha, naming the file at fault
// and the cause.
SQLite::Database abre_empresa(const std::filesystem::path& pasta, int espera_ms);

// The same for who only reads: nothing is written, made or moved from a log into a file, and whoever works on
// the company is in nobody's way. A file that nobody has open is read as it stands, without the engine's
// marks beside it (in a folder that may not be written too): whoever reads that way looks at `aspecto` before
// and after, and begins again when it changed, since somebody may then have written under him.
SQLite::Database abre_empresa_para_ler(const std::filesystem::path& pasta, int espera_ms);
// The URI from which the engine gets the very path back: of a drive, of a share, with signs that mean
// something in URIs.
std::string uri_de(std::string_view caminho);
// Size and time of the two files, and whether somebody has them open.
std::string aspecto(const std::filesystem::path& pasta);

// Sets the mark once there are tables of the ledger; `empresa` as abre_empresa gave it.
void marca_comecado(SQLite::Database& empresa);

// Throws Falha when a file of the company is no longer the one that was opened.
void exige_os_mesmos_ficheiros(SQLite::Database& empresa);

// The order of the SERVIDOR collation: negative, zero or positive. An accented letter follows its plain one.
int compara_servidor(std::string_view a, std::string_view b);

} // namespace orvex::platform::sqlite
