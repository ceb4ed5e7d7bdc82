// A value whose type is known only when it runs: a database field, a grid cell, a member of an ERP object.
//
// Conversions follow the rules of the record sets: a null has no number and no date (Falha, valor_nulo) and
// reads as the empty text; a text is a number only when it is plain decimal text (Falha, tipo_diferente,
// otherwise).
#pragma once

#include "base/datahora.h"
#include "base/moeda.h"

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace orvex::base {

// How a true flag is written where it is a number or a text, by the ERP and the record sets alike; a false
// one is 0.
inline constexpr std::int16_t verdadeiro = -1;

class Variante {
  public:
    using Valor = std::variant<std::monostate, bool, std::int64_t, double, Moeda, DataHora, std::string>;

    Variante() = default; // null
    Variante(bool valor) : valor_(valor) {}
    template <std::integral Inteiro>
    requires(!std::same_as<Inteiro, bool>) Variante(Inteiro valor)
        : valor_(static_cast<std::int64_t>(valor)) {}
    Variante(double valor) : valor_(valor) {}
    Variante(Moeda valor) : valor_(valor) {}
    Variante(const DataHora& valor) : valor_(valor) {}
    Variante(std::string valor) : valor_(std::move(valor)) {}
    Variante(std::string_view valor) : valor_(std::string(valor)) {}
    Variante(const char* valor) : valor_(std::string(valor)) {}

    const Valor& valor() const { return valor_; }
    bool nulo() const { return std::holds_alternative<std::monostate>(valor_); }
    bool vazio() const; // null or the empty text

    std::string
    texto() const; // numbers as plain decimal text, dates as yyyy-mm-dd hh:mm:ss, flags as numbers
    std::int64_t inteiro() const;
    double real() const;
    Moeda moeda() const;
    DataHora data() const;
    bool logico() const; // any number but 0 is True

    friend bool operator==(const Variante&, const Variante&) = default;

  private:
    Valor valor_;
};

} // namespace orvex::base
