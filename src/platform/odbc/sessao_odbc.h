// The database session in production: SessaoBD over ODBC, for SQL Server.
//
// It sends the very texts it is given. Rows are read as they are asked for, and the rest of a half-read set
// is fetched before the connection does anything else. Nothing is locked but by a transaction, and
// transactions of this program wait for one another. A connection lost between transactions is opened again
// unnoticed; one lost inside a transaction ends it, as on the server.
#pragma once

#include "platform/odbc/ligacao.h"
#include "platform/registos/sessao.h"

#include <string>

namespace orvex::platform::odbc {

struct Servidor {
    std::string controlador; // the driver's name and version
    std::string versao;      // of the server
};

class SessaoODBC : public registos::Sessao {
  public:
    explicit SessaoODBC(const Esperas& esperas = {}) : esperas_(esperas) {}

    Servidor servidor(); // throws as a statement does when the session is not open

  protected:
    std::unique_ptr<registos::Motor> abre_motor(const std::string& ligacao) override;

  private:
    Esperas esperas_;
};

} // namespace orvex::platform::odbc
