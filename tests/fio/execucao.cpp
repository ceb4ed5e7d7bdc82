#include "tests/fio/execucao.h"

#include "base/caminho.h"
#include "base/texto.h"
#include "platform/sqlite/empresa.h"

#include <sqlite3.h>

#include <map>

namespace orvex::testes::tds {
namespace {

using namespace platform::sqlite;

constexpr int espera_ms = 1000; // for a lock another session holds

// The number after a name; 0 when it is not there.
int numero_depois_de(std::string_view nome, const std::string& sql) {
    const std::size_t i = sql.find(nome);
    return i == std::string::npos ? 0 : std::stoi(sql.substr(i + nome.size()));
}

// The number the real server gives the engine's failure.
int numero_de(const std::string& texto) {
    for (const auto& [parte, numero] : {std::pair{"no such table", 208},
                                        {"no such column", 207},
                                        {"NOT NULL", 515},
                                        {"UNIQUE", 2627},
                                        {"locked", 1222}})
        if (texto.find(parte) != std::string::npos) return numero;
    return 50000;
}

// Of an expression, only its values tell the type: all are visited before the first is sent.
void descobre_tipos(SQLite::Statement& linhas, std::vector<Coluna>& colunas) {
    constexpr const char* tipos[]{"nvarchar(4000)", "int", "money", "nvarchar(4000)"}; // by the engine's own
    std::map<std::size_t, int> maiores;
    for (std::size_t i = 0; i < colunas.size(); ++i)
        if (colunas[i].tipo.familia == TipoSQL::Familia::expressao) maiores[i] = 0;
    if (maiores.empty()) return;
    while (linhas.executeStep())
        for (auto& [i, maior] : maiores)
            if (const int tipo = linhas.getColumn(static_cast<int>(i)).getType(); tipo != SQLITE_NULL)
                maior = std::max(maior, tipo);
    for (const auto& [i, maior] : maiores)
        colunas[i].tipo = TipoSQL::le(tipos[maior]);
    linhas.reset();
}

// The columns, without nulls, that tell a row from all others: of the primary key, or of another index. They
// stand where either procedure's answer has their names.
constexpr const char* colunas_da_chave =
    "SELECT 0, c.name, 'dbo', c.name, c.seqno + 1, i.name FROM pragma_index_list(?1) i "
    "JOIN pragma_index_info(i.name) c WHERE i.[unique] AND (i.origin = 'c') = ?2 AND NOT EXISTS ("
    "SELECT 1 FROM pragma_index_info(i.name) d JOIN pragma_table_info(?1) t ON t.name = d.name "
    "WHERE NOT t.[notnull]) ORDER BY c.seqno";
constexpr const char* larga_o_da_sessao =
    "IF APPLOCK_MODE(N'public',N'xel_ORVEX_tabelas',N'Session')<>N'NoLock' EXEC sp_releaseapplock ";

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

Execucao::Execucao(const std::filesystem::path& pasta, Respostas& respostas)
    : pasta_(pasta), motor_(abre_empresa(pasta, espera_ms)), respostas_(respostas) {
    // A database that a client made has the article's notes in the article's own table, as a server has.
    if (sqlite3_table_column_metadata(motor_.getHandle(), "erp", "Artigos", "Observ", nullptr, nullptr,
                                      nullptr, nullptr, nullptr) == SQLITE_OK)
        motor_.exec("DROP VIEW temp.Artigos");
}

void Execucao::executa(const Pedido& pedido) {
    const std::string& procedimento = pedido.procedimento;
    if (!procedimento.empty()) respostas_.inicia_chamada();
    try {
        if (procedimento == "sp_pkeys" || procedimento == "sp_special_columns") {
            chave(pedido);
        } else if (pedido.texto.starts_with("BEGIN TRANSACTION;") ||
                   pedido.texto.starts_with("IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION; ") ||
                   pedido.texto.starts_with("DECLARE ")) { // the batches of several statements
            for (const std::string& uma : base::divide(pedido.texto, ';'))
                instrucao(std::string(base::apara(uma)), {});
        } else {
            instrucao(pedido.texto, pedido.parametros);
        }
    } catch (const base::Falha& falha) { // of what is not the engine's language
        respostas_.falhou(102, falha.what());
    } catch (const SQLite::Exception& falha) {
        respostas_.falhou(numero_de(falha.what()), falha.what());
    }
    if (!procedimento.empty()) respostas_.fim_chamada();
}

bool Execucao::em_transaccao() const { return sqlite3_get_autocommit(motor_.getHandle()) == 0; }

void Execucao::transaccao(const char* sql, Respostas::Mudanca mudanca) {
    motor_.exec(sql);
    respostas_.transaccao(mudanca);
    respostas_.feita();
}

void Execucao::vitima(const std::string& texto) {
    if (em_transaccao()) transaccao("ROLLBACK", Respostas::anulacao);
    respostas_.falhou(1205, texto);
}

void Execucao::instrucao(const std::string& sql, const std::vector<Parametro>& parametros) {
    if (administra(sql)) return;
    if (sql == "BEGIN TRANSACTION") return transaccao("BEGIN", Respostas::inicio);
    if (sql == "COMMIT TRANSACTION") return transaccao("COMMIT", Respostas::confirmacao);
    if (sql == "IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION") {
        if (em_transaccao()) transaccao("ROLLBACK", Respostas::anulacao);
        return;
    }
    if (sql.starts_with("EXEC @r = sp_getapplock ")) return pede_tranca(sql);
    if (sql.starts_with(larga_o_da_sessao)) return tranca_da_sessao_.reset();
    if (sql.starts_with("SET LOCK_TIMEOUT ")) limite_de_bloqueio_ = numero_depois_de("LOCK_TIMEOUT ", sql);
    if (sql.find("(READCOMMITTEDLOCK)") != std::string::npos) espera_pelos_que_escrevem();
    if (sql.starts_with("DECLARE ") || sql.starts_with("SET ")) return;

    if (const std::string directo = traduz_o_da_sessao(sql); directo != sql || !parametros.empty()) {
        Preparada preparada(motor_, {Traducao::Genero::consulta, {directo}, {}});
        for (int i = 0; const Parametro& parametro : parametros)
            associa_valor(preparada.instrucao, ++i, parametro.tipo, parametro.valor);
        return corre(preparada);
    }
    Forma forma;
    forma.le(sql);
    const Traducao traducao = traduz(forma.chave());
    if (traducao.genero == Traducao::Genero::esquema) {
        for (const std::string& uma : traducao.instrucoes)
            motor_.exec(uma);
        return;
    }
    Preparada preparada(motor_, traducao);
    preparada.associa(forma);
    corre(preparada);
}

void Execucao::nega_tranca(int com) {
    trancada_ = com;
    instrucao("SELECT @r AS r", {});
}

void Execucao::pede_tranca(const std::string& sql) {
    const int espera = numero_depois_de("@LockTimeout=", sql);
    if (sql.find("@LockOwner=N'Session'") != std::string::npos) {
        const int cria = SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE;
        tranca_da_sessao_.emplace(base::texto_de(pasta_ / "sessao.lock"), cria, espera);
        trancada_ = tranca_da_sessao_->tryExec("BEGIN IMMEDIATE") == SQLITE_BUSY ? -1 : 0;
        return;
    }
    trancada_ = -999; // a transaction's, without one
    if (!em_transaccao()) return;
    // The ledger's lock is the engine's own; it lasts as long as the transaction, which begins again for it:
    // the real server's reads fix nothing that is seen later.
    motor_.exec("ROLLBACK; BEGIN");
    motor_.setBusyTimeout(espera);
    trancada_ =
        motor_.tryExec("UPDATE main.xel_ORVEX SET NumSerie = NumSerie WHERE 0") == SQLITE_BUSY ? -1 : 0;
    motor_.setBusyTimeout(espera_ms);
}

// As such a read does where it meets rows that are being written.
void Execucao::espera_pelos_que_escrevem() {
    motor_.setBusyTimeout(limite_de_bloqueio_);
    const int codigo = motor_.tryExec("BEGIN IMMEDIATE; ROLLBACK");
    motor_.setBusyTimeout(espera_ms);
    if (codigo != SQLITE_OK) throw SQLite::Exception(motor_.getHandle(), codigo);
}

// What only the ODBC session writes, in the engine's words; anything else comes out as it is.
std::string Execucao::traduz_o_da_sessao(std::string sql) const {
    using Troca = std::pair<std::string_view, std::string>;
    for (const auto& [dela, do_motor] :
         {Troca{" WITH (READCOMMITTEDLOCK)", ""}, // as every read is here
          Troca{"INSERT INTO [Artigos]", "INSERT INTO erp.[Artigos]"},
          Troca{"COLLATE Latin1_General_BIN2", "COLLATE BINARY"}, Troca{"CONVERT(nvarchar(19),[", "substr(["},
          Troca{"],120)=", "],1,19)="},
          Troca{"IDENT_CURRENT(", "(SELECT seq FROM main.sqlite_sequence WHERE name COLLATE NOCASE="},
          Troca{"SELECT @@TRANCOUNT ", em_transaccao() ? "SELECT 1 " : "SELECT 0 "},
          Troca{"SELECT @r ", "SELECT " + std::to_string(trancada_) + " "}})
        for (std::size_t i = 0; (i = sql.find(dela, i)) != std::string::npos; i += do_motor.size())
            sql.replace(i, dela.size(), do_motor);
    return sql;
}

void Execucao::corre(Preparada& preparada) {
    SQLite::Statement& linhas = preparada.instrucao;
    std::vector<Coluna> colunas = preparada.colunas_actualizaveis()->lista;
    descobre_tipos(linhas, colunas);
    const int antes = motor_.getTotalChanges();
    bool ha_linha = linhas.executeStep(); // fails before anything is said, if it fails
    if (colunas.empty()) return respostas_.feita(motor_.getTotalChanges() - antes);
    respostas_.colunas(colunas);
    std::int64_t total = 0;
    for (; ha_linha; ha_linha = linhas.executeStep(), ++total) {
        std::vector<base::Variante> valores;
        for (std::size_t i = 0; i < colunas.size(); ++i)
            valores.push_back(le_celula(colunas[i].tipo, le_coluna(linhas, i)));
        respostas_.linha(colunas, valores);
    }
    respostas_.feita(total);
}

// Asked on a connection of its own, so that it fixes no snapshot in the middle of a transaction.
void Execucao::chave(const Pedido& pedido) {
    SQLite::Database motor = abre_empresa(pasta_, espera_ms);
    motor.tryExec("DROP VIEW temp.Artigos"); // the key is that of the table behind it
    Preparada preparada(motor, {Traducao::Genero::consulta, {colunas_da_chave}, {}});
    preparada.instrucao.bind(1, pedido.parametros.at(0).valor.texto());
    preparada.instrucao.bind(2, pedido.procedimento == "sp_special_columns" ? 1 : 0);
    corre(preparada);
}

// What only the trials on a real server ask of a server: databases of their own, and tables for the ERP's
// rows.
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
