#include "platform/odbc/parametro.h"

#include "platform/odbc/falhas.h"

#include <algorithm>

namespace orvex::platform::odbc {
namespace {

using base::DataHora;
using base::Moeda;
using registos::TipoSQL;
using Familia = TipoSQL::Familia;

constexpr SQLULEN digitos_decimal = 19; // all that a Moeda can hold
constexpr SQLULEN tamanho_data = 10;
constexpr SQLULEN tamanho_data_hora = 23;
constexpr SQLSMALLINT casas_data_hora = 3;
constexpr SQLULEN maximo_curto = 4000; // beyond it a text is a long one for the server

SQL_DATE_STRUCT dia(const DataHora& data) {
    return {static_cast<SQLSMALLINT>(data.ano), static_cast<SQLUSMALLINT>(data.mes),
            static_cast<SQLUSMALLINT>(data.dia)};
}

SQL_TIMESTAMP_STRUCT instante(const DataHora& data) {
    return {static_cast<SQLSMALLINT>(data.ano),
            static_cast<SQLUSMALLINT>(data.mes),
            static_cast<SQLUSMALLINT>(data.dia),
            static_cast<SQLUSMALLINT>(data.hora),
            static_cast<SQLUSMALLINT>(data.minuto),
            static_cast<SQLUSMALLINT>(data.segundo),
            0};
}

// A null too is sent with its column's type.
Familia familia(const TipoSQL& tipo, const base::Variante& valor) {
    if (tipo.familia != Familia::expressao || valor.nulo()) return tipo.familia;
    if (std::holds_alternative<std::string>(valor.valor())) return Familia::texto;
    if (std::holds_alternative<Moeda>(valor.valor())) return Familia::decimal;
    if (std::holds_alternative<DataHora>(valor.valor())) return Familia::data_hora;
    if (std::holds_alternative<double>(valor.valor())) return Familia::expressao;
    return Familia::inteiro;
}

} // namespace

Parametro::Parametro(const TipoSQL& tipo, const base::Variante& valor) {
    const bool nulo = valor.nulo();
    switch (familia(tipo, valor)) {
    case Familia::inteiro:
        tipo_c_ = SQL_C_SBIGINT;
        tipo_sql_ = SQL_BIGINT;
        tamanho_ = digitos_decimal;
        if (!nulo) valor_ = valor.inteiro();
        comprimento_ = nulo ? SQL_NULL_DATA : SQLLEN{sizeof(std::int64_t)};
        break;
    case Familia::decimal:
        tipo_c_ = SQL_C_CHAR;
        tipo_sql_ = SQL_DECIMAL;
        tamanho_ = digitos_decimal;
        casas_ = Moeda::casas;
        if (!nulo) valor_ = valor.moeda().texto();
        comprimento_ = nulo ? SQL_NULL_DATA : SQL_NTS;
        break;
    case Familia::data:
        tipo_c_ = SQL_C_TYPE_DATE;
        tipo_sql_ = SQL_TYPE_DATE;
        tamanho_ = tamanho_data;
        if (!nulo) valor_ = dia(valor.data());
        comprimento_ = nulo ? SQL_NULL_DATA : SQLLEN{sizeof(SQL_DATE_STRUCT)};
        break;
    case Familia::data_hora:
        tipo_c_ = SQL_C_TYPE_TIMESTAMP;
        tipo_sql_ = SQL_TYPE_TIMESTAMP;
        tamanho_ = tamanho_data_hora;
        casas_ = casas_data_hora;
        if (!nulo) valor_ = instante(valor.data());
        comprimento_ = nulo ? SQL_NULL_DATA : SQLLEN{sizeof(SQL_TIMESTAMP_STRUCT)};
        break;
    case Familia::texto: {
        TextoLargo texto = nulo ? TextoLargo{} : largo(valor.texto());
        const std::size_t unidades = texto.empty() ? 0 : texto.size() - 1;
        tamanho_ = std::max<SQLULEN>(1, unidades);
        if (tamanho_ > maximo_curto) tipo_sql_ = SQL_WLONGVARCHAR;
        comprimento_ = nulo ? SQL_NULL_DATA : static_cast<SQLLEN>(unidades * sizeof(SQLWCHAR));
        valor_ = std::move(texto);
        break;
    }
    case Familia::expressao:
        if (nulo) break;
        tipo_c_ = SQL_C_DOUBLE;
        tipo_sql_ = SQL_DOUBLE;
        valor_ = valor.real();
        comprimento_ = sizeof(double);
        break;
    }
}

void Parametro::associa(SQLHSTMT instrucao, SQLUSMALLINT numero) {
    SQLPOINTER dados = nullptr;
    if (auto* texto = std::get_if<std::string>(&valor_)) {
        dados = texto->data();
    } else if (auto* texto_largo = std::get_if<TextoLargo>(&valor_)) {
        dados = texto_largo->data();
    } else {
        dados = std::visit([](auto& valor) -> SQLPOINTER { return &valor; }, valor_);
    }
    exige(SQLBindParameter(instrucao, numero, SQL_PARAM_INPUT, tipo_c_, tipo_sql_, tamanho_, casas_, dados, 0,
                           &comprimento_),
          SQL_HANDLE_STMT, instrucao);
}

} // namespace orvex::platform::odbc
