#include "controladores_odbc.h"

#include "platform/odbc/texto_largo.h"

#include <algorithm>
#include <array>

namespace orvex::diagnostico {

std::vector<std::string> controladores_instalados() {
    std::vector<std::string> nomes;
    SQLHENV ambiente = SQL_NULL_HENV;
    if (!SQL_SUCCEEDED(SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &ambiente))) return nomes;
    SQLSetEnvAttr(ambiente, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    std::array<SQLWCHAR, 256> nome{};
    std::array<SQLWCHAR, 4096> atributos{};
    SQLSMALLINT comprimento = 0, comprimento_atributos = 0;
    for (SQLUSMALLINT qual = SQL_FETCH_FIRST;
         SQL_SUCCEEDED(SQLDriversW(ambiente, qual, nome.data(), nome.size(), &comprimento, atributos.data(),
                                   atributos.size(), &comprimento_atributos));
         qual = SQL_FETCH_NEXT)
        nomes.push_back(platform::odbc::estreito(
            nome.data(), std::min<std::size_t>(static_cast<std::size_t>(comprimento), nome.size() - 1)));
    SQLFreeHandle(SQL_HANDLE_ENV, ambiente);
    return nomes;
}

} // namespace orvex::diagnostico
