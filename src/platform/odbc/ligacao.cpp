#include "platform/odbc/ligacao.h"

#include "platform/odbc/falhas.h"
#include "platform/odbc/instrucao.h"
#include "platform/odbc/texto_largo.h"
#include "startup/sessao_bd.h"

#include <array>

namespace orvex::platform::odbc {

std::string acaba_o_que_ficou() {
    const std::string tranca = std::string("N'") + tranca_das_tabelas + "'";
    return "IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION; IF APPLOCK_MODE(N'public'," + tranca +
           ",N'Session')<>N'NoLock' EXEC sp_releaseapplock @Resource=" + tranca + ", @LockOwner=N'Session'";
}

LigacaoODBC::LigacaoODBC(const std::string& texto, const Esperas& esperas)
    : linha_(esperas.a_vista ? std::make_unique<espera::Linha>(esperas.a_vista) : nullptr) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &ambiente_)))
        throw base::Falha("O gestor de ODBC não arrancou.", startup::numeros_bd::falha_geral);
    try {
        exige(SQLSetEnvAttr(ambiente_, SQL_ATTR_ODBC_VERSION, como_ponteiro(SQL_OV_ODBC3), 0), SQL_HANDLE_ENV,
              ambiente_);
        exige(SQLAllocHandle(SQL_HANDLE_DBC, ambiente_, &ligacao_), SQL_HANDLE_ENV, ambiente_);
        exige(SQLSetConnectAttrW(ligacao_, SQL_ATTR_LOGIN_TIMEOUT, como_ponteiro(esperas.ligacao),
                                 SQL_IS_UINTEGER),
              SQL_HANDLE_DBC, ligacao_);
        TextoLargo largo_texto = largo(texto);
        chama(espera::Motivo::servidor, [&] {
            exige(SQLDriverConnectW(ligacao_, nullptr, largo_texto.data(), SQL_NTS, nullptr, 0, nullptr,
                                    SQL_DRIVER_NOPROMPT),
                  SQL_HANDLE_DBC, ligacao_);
        });
        aberta_ = true;
    } catch (...) {
        larga();
        throw;
    }
}

LigacaoODBC::~LigacaoODBC() { larga(); }

void LigacaoODBC::larga() {
    if (aberta_) {
        if (viva()) deixa_sem_nada();
        chama(espera::Motivo::servidor, [this] { SQLDisconnect(ligacao_); });
    }
    if (ligacao_ != SQL_NULL_HDBC) SQLFreeHandle(SQL_HANDLE_DBC, ligacao_);
    SQLFreeHandle(SQL_HANDLE_ENV, ambiente_);
}

// Closing does it too, where it closes. A server that does not answer is not waited for.
void LigacaoODBC::deixa_sem_nada() const {
    constexpr int espera = 2;
    try {
        Instrucao(*this, espera).executa(acaba_o_que_ficou());
    } catch (const base::Falha&) {
    }
}

bool LigacaoODBC::viva() const {
    SQLUINTEGER morta = SQL_CD_FALSE;
    SQLGetConnectAttrW(ligacao_, SQL_ATTR_CONNECTION_DEAD, &morta, SQL_IS_UINTEGER, nullptr);
    return morta == SQL_CD_FALSE;
}

std::string LigacaoODBC::informacao(SQLUSMALLINT qual) const {
    std::array<SQLWCHAR, 256> texto{};
    SQLSMALLINT bytes = 0;
    exige(SQLGetInfoW(ligacao_, qual, texto.data(), sizeof texto, &bytes), SQL_HANDLE_DBC, ligacao_);
    return estreito(texto.data(), static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR));
}

} // namespace orvex::platform::odbc
