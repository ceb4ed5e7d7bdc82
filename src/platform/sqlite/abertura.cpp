// Opening a company whole.
#include "base/caminho.h"
#include "base/texto.h"
#include "platform/sqlite/empresa.h"
#include "platform/sqlite/falhas.h"
#include "startup/ficheiro.h"
#include "startup/sessao_bd.h"

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>
#include <sqlite3.h>

namespace orvex::platform::sqlite {
namespace {

namespace fs = std::filesystem;
using base::Falha;
using base::texto_de;

constexpr const char* coluna_nota = "Observ";

constexpr const char* tabela_de_pesos =
    "CREATE TABLE IF NOT EXISTS main.U_DocGcLin1 ("
    "Ano smallint NOT NULL, TpDocUM nvarchar(3) COLLATE SERVIDOR NOT NULL, Serie smallint NOT NULL, "
    "NNumDoc int NOT NULL, NumLinha smallint NOT NULL, PesoBruto money NULL, "
    "PRIMARY KEY (Ano, TpDocUM, Serie, NNumDoc, NumLinha)) WITHOUT ROWID";
constexpr const char* tabela_de_notas =
    "CREATE TABLE IF NOT EXISTS main.ObservArtigos ("
    "CODIGO nvarchar(15) COLLATE SERVIDOR NOT NULL PRIMARY KEY, Observ nvarchar(35) COLLATE SERVIDOR NULL"
    ") WITHOUT ROWID";

[[noreturn]] void nao_abre(const std::string& texto) { throw Falha(texto, startup::numeros_bd::falha_geral); }

int conta(SQLite::Database& base, const std::string& de) {
    return base.execAndGet("SELECT count(*) FROM " + de).getInt();
}

bool comecado(SQLite::Database& base, const char* pragma) { return base.execAndGet(pragma).getInt() != 0; }

[[noreturn]] void livro_perdido(const fs::path& livro) {
    nao_abre(
        "Falta o livro desta empresa, que já tinha sido começado: " + texto_de(livro) +
        " não existe, está vazio ou não tem as tabelas do livro. Nada foi criado em seu lugar. Reponha a "
        "última cópia de segurança da empresa (livro.db e erp.db, da mesma altura) antes de voltar a "
        "trabalhar.");
}

bool sem_paginas(const fs::path& ficheiro) {
    std::error_code erro;
    return !fs::exists(ficheiro, erro) || fs::file_size(ficheiro, erro) == 0;
}

// Asked before the engine is, which creates, and cleans up beside an empty file. A file without a page may be
// a beginning or a loss: the mark tells.
void verifica_ficheiros(const fs::path& pasta, int espera_ms) {
    if (const std::string defeito = startup::defeito_da_pasta(pasta); !defeito.empty())
        nao_abre("A pasta da empresa não pode ser usada: " + texto_de(pasta) + " " + defeito + ".");
    for (const char* nome : {ficheiro_erp, ficheiro_livro}) { // the mark is asked of the first
        const fs::path ficheiro = pasta / nome;
        const std::string defeito = startup::defeito_do_ficheiro(ficheiro);
        if (nome == ficheiro_livro && sem_paginas(ficheiro))
            if (auto erp = abre_base(pasta / ficheiro_erp, SQLite::OPEN_READWRITE, espera_ms);
                comecado(erp, "PRAGMA user_version") && sem_paginas(ficheiro)) // it may just have been begun
                livro_perdido(ficheiro);
        if (!defeito.empty())
            nao_abre("Um ficheiro da empresa não pode ser usado: " + texto_de(ficheiro) + " " + defeito +
                     ".");
    }
}

void anexa_erp(SQLite::Database& base, const std::string& erp, const char* memoria = memoria_paginas) {
    SQLite::Statement anexa(base, "ATTACH ? AS erp");
    anexa.bind(1, erp);
    anexa.exec();
    base.exec("SELECT 1 FROM erp.sqlite_schema LIMIT 1");
    base.exec(std::string("PRAGMA erp.") + memoria);
    base.exec(std::string("PRAGMA erp.") + duravel);
}

void exige_escrita(SQLite::Database& base, const fs::path& pasta) {
    for (const char* nome : {"main", "erp"})
        if (sqlite3_db_readonly(base.getHandle(), nome) != 0)
            nao_abre("A empresa só pode ser lida: não há permissão para gravar em " + texto_de(pasta));
}

// --- For who only reads
// -------------------------------------------------------------------------------------

fs::path registo_de(fs::path ficheiro) { return ficheiro += "-wal"; }

std::string nome_para_ler(const fs::path& ficheiro) {
    std::error_code erro;
    return uri_de(texto_de(ficheiro)) +
           (fs::exists(registo_de(ficheiro), erro) ? "?mode=ro" : "?immutable=1");
}

// --- What lies with the ledger -----------------------------------------------------------------------------

bool tem_notas(SQLite::Database& base) {
    return conta(base, "main.sqlite_schema WHERE name = 'ObservArtigos'") > 0;
}

bool coluna_do_erp(SQLite::Database& base, const char* coluna) {
    return sqlite3_table_column_metadata(base.getHandle(), "erp", "Artigos", coluna, nullptr, nullptr,
                                         nullptr, nullptr, nullptr) == SQLITE_OK;
}

// Of an empty file, and of a company of before the notes lay with the ledger.
void completa_livro(SQLite::Database& base) {
    if (tem_notas(base)) return;
    const bool vazio = conta(base, "main.sqlite_schema") == 0;
    if (vazio) base.exec("PRAGMA main.journal_mode = WAL");
    SQLite::Transaction transaccao(base, SQLite::TransactionBehavior::IMMEDIATE);
    if (tem_notas(base)) return; // another program was first
    if (vazio) base.exec(tabela_de_pesos);
    base.exec(tabela_de_notas);
    if (coluna_do_erp(base, coluna_nota))
        base.exec("INSERT INTO main.ObservArtigos SELECT CODIGO, Observ FROM erp.Artigos"
                  " WHERE Observ IS NOT NULL");
    transaccao.commit();
}

// A subquery in the list of columns costs nothing where its column is not asked for, and its type is that of
// the column it reads.
void mostra_artigos(SQLite::Database& base) {
    if (!coluna_do_erp(base, "CODIGO")) return;
    const SQLite::Statement artigos(base, "SELECT * FROM erp.Artigos"); // never run: for its columns
    std::string mostradas;
    std::string antes;
    std::string depois;
    for (int i = 0; i < artigos.getColumnCount(); ++i) {
        const std::string nome = artigos.getColumnName(i);
        if (base::mesmo_nome(nome, coluna_nota)) continue; // of a company of before
        mostradas += "a.[" + nome + "], ";
        antes += (antes.empty() ? "OLD.[" : ", OLD.[") + nome + "]";
        depois += (depois.empty() ? "NEW.[" : ", NEW.[") + nome + "]";
    }
    base.exec("CREATE TEMP VIEW Artigos AS SELECT " + mostradas +
              "(SELECT o.Observ FROM main.ObservArtigos o WHERE o.CODIGO = a.CODIGO) AS Observ "
              "FROM erp.Artigos a;"
              "CREATE TEMP TRIGGER AnotaArtigo INSTEAD OF UPDATE ON Artigos BEGIN "
              "SELECT RAISE(ABORT, 'Artigos: only Observ can be changed') WHERE (" +
              antes + ") IS NOT (" + depois +
              ");"
              "INSERT INTO ObservArtigos (CODIGO, Observ) VALUES (NEW.CODIGO, NEW.Observ)"
              " ON CONFLICT (CODIGO) DO UPDATE SET Observ = excluded.Observ;"
              "END");
}

int tabelas_do_livro(SQLite::Database& base) {
    return conta(base, "main.sqlite_schema WHERE name COLLATE NOCASE IN ('xel_ORVEX', 'xel_ORVEX_Mov')");
}

void verifica_comeco(SQLite::Database& base, const fs::path& livro) {
    // The mark first: another program may be making the tables, and then it, between the two.
    const bool marcado = comecado(base, "PRAGMA erp.user_version");
    if (marcado && tabelas_do_livro(base) == 0) livro_perdido(livro);
    marca_comecado(base);
}

} // namespace

std::string uri_de(std::string_view caminho) {
    constexpr std::string_view digitos = "0123456789ABCDEF";
    std::string uri = caminho.starts_with('/') ? "file://" : "file:";
    for (const char c : caminho) {
        if (std::string_view("%?#").find(c) == std::string_view::npos) {
            uri += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        uri += std::string("%") + digitos[byte >> 4] + digitos[byte & 15];
    }
    return uri;
}

void cria_livro(const fs::path& pasta) {
    auto base = abre_base(pasta / ficheiro_livro, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
    base.exec(tabela_de_pesos);
    base.exec(tabela_de_notas);
}

SQLite::Database abre_empresa(const fs::path& pasta, int espera_ms) {
    const fs::path livro = pasta / ficheiro_livro;
    const fs::path erp = pasta / ficheiro_erp;
    const fs::path* em_causa = &erp;
    try {
        return insiste(espera_ms, [&] {
            em_causa = &erp;
            verifica_ficheiros(pasta, espera_ms);
            em_causa = &livro;
            auto base = abre_base(livro, SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX, espera_ms);
            base.exec("SELECT 1 FROM sqlite_schema LIMIT 1"); // opening alone reads nothing
            em_causa = &erp;
            anexa_erp(base, texto_de(erp));
            exige_escrita(base, pasta);
            verifica_comeco(base, livro);
            em_causa = &livro;
            completa_livro(base);
            mostra_artigos(base);
            return base;
        });
    } catch (const SQLite::Exception& erro) {
        nao_abre(texto_de(*em_causa) + ": " + falha_de(erro).what());
    }
}

SQLite::Database abre_empresa_para_ler(const fs::path& pasta, int espera_ms) {
    constexpr const char* memoria = "cache_size = -3072"; // rows are read once, one after the other
    const fs::path livro = pasta / ficheiro_livro;
    const fs::path erp = pasta / ficheiro_erp;
    if (const std::string defeito = startup::defeito_da_pasta(pasta); !defeito.empty())
        nao_abre("A pasta da empresa não pode ser usada: " + texto_de(pasta) + " " + defeito + ".");
    for (const fs::path& ficheiro : {erp, livro})
        if (const std::string defeito = startup::defeito_do_ficheiro(ficheiro); !defeito.empty())
            nao_abre("Um ficheiro da empresa não pode ser usado: " + texto_de(ficheiro) + " " + defeito +
                     ".");
    const fs::path* em_causa = &livro;
    try {
        return insiste(espera_ms, [&] {
            em_causa = &livro;
            auto base = abre_base(base::caminho_de(nome_para_ler(livro)),
                                  SQLite::OPEN_READONLY | SQLite::OPEN_URI | SQLite::OPEN_NOMUTEX, espera_ms);
            base.exec("SELECT 1 FROM sqlite_schema LIMIT 1");
            base.exec(std::string("PRAGMA main.") + memoria);
            em_causa = &erp;
            anexa_erp(base, nome_para_ler(erp), memoria);
            if (tem_notas(base)) mostra_artigos(base);
            return base;
        });
    } catch (const SQLite::Exception& erro) {
        nao_abre(texto_de(*em_causa) + ": " + falha_de(erro).what());
    }
}

std::string aspecto(const fs::path& pasta) {
    std::string visto;
    for (const char* nome : {ficheiro_livro, ficheiro_erp}) {
        std::error_code erro;
        visto += std::to_string(fs::file_size(pasta / nome, erro)) + " ";
        visto += std::to_string(fs::last_write_time(pasta / nome, erro).time_since_epoch().count()) + " ";
        visto += fs::exists(registo_de(pasta / nome), erro) ? "aberto " : "fechado ";
    }
    return visto;
}

// Where it cannot be set now, the next opening does it.
void marca_comecado(SQLite::Database& empresa) {
    if (tabelas_do_livro(empresa) == 0 || comecado(empresa, "PRAGMA erp.user_version")) return;
    empresa.tryExec("PRAGMA erp.user_version = 1");
}

void exige_os_mesmos_ficheiros(SQLite::Database& empresa) {
    for (const char* nome : {"main", "erp"}) {
        int trocado = 0;
        sqlite3_file_control(empresa.getHandle(), nome, SQLITE_FCNTL_HAS_MOVED, &trocado);
        if (trocado == 0) continue;
        throw Falha(
            std::string(sqlite3_db_filename(empresa.getHandle(), nome)) +
                " foi trocado, mudado de sítio ou apagado depois de o programa o abrir. Nada foi gravado. "
                "Feche o programa e volte a abri-lo.",
            startup::numeros_bd::falha_geral);
    }
}

} // namespace orvex::platform::sqlite
