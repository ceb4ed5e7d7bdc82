#include "tests/fio/administracao.h"

#include "platform/sqlite/empresa.h"
#include "platform/sqlite/traducao.h"

namespace orvex::testes::tds {
namespace {

using namespace platform::sqlite;
using platform::registos::TipoColuna;

std::string entre(const std::string& sql, char abre, char fecha) {
    const std::size_t inicio = sql.find(abre) + 1;
    return sql.substr(inicio, sql.find(fecha, inicio) - inicio);
}

void cria_base(const std::filesystem::path& pasta) {
    std::filesystem::create_directory(pasta);
    for (const char* ficheiro : {ficheiro_livro, ficheiro_erp})
        abre_base(pasta / ficheiro, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
}

// Beside the ledger's file go the ERP's tables: each file has one writer at a time, the real server's tables
// many.
void cria_tabela(const std::string& sql, const std::string& tabela, SQLite::Database& motor) {
    std::string criacao = traduz(sql).instrucoes.at(0);
    constexpr std::string_view no_livro = "CREATE TABLE main.";
    if (tabela != "U_DocGcLin1") criacao.replace(0, no_livro.size(), "CREATE TABLE erp.");
    motor.exec(criacao);
}

} // namespace

bool administra(const std::string& sql, const std::filesystem::path& pasta, SQLite::Database& motor,
                Respostas& respostas) {
    const std::string nome = entre(sql, '[', ']');
    if (sql.starts_with("SELECT DB_ID(N'")) {
        const std::vector<Coluna> colunas{{.nome = "n", .tipo = TipoColuna::le("int")}};
        const bool existe = std::filesystem::is_directory(pasta / entre(sql, '\'', '\''));
        respostas.colunas(colunas);
        respostas.linha(colunas, {existe ? base::Variante(7) : base::Variante()});
        respostas.feita(1);
    } else if (sql.starts_with("CREATE DATABASE ")) {
        cria_base(pasta / nome);
    } else if (sql.starts_with("DROP DATABASE ")) {
        std::filesystem::remove_all(pasta / nome);
    } else if (sql.starts_with("CREATE TABLE [")) {
        cria_tabela(sql, nome, motor);
    } else if (sql.starts_with("TRUNCATE TABLE ")) {
        motor.exec("DELETE FROM [" + nome + "]");
        motor.exec("DELETE FROM main.sqlite_sequence WHERE name = '" + nome + "'");
    } else {
        return sql.starts_with("ALTER DATABASE ");
    }
    return true;
}

} // namespace orvex::testes::tds
