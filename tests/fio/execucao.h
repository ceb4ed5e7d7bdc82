// One client's session: carries its requests out on the engine and answers them.
//
// What the program asks is the engine's own language to understand. The few forms that only the ODBC session
// writes (parameters, the transaction count, the last number given, ...) become the engine's here.
#pragma once

#include "platform/sqlite/preparada.h"
#include "tests/fio/mensagens.h"

#include <SQLiteCpp/Database.h>

#include <optional>

namespace orvex::testes::tds {

class Execucao {
  public:
    // Throws SQLite::Exception when the company does not open.
    Execucao(const std::filesystem::path& pasta, Respostas& respostas);

    // The answers are written, failures too; only sending them can throw.
    void executa(const Pedido& pedido);
    void nega_tranca(int com);
    void vitima(const std::string& texto); // its transaction is rolled back to let another one go on

  private:
    // Carries the statement out and answers it; false when it is of another kind. Databases are folders.
    bool administra(const std::string& sql);
    bool em_transaccao() const;
    void transaccao(const char* sql, Respostas::Mudanca mudanca);
    void instrucao(const std::string& sql, const std::vector<Parametro>& parametros);
    void pede_tranca(const std::string& sql);
    void espera_pelos_que_escrevem();
    std::string traduz_o_da_sessao(std::string sql) const;
    void corre(platform::sqlite::Preparada& preparada);
    void chave(const Pedido& pedido);

    std::filesystem::path pasta_;
    SQLite::Database motor_;
    Respostas& respostas_;
    std::optional<SQLite::Database> tranca_da_sessao_; // a file that has one writer at a time
    int trancada_ = 0;                                 // what the last request for a lock returned
    int limite_de_bloqueio_ = -1;                      // in milliseconds, as the session last set it
};

} // namespace orvex::testes::tds
