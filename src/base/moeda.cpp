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

// Divides rounding half away from zero; the divisor is positive.
std::int64_t divide_arredondando(std::int64_t valor, std::int64_t divisor) {
    const std::int64_t quociente = valor / divisor;
    const std::int64_t resto = valor % divisor;
    if (resto >= divisor - resto) return quociente + 1;
    if (-resto >= divisor + resto) return quociente - 1;
    return quociente;
}

} // namespace

Moeda Moeda::de_inteiro(std::int64_t valor) {
    std::int64_t escalado = 0;
    if (__builtin_mul_overflow(valor, unidade, &escalado)) excede();
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
        if (__builtin_mul_overflow(valor, 10, &valor) || __builtin_sub_overflow(valor, c - '0', &valor))
            return std::nullopt;
        if (decimais >= 0) ++decimais;
    }
    if (!digitos) return std::nullopt;
    // Summed as a negative number, whose range is one wider.
    for (int i = decimais < 0 ? 0 : decimais; i < casas; ++i)
        if (__builtin_mul_overflow(valor, 10, &valor)) return std::nullopt;
    if (sobe && __builtin_sub_overflow(valor, 1, &valor)) return std::nullopt;
    if (!negativo && __builtin_sub_overflow(0, valor, &valor)) return std::nullopt;
    return Moeda(valor);
}

Moeda Moeda::absoluta() const { return valor_ < 0 ? -*this : *this; }

Moeda Moeda::arredondada(int casas_decimais) const {
    static constexpr std::array<std::int64_t, 5> divisores{10'000, 1'000, 100, 10, 1};
    const std::int64_t divisor = divisores.at(static_cast<std::size_t>(casas_decimais));
    std::int64_t valor = 0;
    if (__builtin_mul_overflow(divide_arredondando(valor_, divisor), divisor, &valor)) excede();
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
    std::int64_t soma = 0;
    if (__builtin_add_overflow(a.valor_, b.valor_, &soma)) excede();
    return Moeda(soma);
}

Moeda operator-(Moeda a, Moeda b) {
    std::int64_t diferenca = 0;
    if (__builtin_sub_overflow(a.valor_, b.valor_, &diferenca)) excede();
    return Moeda(diferenca);
}

} // namespace orvex::base
