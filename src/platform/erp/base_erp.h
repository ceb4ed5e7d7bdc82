// The emulation's own connection to erp.db. What it writes is committed operation by operation, whatever
// transaction the program has open on its session.
#pragma once

#include "base/variante.h"
#include "platform/sqlite/empresa.h"
#include "platform/sqlite/guardadas.h"
#include "startup/sessao_erp.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace orvex::platform::erp {

// The ERP says no; the text is for the user.
class Recusa : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// What went wrong in the database, for the user.
std::string texto_da_falha(const SQLite::Exception& falha);

class BaseErp {
  public:
    explicit BaseErp(SQLite::Database bd, sqlite::ComoEspera como = {})
        : bd_(std::move(bd)), como_(std::move(como)) {
        sqlite::espera_a_vista(bd_, como_);
    }

    SQLite::Database& bd() { return bd_; }
    sqlite::InstrucoesGuardadas& instrucoes() { return instrucoes_; }

    // Runs the operation in a transaction of its own and commits it. A refusal, or a failure of the database,
    // leaves everything as it was and comes back as the result. What writes begins IMMEDIATE, so that it
    // waits for another writer before it has read anything.
    startup::ResultadoERP executa(const std::function<void()>& operacao, SQLite::TransactionBehavior inicio);

  private:
    SQLite::Database bd_;
    sqlite::ComoEspera como_;
    sqlite::InstrucoesGuardadas instrucoes_{bd_};
};

// Binds the values in order, from parameter 1: each copied, or read where it stands, which must outlive the
// command.
class Comando {
  public:
    Comando(BaseErp& base, const std::string& sql) : comando_(base.instrucoes().toma(sql)) {}

    Comando& com(const base::Variante& valor);
    Comando& com_este(const base::Variante& valor);
    Comando& com_este(base::Variante&& valor) = delete;
    bool linha() { return comando_->executeStep(); }
    int executa() { return comando_->exec(); }

    base::Variante valor(int coluna); // by the type of the stored value
    base::Moeda moeda(int coluna) { return valor(coluna).moeda(); }
    std::string texto(int coluna) { return comando_->getColumn(coluna).getString(); }
    std::int64_t inteiro(int coluna) { return comando_->getColumn(coluna).getInt64(); }

  private:
    sqlite::InstrucoesGuardadas::Emprestimo comando_;
    int ultimo_ = 0;
};

} // namespace orvex::platform::erp
