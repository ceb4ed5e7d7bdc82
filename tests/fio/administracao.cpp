// What only the trials on a real server ask of a server.
#include "tests/fio/execucao.h"

#include "platform/sqlite/empresa.h"

namespace orvex::testes::tds {
namespace {

using namespace platform::sqlite;

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

// Databases of their own, and tables for the ERP's rows.
bool Execucao::administra(const std::string& sql) {
    const std::string nome = entre(sql, '[', ']');
    if (sql.starts_with("SELECT DB_ID(N'")) {
        const std::vector<Coluna> colunas{{.nome = "n", .tipo = TipoSQL::le("int")}};
        const bool existe = std::filesystem::is_directory(pasta_ / entre(sql, '\'', '\''));
        respostas_.colunas(colunas);
        respostas_.linha(colunas, {existe ? base::Variante(7) : base::Variante()});
        respostas_.feita(1);
    } else if (sql.starts_with("CREATE DATABASE ")) {
        cria_base(pasta_ / nome);
    } else if (sql.starts_with("DROP DATABASE ")) {
        std::filesystem::remove_all(pasta_ / nome);
    } else if (sql.starts_with("CREATE TABLE [")) {
        cria_tabela(sql, nome, motor_);
    } else if (sql.starts_with("TRUNCATE TABLE ")) {
        motor_.exec("DELETE FROM [" + nome + "]");
        motor_.exec("DELETE FROM main.sqlite_sequence WHERE name = '" + nome + "'");
    } else {
        return sql.starts_with("ALTER DATABASE ");
    }
    return true;
}

} // namespace orvex::testes::tds
