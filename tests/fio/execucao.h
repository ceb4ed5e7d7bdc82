// One client's session: carries its requests out on the engine and answers them.
//
// What the program asks is the engine's own language to understand. The few forms that only the ODBC session
// writes (parameters, the transaction count, the last number given, ...) become the engine's here.
#pragma once

#include "platform/sqlite/preparada.h"
#include "tests/fio/mensagens.h"

#include <SQLiteCpp/Database.h>

#include <functional>
#include <optional>

namespace orvex::testes::tds {

class Execucao {
  public:
    // Throws SQLite::Exception when the company does not open.
    Execucao(const std::filesystem::path& pasta, Respostas& respostas);

    enum class Segue { sim, salta_esta, acaba };

    // The answers are written, failures too; only sending them can throw. `antes` is asked before each
    // statement of a batch of several.
    void executa(const Pedido& pedido, const std::function<Segue()>& antes);
    void recusa(int numero, const std::string& texto, bool so_avisa = false);
    void nega_tranca(int com);
    void vitima(const std::string& texto); // its transaction is rolled back to let another one go on

  private:
    // Carries the statement out and answers it; false when it is of another kind. Databases are folders.
    bool administra(const std::string& sql);
    bool em_transaccao() const;
    void transaccao(const char* sql, Respostas::Mudanca mudanca);
    void lote(const std::vector<std::string>& instrucoes, const std::vector<Parametro>& parametros,
              const std::function<Segue()>& antes);
    // Carries out what works on a request's variables; none for any other statement.
    struct Variaveis {
        std::int64_t n = 0;
        int e = 0;
    };
    std::optional<Segue> com_variaveis(const std::string& sql);
    void compila(const std::string& sql, const std::vector<Parametro>& parametros);
    int falhou(const SQLite::Exception& falha);
    void instrucao(const std::string& sql, const std::vector<Parametro>& parametros);
    // None for what changes the schema, which is done at once.
    std::unique_ptr<platform::sqlite::Preparada> prepara(const std::string& sql,
                                                         const std::vector<Parametro>& parametros);
    void pede_tranca(const std::string& sql);
    void espera_pelos_que_escrevem();
    std::string traduz_o_da_sessao(std::string sql) const;
    void corre(platform::sqlite::Preparada& preparada);
    void chave(const Pedido& pedido);

    std::filesystem::path pasta_;
    SQLite::Database motor_;
    platform::sqlite::Forma forma_; // of the statement prepared last, which reads its texts where they are
    Respostas& respostas_;
    std::optional<SQLite::Database> tranca_da_sessao_; // a file that has one writer at a time
    int trancada_ = 0;                                 // what the last request for a lock returned
    std::int64_t contadas_ = 0;                        // rows of the last statement
    int erro_ = 0;                                     // that it failed with
    std::optional<Variaveis> variaveis_;               // once the request declares them
    int limite_de_bloqueio_ = -1;                      // in milliseconds, as the session last set it
};

} // namespace orvex::testes::tds
