// An open embedded company: the connection, its prepared statements and the one record set that may still be
// half read.
#pragma once

#include "platform/sqlite/empresa.h"
#include "platform/sqlite/guardadas.h"
#include "platform/sqlite/preparada.h"
#include "startup/sessao_bd.h"

#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>

namespace orvex::platform::sqlite {

class Conjunto;

class Motor {
  public:
    // Opens both files of the folder, neither of which is created. Throws Falha, naming the cause.
    Motor(const std::filesystem::path& pasta, int espera_ms);
    ~Motor();
    Motor(const Motor&) = delete;
    Motor& operator=(const Motor&) = delete;

    enum class Modo { leitura, actualizavel };

    std::unique_ptr<startup::ConjuntoRegistos> consulta(const std::string& sql, Modo modo);
    void executa(const std::string& sql);
    // Begins a transaction that holds the ledger's write lock from the start: who comes second waits for it
    // here, and what is read afterwards is what will be written over. The ERP's file stays free for the ERP.
    void inicia_transaccao();
    void transaccao(const char* instrucao); // COMMIT or ROLLBACK
    bool em_transaccao() const;

    SQLite::Database& base() { return base_; }
    // For the statements that write the rows of a set.
    InstrucoesGuardadas& escritas() { return escritas_; }

    // Reads the half-read set to its end into memory, so that the connection is free.
    void liberta();
    // The set is done with its statement, or gone.
    void esquece(const Conjunto* conjunto) {
        if (aberto_ == conjunto) aberto_ = nullptr;
    }

  private:
    enum class Uso { consulta, execucao }; // a query is refused, not run, when it is something else

    // None for a change of the schema, which is done at once.
    std::shared_ptr<Preparada> prepara(const std::string& sql, Uso uso);
    std::shared_ptr<Preparada> primeiro_passo(const std::string& sql, Uso uso);
    void muda_esquema(const Traducao& traducao);

    SQLite::Database base_;
    InstrucoesGuardadas escritas_{base_};
    Forma forma_;
    std::unordered_map<std::string, std::shared_ptr<Preparada>> preparadas_; // by shape
    Conjunto* aberto_ = nullptr;
};

} // namespace orvex::platform::sqlite
