// The tests' company in the trial database, where the ERP's tables lie beside the ledger's as in production,
// and a session of its own on it, as another workstation has.
//
// The emulated ERP works on the company's files all the same. What changes in its tables there is carried to
// the server after each of its operations, on this session and at once, as a real ERP writes. What the
// program writes on the server (Artigos.Observ) stays: only what changed is carried.
#pragma once

#include "platform/odbc/sessao_odbc.h"
#include "platform/sqlite/sessao_sqlite.h"

#include <filesystem>
#include <map>
#include <vector>

namespace orvex::testes {

class EmpresaNoServidor final : public platform::odbc::SessaoODBC {
  public:
    // The tables are emptied, and filled with the files' rows. One company at a time has them: the last.
    explicit EmpresaNoServidor(const std::filesystem::path& ficheiros);
    ~EmpresaNoServidor() override;

    // What a test writes in the ERP's tables is written in the files, for the ERP to see too.
    std::unique_ptr<startup::ConjuntoRegistos> AbreActualizavel(const std::string& sql) override;
    void Executa(const std::string& sql) override;
    void IniciaTransaccao() override;
    void ConfirmaTransaccao() override;

    void espelha();

  private:
    using Linhas = std::map<std::string, std::vector<base::Variante>>; // by the condition that finds each
    struct Tabela {
        std::string nome;
        bool do_erp;
        std::string criacao{}, chave_primaria{}; // its columns
        std::vector<std::string> chave{}, colunas{};
        Linhas linhas{}; // on the server, as last carried there
    };

    void le_tabelas(const std::filesystem::path& ficheiro, bool do_erp);
    void cria_tabelas();
    void esvazia(const std::string& tabela) { SessaoODBC::Executa("TRUNCATE TABLE [" + tabela + "]"); }
    Linhas le(Tabela& tabela);
    void leva(Tabela& tabela);

    platform::sqlite::SessaoSQLite ficheiros_;
    std::vector<Tabela> tabelas_;
};

// After every writing operation of the emulated ERP. Does nothing when no company is on a server.
void espelha();

} // namespace orvex::testes
