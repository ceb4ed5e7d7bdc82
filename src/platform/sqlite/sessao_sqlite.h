// The database session of an embedded company: SessaoBD over SQLite, for the T-SQL the program speaks.
//
// The connection text's "Database" is the company's folder; its files must exist, none is ever created.
// Opening reads no more than the two schemas. Numbers, texts and dates are held to the server's rules on
// writing, so what works here works on the server, and what the server refuses is refused here.
//
// A session holds at most one half-read statement: it is read to its end into memory before anything else is
// done, and let go with its record set.
#pragma once

#include "startup/sessao_bd.h"

#include <memory>
#include <string>

namespace orvex::platform::sqlite {

class Motor;

class SessaoSQLite : public startup::SessaoBD {
  public:
    SessaoSQLite(); // waits five seconds for a lock held by another program
    explicit SessaoSQLite(int espera_ms);
    ~SessaoSQLite() override;

    bool Abre(const std::string& ligacao) override;

    std::unique_ptr<startup::ConjuntoRegistos> Consulta(const std::string& sql) override;
    std::unique_ptr<startup::ConjuntoRegistos> AbreActualizavel(const std::string& sql) override;
    void Executa(const std::string& sql) override;

    void IniciaTransaccao() override;
    void ConfirmaTransaccao() override;
    void AnulaTransaccao() override;
    bool EmTransaccao() override;

    void Fecha() override;

  private:
    Motor& motor();

    int espera_ms_;
    std::unique_ptr<Motor> motor_; // none until open
    std::string causa_;            // why it is not open
};

} // namespace orvex::platform::sqlite
