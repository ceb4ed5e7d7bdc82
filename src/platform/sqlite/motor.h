// An open embedded company: the connection and its prepared statements.
#pragma once

#include "platform/sqlite/empresa.h"
#include "platform/sqlite/guardadas.h"
#include "platform/sqlite/preparada.h"

#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>

namespace orvex::platform::sqlite {

class Motor final : public registos::Motor {
  public:
    // Opens both files of the folder, neither of which is created. Throws Falha, naming the cause.
    Motor(const std::filesystem::path& pasta, int espera_ms);
    ~Motor() override;

    std::unique_ptr<registos::Conjunto> consulta(const std::string& sql, Modo modo) override;
    void executa(const std::string& sql) override;
    void inicia() override;
    // Takes the write lock of the ledger's file; the ERP's stays free for the ERP.
    void tranca() override;
    void confirma() override { transaccao("COMMIT"); }
    void anula() override { transaccao("ROLLBACK"); }
    bool em_transaccao() override;
    void em_exclusivo(const std::function<void()>& trabalho) override;

    void insere(const Colunas& colunas, const std::vector<registos::Campo>& campos) override;
    bool altera(const Colunas& colunas, const std::vector<registos::Campo>& campos,
                const registos::Conjunto& lida) override;

  private:
    void transaccao(const char* instrucao);
    void tranca_para_escrever();

    enum class Uso { consulta, execucao }; // a query is refused, not run, when it is something else

    // None for a change of the schema, which is done at once.
    std::shared_ptr<Preparada> prepara(const std::string& sql, Uso uso);
    std::shared_ptr<Preparada> primeiro_passo(const std::string& sql, Uso uso);
    void muda_esquema(const Traducao& traducao);

    const std::filesystem::path erp_; // the ERP's file
    const int espera_ms_;
    SQLite::Database base_;
    bool trancada_ = false;               // the open transaction has the ledger's lock
    InstrucoesGuardadas escritas_{base_}; // that write the rows of a set
    Forma forma_;
    std::unordered_map<std::string, std::shared_ptr<Preparada>> preparadas_; // by shape
};

} // namespace orvex::platform::sqlite
