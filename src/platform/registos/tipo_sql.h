// The server's column types: what a column takes, what a value becomes on its way in, and how it is read
// back.
#pragma once

#include "base/variante.h"

#include <cstdint>
#include <string_view>
#include <variant>

namespace orvex::platform::registos {

// A stored value as the engine hands it out. A text is only seen, and lives as long as its row.
using Celula = std::variant<std::monostate, std::int64_t, double, std::string_view>;

struct TipoSQL {
    enum class Familia { expressao, inteiro, decimal, data, data_hora, texto };

    Familia familia = Familia::expressao; // no declared type: the stored value tells
    std::int64_t maximo = 0;              // inteiro: the largest value; the smallest is -maximo - 1
    int casas = 0;                        // decimal: decimals kept
    std::size_t comprimento = 0;          // texto: UTF-16 units, 0 for no limit

    static TipoSQL le(std::string_view declarado);
};

// The value as the column keeps it: rounded half away from zero, dates in their one form. Throws Falha,
// naming the column, valor_truncado for a text too long or a number out of range and tipo_diferente for a
// value of the wrong type, or a text that is not one.
base::Variante normaliza(const TipoSQL& tipo, std::string_view coluna, const base::Variante& valor);

base::Variante le_celula(const TipoSQL& tipo, const Celula& celula);

} // namespace orvex::platform::registos
