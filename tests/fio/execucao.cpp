#include "tests/fio/execucao.h"

#include "base/caminho.h"
#include "base/texto.h"
#include "platform/sqlite/empresa.h"

#include <sqlite3.h>

#include <map>

namespace orvex::testes::tds {
namespace {

using namespace platform::sqlite;

constexpr int sem_tabela = 208;
constexpr int espera_ms = 1000; // for a lock another session holds

// The number after a name; 0 when it is not there.
int numero_depois_de(std::string_view nome, const std::string& sql) {
    const std::size_t i = sql.find(nome);
    return i == std::string::npos ? 0 : std::stoi(sql.substr(i + nome.size()));
}

// The number the real server gives the engine's failure.
int numero_de(const std::string& texto) {
    for (const auto& [parte, numero] : {std::pair{"no such table", sem_tabela},
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
constexpr const char *declara_variaveis = "DECLARE @n int=0,@e int=0", *le_variaveis = ",@n AS n,@e AS e";
constexpr const char* larga_o_da_sessao =
    "IF APPLOCK_MODE(N'public',N'xel_ORVEX_tabelas',N'Session')<>N'NoLock' EXEC sp_releaseapplock ";

} // namespace

Execucao::Execucao(const std::filesystem::path& pasta, Respostas& respostas)
    : pasta_(pasta), motor_(abre_empresa(pasta, espera_ms)), respostas_(respostas) {
    // A database that a client made has the article's notes in the article's own table, as a server has.
    if (sqlite3_table_column_metadata(motor_.getHandle(), "erp", "Artigos", "Observ", nullptr, nullptr,
                                      nullptr, nullptr, nullptr) == SQLITE_OK)
        motor_.exec("DROP VIEW temp.Artigos");
}

void Execucao::executa(const Pedido& pedido, const std::function<Segue()>& antes) {
    const std::string& procedimento = pedido.procedimento;
    if (!procedimento.empty()) respostas_.inicia_chamada();
    try {
        const auto instrucoes = pedido.instrucoes();
        if (procedimento == "sp_pkeys" || procedimento == "sp_special_columns") {
            chave(pedido);
        } else if (instrucoes.size() > 1) {
            lote(instrucoes, pedido.parametros, antes);
        } else {
            instrucao(instrucoes.at(0), pedido.parametros);
        }
    } catch (const base::Falha& falha) { // of what is not the engine's language
        respostas_.falhou(102, falha.what());
    } catch (const SQLite::Exception& falha) {
        falhou(falha);
    }
    if (!procedimento.empty()) respostas_.fim_chamada();
}

int Execucao::falhou(const SQLite::Exception& falha) {
    recusa(numero_de(falha.what()), falha.what());
    return erro_;
}

void Execucao::recusa(int numero, const std::string& texto, bool so_avisa) {
    contadas_ = 0;
    erro_ = numero;
    respostas_.falhou(numero, texto, so_avisa);
}

// As the server does it: a batch that cannot be understood is refused whole; a statement that fails fails
// alone; a table that is missing is found out when its statement is reached, and ends the batch.
void Execucao::lote(const std::vector<std::string>& instrucoes, const std::vector<Parametro>& parametros,
                    const std::function<Segue()>& antes) {
    variaveis_.reset();
    for (const std::string& uma : instrucoes)
        compila(uma, parametros);
    for (const std::string& uma : instrucoes) {
        const auto com_elas = com_variaveis(uma);
        const Segue segue = com_elas ? *com_elas : antes();
        if (segue == Segue::acaba) return;
        if (segue == Segue::salta_esta) continue;
        try {
            instrucao(uma, parametros);
            erro_ = 0;
        } catch (const SQLite::Exception& falha) {
            if (falhou(falha) == sem_tabela) return;
        }
    }
}

// Whatever reads the count and the error of the statement before has others of its own.
std::optional<Execucao::Segue> Execucao::com_variaveis(const std::string& sql) {
    if (sql == declara_variaveis) return Segue::salta_esta;
    const bool guarda = sql == "SELECT @n=@@ROWCOUNT,@e=@@ERROR",
               com_linhas = sql == "IF @e<>0 OR @n=0 RETURN";
    if (!guarda && !com_linhas && sql != "IF @e<>0 RETURN") return {};
    if (guarda) {
        variaveis_ = {contadas_, erro_};
        respostas_.feita(1);
    } else if (variaveis_->e != 0 || (com_linhas && variaveis_->n == 0)) {
        return Segue::acaba;
    }
    contadas_ = guarda ? 1 : 0;
    erro_ = 0;
    return Segue::salta_esta;
}

void Execucao::compila(const std::string& sql, const std::vector<Parametro>& parametros) {
    if (sql == declara_variaveis) variaveis_.emplace();
    if (!variaveis_ &&
        (sql.starts_with("SELECT @n=") || sql.starts_with("IF @e") || sql.find(le_variaveis) != sql.npos))
        throw base::Falha("Must declare the scalar variable \"@n\".");
    const std::string verbo = base::maiusculas(sql.substr(0, 6));
    const bool de_linhas = verbo == "SELECT" || verbo == "INSERT" || verbo == "UPDATE" || verbo == "DELETE";
    if (!de_linhas || sql.find("@@") != std::string::npos || sql.find("@r ") != std::string::npos) return;
    try {
        prepara(sql, parametros);
    } catch (const SQLite::Exception& falha) {
        if (numero_de(falha.what()) != sem_tabela) throw;
    }
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
    if (sql == "DECLARE @r int=-999") trancada_ = -999;
    if (sql.starts_with("DECLARE ") || sql.starts_with("SET ")) return;

    if (const auto preparada = prepara(sql, parametros)) corre(*preparada);
}

std::unique_ptr<Preparada> Execucao::prepara(const std::string& sql,
                                             const std::vector<Parametro>& parametros) {
    const std::string directo = traduz_o_da_sessao(sql);
    if (directo != sql || sql.find("@P") != std::string::npos) {
        auto preparada =
            std::make_unique<Preparada>(motor_, Traducao{Traducao::Genero::consulta, {directo}, {}});
        for (std::size_t i = 0; i < parametros.size();
             ++i) // each by its name: others are of other statements
            if (const int lugar = preparada->instrucao.getIndex(("@P" + std::to_string(i + 1)).c_str());
                lugar > 0)
                associa_valor(preparada->instrucao, lugar, parametros[i].tipo, parametros[i].valor);
        return preparada;
    }
    forma_ = {};
    forma_.le(sql);
    const Traducao traducao = traduz(forma_.chave());
    if (traducao.genero == Traducao::Genero::esquema) {
        for (const std::string& uma : traducao.instrucoes)
            motor_.exec(uma);
        return nullptr;
    }
    auto preparada = std::make_unique<Preparada>(motor_, traducao);
    preparada->associa(forma_);
    return preparada;
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
          Troca{le_variaveis, "," + std::to_string(variaveis_.value_or(Variaveis()).n) + " AS n," +
                                  std::to_string(variaveis_.value_or(Variaveis()).e) + " AS e"},
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
    if (colunas.empty()) return respostas_.feita(contadas_ = motor_.getTotalChanges() - antes);
    respostas_.colunas(colunas);
    std::int64_t total = 0;
    for (; ha_linha; ha_linha = linhas.executeStep(), ++total) {
        std::vector<base::Variante> valores;
        for (std::size_t i = 0; i < colunas.size(); ++i)
            valores.push_back(le_celula(colunas[i].tipo, preparada.celula(i)));
        respostas_.linha(colunas, valores);
    }
    respostas_.feita(contadas_ = total);
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

} // namespace orvex::testes::tds
