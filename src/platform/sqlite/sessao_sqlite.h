// The database session of an embedded company: SessaoBD over SQLite, for the T-SQL the program speaks.
//
// The connection text's "Database" is the company's folder; its files must exist, none is ever created.
// Opening reads no more than the two schemas. Numbers, texts and dates are held to the server's rules on
// writing, so what works here works on the server, and what the server refuses is refused here.
//
// A session holds at most one half-read statement: it is read to its end into memory before anything else is
// done, and let go with its record set.
#pragma once

#include "platform/espera/espera.h"
#include "platform/registos/sessao.h"

namespace orvex::platform::sqlite {

// Who only reads changes neither file (abre_empresa_para_ler).
enum class Acesso { escrita, leitura };

class SessaoSQLite : public registos::Sessao {
  public:
    SessaoSQLite(); // waits five seconds for a lock held by another program
    explicit SessaoSQLite(int espera_ms, Acesso acesso = Acesso::escrita)
        : espera_ms_(espera_ms), acesso_(acesso) {}
    explicit SessaoSQLite(espera::Espera a_vista); // the same, and who asks is seen waiting

  protected:
    std::unique_ptr<registos::Motor> abre_motor(const std::string& ligacao) override;

  private:
    espera::Espera a_vista_;
    int espera_ms_;
    Acesso acesso_;
};

} // namespace orvex::platform::sqlite
