// An open connection to the server. Closed when destroyed; whatever was not confirmed is then undone.
#pragma once

#include "platform/espera/linha.h"
#include "platform/odbc/odbc.h"

#include <memory>
#include <string>
#include <utility>

namespace orvex::platform::odbc {

struct Esperas { // in seconds
    int ligacao = 15;
    int instrucao = 60;
    int bloqueio = 15;           // for what another program is writing
    espera::Espera a_vista = {}; // of the one who asks, or he just waits
};

// What a lost piece of work may have left open: its transaction, and the lock of the session. The manager may
// keep connections and give them out again as they are (connection pooling), whatever a program asks of it.
inline constexpr const char* tranca_das_tabelas = "xel_ORVEX_tabelas";
std::string acaba_o_que_ficou();

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

    // Makes a call that may wait for the server, or several in one: on a thread of the connection, where who
    // asks wants to be seen waiting.
    void chama(espera::Motivo motivo, const espera::Linha::Trabalho& chamada) const {
        linha_ ? linha_->executa(motivo, chamada) : chamada();
    }

    // Whatever failed on the connection, noticed by the program or not: the server may have undone the
    // transaction for it.
    void nota_erro() const { houve_erro_ = true; }
    bool retira_erro() const { return std::exchange(houve_erro_, false); }

  private:
    void larga();
    void deixa_sem_nada() const;

    std::unique_ptr<espera::Linha> linha_;
    SQLHENV ambiente_ = SQL_NULL_HENV;
    SQLHDBC ligacao_ = SQL_NULL_HDBC;
    bool aberta_ = false;
    mutable bool houve_erro_ = false;
};

} // namespace orvex::platform::odbc
