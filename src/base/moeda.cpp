#include "base/moeda.h"

#include "base/falha.h"

#include <array>
#include <cmath>
#include <limits>

namespace orvex::base {
namespace {

[[noreturn]] void excede() {
    throw Falha("O valor excede o que um número decimal pode conter.", numeros_falha::valor_excessivo);
}

// Each leaves the result and is true, or is false when it does not fit. Sums are made in the unsigned type,
// which wraps: a sum that has the sign of neither term did.
bool soma(std::int64_t a, std::int64_t b, std::int64_t& resultado) {
    resultado = static_cast<std::int64_t>(static_cast<std::uint64_t>(a) + static_cast<std::uint64_t>(b));
    return ((a ^ resultado) & (b ^ resultado)) >= 0;
}

bool subtrai(std::int64_t a, std::int64_t b, std::int64_t& resultado) {
    resultado = static_cast<std::int64_t>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
    return ((a ^ b) & (a ^ resultado)) >= 0;
}

template <std::int64_t factor>
bool multiplica(std::int64_t a, std::int64_t& resultado) {
    constexpr auto maior = std::numeric_limits<std::int64_t>::max() / factor;
    if (a > maior || a < -maior) return false; // a power of two alone would reach the lowest value
    resultado = a * factor;
    return true;
}

} // namespace

Moeda Moeda::de_inteiro(std::int64_t valor) {
    std::int64_t escalado = 0;
    if (!multiplica<unidade>(valor, escalado)) excede();
    return Moeda(escalado);
}

Moeda Moeda::de_real(double valor) {
    const double escalado = std::round(valor * unidade);
    // 2^63 is exact as a double; anything at or beyond it would wrap.
    if (!(std::abs(escalado) < 9223372036854775808.0)) excede();
    return Moeda(static_cast<std::int64_t>(escalado));
}

std::optional<Moeda> Moeda::le(std::string_view texto) {
    bool negativo = false;
    if (!texto.empty() && (texto.front() == '-' || texto.front() == '+')) {
        negativo = texto.front() == '-';
        texto.remove_prefix(1);
    }
    std::int64_t valor = 0;
    int decimais = -1; // -1 before the point
    bool digitos = false;
    bool sobe = false;
    for (const char c : texto) {
        if (c == '.' && decimais < 0) {
            decimais = 0;
            continue;
        }
        if (c < '0' || c > '9') return std::nullopt;
        digitos = true;
        if (decimais >= casas) {
            if (decimais == casas) sobe = c >= '5';
            ++decimais;
            continue;
        }
        if (!multiplica<10>(valor, valor) || !subtrai(valor, c - '0', valor)) return std::nullopt;
        if (decimais >= 0) ++decimais;
    }
    if (!digitos) return std::nullopt;
    // Summed as a negative number, whose range is one wider.
    for (int i = decimais < 0 ? 0 : decimais; i < casas; ++i)
        if (!multiplica<10>(valor, valor)) return std::nullopt;
    if (sobe && !subtrai(valor, 1, valor)) return std::nullopt;
    if (!negativo && !subtrai(0, valor, valor)) return std::nullopt;
    return Moeda(valor);
}

Moeda Moeda::absoluta() const { return valor_ < 0 ? -*this : *this; }

Moeda Moeda::arredondada(int casas_decimais) const {
    static constexpr std::array<std::int64_t, 5> divisores{10'000, 1'000, 100, 10, 1};
    const std::int64_t divisor = divisores.at(static_cast<std::size_t>(casas_decimais));
    const std::int64_t resto = valor_ % divisor;
    std::int64_t valor = valor_ - resto;
    bool cabe = true;
    if (resto >= divisor - resto) cabe = soma(valor, divisor, valor);
    if (-resto >= divisor + resto) cabe = subtrai(valor, divisor, valor);
    if (!cabe) excede();
    return Moeda(valor);
}

std::string Moeda::texto() const {
    // Through the unsigned type, so that the lowest value has a magnitude too.
    const std::uint64_t magnitude =
        valor_ < 0 ? 0 - static_cast<std::uint64_t>(valor_) : static_cast<std::uint64_t>(valor_);
    std::string resultado = valor_ < 0 ? "-" : "";
    resultado += std::to_string(magnitude / unidade);
    if (const std::uint64_t fraccao = magnitude % unidade; fraccao != 0) {
        std::string digitos = std::to_string(fraccao);
        digitos.insert(0, casas - digitos.size(), '0');
        digitos.erase(digitos.find_last_not_of('0') + 1);
        resultado += "." + digitos;
    }
    return resultado;
}

Moeda Moeda::operator-() const { return Moeda() - *this; }

Moeda operator+(Moeda a, Moeda b) {
    std::int64_t resultado = 0;
    if (!soma(a.valor_, b.valor_, resultado)) excede();
    return Moeda(resultado);
}

Moeda operator-(Moeda a, Moeda b) {
    std::int64_t resultado = 0;
    if (!subtrai(a.valor_, b.valor_, resultado)) excede();
    return Moeda(resultado);
}

} // namespace orvex::base
