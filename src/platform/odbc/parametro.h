// A value on its way into a statement: typed as its column is, so that neither the server's language nor a
// binary fraction ever touches it.
#pragma once

#include "platform/odbc/texto_largo.h"
#include "platform/registos/conjunto.h"

#include <cstdint>
#include <string>
#include <variant>

namespace orvex::platform::odbc {

class Parametro {
  public:
    // Numbers and dates as such, decimals as decimal text.
    Parametro(const registos::TipoSQL& tipo, const base::Variante& valor);

    // The driver reads the value when the statement runs: it must still be here then, in its place.
    void associa(SQLHSTMT instrucao, SQLUSMALLINT numero);

  private:
    using Valor = std::variant<std::monostate, std::int64_t, double, std::string, TextoLargo, SQL_DATE_STRUCT,
                               SQL_TIMESTAMP_STRUCT>;

    Valor valor_;
    SQLSMALLINT tipo_c_ = SQL_C_WCHAR;
    SQLSMALLINT tipo_sql_ = SQL_WVARCHAR;
    SQLULEN tamanho_ = 1;
    SQLSMALLINT casas_ = 0;
    SQLLEN comprimento_ = SQL_NULL_DATA; // in bytes
};

} // namespace orvex::platform::odbc
