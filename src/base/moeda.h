// Fixed-point decimal with 4 decimals: quantities, weights (tonnes) and prices.
//
// Held as a whole number of ten-thousandths in 64 bits, so 1.15 - 1.00 is exactly 0.15. Every operation that
// leaves the range throws Falha (valor_excessivo) instead of wrapping. Rounding is half away from zero, as
// the database server rounds.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvex::base {

class Moeda {
  public:
    static constexpr int casas = 4;
    static constexpr std::int64_t unidade = 10'000;

    constexpr Moeda() = default;

    static constexpr Moeda de_decimos_milesimos(std::int64_t valor) { return Moeda(valor); }
    static Moeda de_inteiro(std::int64_t valor);
    static Moeda de_real(double valor);

    // Reads plain decimal text ("-12.5", sign optional, no grouping); nothing else, so no surprises in SQL.
    // Digits beyond the fourth decimal are rounded. Empty when the text is no number or does not fit.
    static std::optional<Moeda> le(std::string_view texto);

    constexpr std::int64_t decimos_milesimos() const { return valor_; }
    double real() const { return static_cast<double>(valor_) / unidade; }
    Moeda absoluta() const;
    Moeda arredondada(int casas_decimais) const; // 0 to 4 decimals

    // Plain decimal text with a point and no trailing zeros: what SQL texts and files carry.
    std::string texto() const;

    Moeda operator-() const;
    friend Moeda operator+(Moeda a, Moeda b);
    friend Moeda operator-(Moeda a, Moeda b);
    Moeda& operator+=(Moeda outra) { return *this = *this + outra; }
    Moeda& operator-=(Moeda outra) { return *this = *this - outra; }
    friend constexpr auto operator<=>(Moeda, Moeda) = default;

  private:
    explicit constexpr Moeda(std::int64_t valor) : valor_(valor) {}
    std::int64_t valor_ = 0;
};

// From here on a weight or a price is refused, whichever its sign, on every engine: the embedded company
// stores decimals in a double, which keeps four of them up to here.
inline constexpr Moeda magnitude_recusada = Moeda::de_decimos_milesimos(900'000'000'000 * Moeda::unidade);
constexpr bool cabe_numa_coluna(Moeda valor) {
    return valor < magnitude_recusada &&
           valor > Moeda::de_decimos_milesimos(-magnitude_recusada.decimos_milesimos());
}

} // namespace orvex::base
