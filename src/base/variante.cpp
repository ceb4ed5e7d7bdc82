#include "base/variante.h"

#include "base/falha.h"
#include "base/texto.h"

#include <charconv>
#include <cmath>

namespace orvex::base {
namespace {

template <typename... Casos>
struct Segundo : Casos... {
    using Casos::operator()...;
};
template <typename... Casos>
Segundo(Casos...) -> Segundo<Casos...>;

[[noreturn]] void nulo_sem_valor() { throw Falha("Falta um valor (nulo).", numeros_falha::valor_nulo); }

[[noreturn]] void de_outro_tipo(const std::string& texto, const char* pedido) {
    throw Falha("«" + texto + "» não é " + pedido + ".", numeros_falha::tipo_diferente);
}

} // namespace

bool Variante::vazio() const {
    const auto* texto = std::get_if<std::string>(&valor_);
    return nulo() || (texto != nullptr && texto->empty());
}

std::string Variante::texto() const {
    return std::visit(Segundo{[](std::monostate) { return std::string(); },
                              [](bool valor) { return std::to_string(valor ? verdadeiro : 0); },
                              [](std::int64_t valor) { return std::to_string(valor); },
                              [](double valor) {
                                  char digitos[32];
                                  const auto fim =
                                      std::to_chars(digitos, digitos + sizeof digitos, valor).ptr;
                                  return std::string(digitos, fim);
                              },
                              [](Moeda valor) { return valor.texto(); },
                              [](const DataHora& valor) { return valor.data_hora_iso(); },
                              [](const std::string& valor) { return valor; }},
                      valor_);
}

std::int64_t Variante::inteiro() const {
    return std::visit(
        Segundo{[](std::monostate) -> std::int64_t { nulo_sem_valor(); },
                [](bool valor) -> std::int64_t { return valor ? verdadeiro : 0; },
                [](std::int64_t valor) { return valor; },
                [](double valor) -> std::int64_t {
                    return Moeda::de_real(valor).arredondada(0).decimos_milesimos() / Moeda::unidade;
                },
                [](Moeda valor) -> std::int64_t {
                    return valor.arredondada(0).decimos_milesimos() / Moeda::unidade;
                },
                [this](const DataHora&) -> std::int64_t { de_outro_tipo(texto(), "um número"); },
                [](const std::string& valor) -> std::int64_t {
                    if (const auto numero = le_inteiro(valor)) return *numero;
                    de_outro_tipo(valor, "um número inteiro");
                }},
        valor_);
}

Moeda Variante::moeda() const {
    return std::visit(Segundo{[](std::monostate) -> Moeda { nulo_sem_valor(); },
                              [](bool valor) { return Moeda::de_inteiro(valor ? verdadeiro : 0); },
                              [](std::int64_t valor) { return Moeda::de_inteiro(valor); },
                              [](double valor) { return Moeda::de_real(valor); },
                              [](Moeda valor) { return valor; },
                              [this](const DataHora&) -> Moeda { de_outro_tipo(texto(), "um número"); },
                              [](const std::string& valor) -> Moeda {
                                  if (const auto numero = Moeda::le(apara(valor))) return *numero;
                                  de_outro_tipo(valor, "um número");
                              }},
                      valor_);
}

double Variante::real() const {
    if (const auto* valor = std::get_if<double>(&valor_)) return *valor;
    return moeda().real();
}

DataHora Variante::data() const {
    if (nulo()) nulo_sem_valor();
    if (const auto* valor = std::get_if<DataHora>(&valor_)) return *valor;
    if (const auto* valor = std::get_if<std::string>(&valor_))
        if (const auto data = DataHora::le(*valor)) return *data;
    de_outro_tipo(texto(), "uma data");
}

bool Variante::logico() const {
    if (const auto* valor = std::get_if<bool>(&valor_)) return *valor;
    return moeda() != Moeda();
}

} // namespace orvex::base
