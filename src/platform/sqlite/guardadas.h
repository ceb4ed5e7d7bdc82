// Statements prepared once for each text and lent out again and again: preparing one costs more than running
// it.
#pragma once

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <memory>
#include <string>
#include <unordered_map>

namespace orvex::platform::sqlite {

class InstrucoesGuardadas {
  public:
    // A statement at its start, without parameters; given back, reset, when the loan ends.
    class Emprestimo {
      public:
        Emprestimo(InstrucoesGuardadas& dono, const std::string& sql);
        ~Emprestimo();
        Emprestimo(const Emprestimo&) = delete;
        Emprestimo& operator=(const Emprestimo&) = delete;

        SQLite::Statement& operator*() const { return *instrucao_; }
        SQLite::Statement* operator->() const { return instrucao_.get(); }

      private:
        std::unique_ptr<SQLite::Statement>& lugar_; // where it is given back
        std::unique_ptr<SQLite::Statement> instrucao_;
    };

    // The database must outlive the statements, and the statements their loans.
    explicit InstrucoesGuardadas(const SQLite::Database& base) : base_(base) {}

    Emprestimo toma(const std::string& sql) { return {*this, sql}; }

  private:
    const SQLite::Database& base_;
    std::unordered_map<std::string, std::unique_ptr<SQLite::Statement>> livres_;
};

} // namespace orvex::platform::sqlite
