// An open connection to the server. Closed when destroyed; the server then undoes whatever was not confirmed.
#pragma once

#include "platform/odbc/odbc.h"

#include <string>
#include <utility>

namespace orvex::platform::odbc {

struct Esperas { // in seconds
    int ligacao = 15;
    int instrucao = 60;
    int bloqueio = 15; // for what another program is writing
};

class LigacaoODBC {
  public:
    // Throws FalhaODBC; its text never holds the connection text.
    LigacaoODBC(const std::string& texto, const Esperas& esperas);
    ~LigacaoODBC();
    LigacaoODBC(const LigacaoODBC&) = delete;
    LigacaoODBC& operator=(const LigacaoODBC&) = delete;

    SQLHDBC punho() const { return ligacao_; }
    bool viva() const;                               // as far as the driver knows
    std::string informacao(SQLUSMALLINT qual) const; // SQLGetInfo's texts

    // Whatever failed on the connection, noticed by the program or not: the server may have undone the
    // transaction for it.
    void nota_erro() const { houve_erro_ = true; }
    bool retira_erro() const { return std::exchange(houve_erro_, false); }

  private:
    void larga();

    SQLHENV ambiente_ = SQL_NULL_HENV;
    SQLHDBC ligacao_ = SQL_NULL_HDBC;
    bool aberta_ = false;
    mutable bool houve_erro_ = false;
};

} // namespace orvex::platform::odbc
