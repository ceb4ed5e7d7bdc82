#include "platform/registos/tipo_sql.h"

#include "base/falha.h"
#include "base/formato_regional.h"
#include "base/texto.h"
#include "startup/sessao_bd.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace orvex::platform::registos {
namespace {

using base::DataHora;
using base::Falha;
using base::Moeda;
using base::Variante;
using Familia = TipoSQL::Familia;

// As its user writes it.
std::string escrito(const Variante& valor) {
    const base::FormatoRegional regional;
    if (!std::holds_alternative<double>(valor.valor())) return regional.texto(valor);
    std::string texto = valor.texto(); // it may be larger than any number of ours
    std::replace(texto.begin(), texto.end(), '.', regional.decimal);
    return texto;
}

[[noreturn]] void nao_cabe(std::string_view coluna, const Variante& valor) {
    throw Falha("O valor «" + escrito(valor) + "» não cabe na coluna " + std::string(coluna) + ".",
                startup::numeros_bd::valor_truncado);
}

[[noreturn]] void nao_serve(std::string_view coluna, const Variante& valor, const char* pedido) {
    throw Falha("O valor «" + escrito(valor) + "» não é " + pedido + " (coluna " + std::string(coluna) + ").",
                base::numeros_falha::tipo_diferente);
}

Moeda numero(std::string_view coluna, const Variante& valor) {
    try {
        return valor.moeda();
    } catch (const Falha& falha) {
        if (falha.numero() == base::numeros_falha::valor_excessivo) nao_cabe(coluna, valor);
        nao_serve(coluna, valor, "um número");
    }
}

Variante inteiro(const TipoSQL& tipo, std::string_view coluna, const Variante& valor) {
    const std::int64_t lido = numero(coluna, valor).arredondada(0).decimos_milesimos() / Moeda::unidade;
    if (lido > tipo.maximo || lido < -tipo.maximo - 1) nao_cabe(coluna, valor);
    return lido;
}

Variante decimal(const TipoSQL& tipo, std::string_view coluna, const Variante& valor) {
    const Moeda lido = numero(coluna, valor);
    if (!base::cabe_numa_coluna(lido)) nao_cabe(coluna, valor);
    return lido.arredondada(tipo.casas);
}

// Only the forms the ledger is written with: a text whose reading depends on a language is refused.
DataHora data_canonica(std::string_view coluna, const Variante& valor) {
    if (const auto* data = std::get_if<DataHora>(&valor.valor()); data != nullptr && data->valida())
        return *data;
    if (const auto* texto = std::get_if<std::string>(&valor.valor()))
        if (const auto data = DataHora::le(*texto);
            data && (*texto == data->data_iso() || *texto == data->data_hora_iso()))
            return *data;
    nao_serve(coluna, valor, "uma data");
}

Variante data(const TipoSQL& tipo, std::string_view coluna, const Variante& valor) {
    const DataHora lida = data_canonica(coluna, valor);
    if (tipo.familia == Familia::data) return DataHora{lida.ano, lida.mes, lida.dia};
    if (lida.ano < base::primeiro_ano_do_servidor) nao_cabe(coluna, valor);
    return lida;
}

Variante texto(const TipoSQL& tipo, std::string_view coluna, const Variante& valor) {
    std::string lido = valor.texto();
    if (tipo.comprimento > 0 && base::excede(lido, tipo.comprimento)) nao_cabe(coluna, valor);
    return lido;
}

// The whole numbers in a declared type's parentheses.
struct Dimensoes {
    int primeira = 0;
    int segunda = 0;
};

Dimensoes le_dimensoes(std::string_view declarado) {
    Dimensoes dimensoes;
    const std::size_t abre = declarado.find('(');
    if (abre == std::string_view::npos) return dimensoes;
    const char* const fim = declarado.data() + declarado.size();
    const char* lido = std::from_chars(declarado.data() + abre + 1, fim, dimensoes.primeira).ptr;
    while (lido != fim && (*lido == ',' || *lido == ' '))
        ++lido;
    std::from_chars(lido, fim, dimensoes.segunda);
    return dimensoes;
}

} // namespace

TipoSQL TipoSQL::le(std::string_view declarado) {
    const std::string nome = base::maiusculas(base::apara(declarado.substr(0, declarado.find('('))));
    const Dimensoes dimensoes = le_dimensoes(declarado);
    TipoSQL tipo;
    if (nome == "SMALLINT") {
        tipo = {Familia::inteiro, std::numeric_limits<std::int16_t>::max()};
    } else if (nome == "INT" || nome == "INTEGER") {
        tipo = {Familia::inteiro, std::numeric_limits<std::int32_t>::max()};
    } else if (nome == "MONEY") {
        tipo = {Familia::decimal, 0, Moeda::casas};
    } else if (nome == "DECIMAL") {
        tipo = {Familia::decimal, 0, dimensoes.segunda < Moeda::casas ? dimensoes.segunda : Moeda::casas};
    } else if (nome == "DATE") {
        tipo = {Familia::data};
    } else if (nome == "DATETIME") {
        tipo = {Familia::data_hora};
    } else if (nome == "NVARCHAR") {
        tipo = {Familia::texto, 0, 0, static_cast<std::size_t>(dimensoes.primeira)};
    }
    return tipo;
}

Variante normaliza(const TipoSQL& tipo, std::string_view coluna, const Variante& valor) {
    if (valor.nulo()) return valor;
    if (const auto* lido = std::get_if<std::string>(&valor.valor());
        lido != nullptr && !base::texto_valido(*lido))
        throw Falha("O valor para a coluna " + std::string(coluna) + " tem caracteres que não são de texto.",
                    base::numeros_falha::tipo_diferente);
    switch (tipo.familia) {
    case Familia::inteiro:
        return inteiro(tipo, coluna, valor);
    case Familia::decimal:
        return decimal(tipo, coluna, valor);
    case Familia::data:
    case Familia::data_hora:
        return data(tipo, coluna, valor);
    case Familia::texto:
        return texto(tipo, coluna, valor);
    case Familia::expressao:
        break;
    }
    return valor;
}

Variante le_celula(const TipoSQL& tipo, const Celula& celula) {
    if (const auto* lido = std::get_if<std::int64_t>(&celula))
        return tipo.familia == Familia::decimal ? Variante(Moeda::de_inteiro(*lido)) : Variante(*lido);
    if (const auto* lido = std::get_if<double>(&celula))
        return tipo.familia == Familia::decimal ? Variante(Moeda::de_real(*lido)) : Variante(*lido);
    if (const auto* lido = std::get_if<std::string_view>(&celula)) {
        if (tipo.familia == Familia::data || tipo.familia == Familia::data_hora)
            if (const auto data = DataHora::le(*lido)) return *data;
        if (tipo.familia == Familia::decimal)
            if (const auto moeda = Moeda::le(*lido)) return *moeda;
        return *lido;
    }
    return {};
}

} // namespace orvex::platform::registos
