// What the driver and the server report, as the failures the rules know: a number, the cause in Portuguese,
// and the server's own text after it.
#pragma once

#include "base/falha.h"
#include "platform/odbc/odbc.h"

#include <string>
#include <vector>

namespace orvex::platform::odbc {

struct Diagnostico {
    std::string estado{}; // SQLSTATE
    int nativo = 0;       // the server's number, or the driver's own
    std::string texto{};  // without the names of the driver's parts
};

class FalhaODBC : public base::Falha {
  public:
    enum class Natureza {
        outra,
        ligacao, // refused or lost: what was not confirmed is undone
        tempo,   // the server did not answer in time
        vitima,  // the server undid the transaction to let another one through
        ocupado, // another program kept for too long what was asked for
    };

    FalhaODBC(const std::string& descricao, std::int32_t numero, Natureza natureza)
        : Falha(descricao, numero), natureza_(natureza) {}
    Natureza natureza() const { return natureza_; }

  private:
    Natureza natureza_;
};

std::vector<Diagnostico> le_diagnosticos(SQLSMALLINT tipo, SQLHANDLE punho);
// The same failure, of a connection found dead.
FalhaODBC ligacao_perdida(const FalhaODBC& falha);
FalhaODBC falha_de(const std::vector<Diagnostico>& diagnosticos);

// Throws unless the call succeeded; finding no data is for the caller to see.
void exige(SQLRETURN resultado, SQLSMALLINT tipo, SQLHANDLE punho);

} // namespace orvex::platform::odbc
