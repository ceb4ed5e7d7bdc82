#include "base/ordem.h"

#include "base/dobrado.h"

#include <algorithm>
#include <tuple>

namespace orvex::base {
namespace {

bool e_algarismo(char c) { return c >= '0' && c <= '9'; }

// Each number loses its zeros in front and gets its length there: a longer one is a larger one.
std::string com_numeros_medidos(const std::string& texto) {
    constexpr std::ptrdiff_t maior_medida = '~' - '0';
    std::string medido;
    for (auto i = texto.begin(); i != texto.end();) {
        if (!e_algarismo(*i)) {
            medido += *i++;
            continue;
        }
        const auto fim = std::find_if_not(i, texto.end(), e_algarismo);
        i = std::find_if(i, fim, [](char c) { return c != '0'; });
        medido += static_cast<char>('0' + std::min(fim - i, maior_medida));
        medido.append(i, fim);
        i = fim;
    }
    return medido;
}

} // namespace

bool e_numero(const Variante& valor) {
    return std::holds_alternative<std::int64_t>(valor.valor()) ||
           std::holds_alternative<double>(valor.valor()) || std::holds_alternative<Moeda>(valor.valor());
}

ChaveOrdem::ChaveOrdem(const Variante& valor) {
    if (valor.nulo()) return;
    if (e_numero(valor)) {
        grupo_ = 1;
        numero_ = valor.real();
        return;
    }
    const auto* data = std::get_if<DataHora>(&valor.valor());
    const auto lida = data != nullptr ? *data : DataHora::le(valor.texto()); // dates are kept as text too
    grupo_ = lida ? 2 : 3;
    texto_ = lida ? lida->data_hora_iso() : com_numeros_medidos(dobrado(valor.texto()));
}

bool ChaveOrdem::operator<(const ChaveOrdem& outra) const {
    return std::tie(grupo_, numero_, texto_) < std::tie(outra.grupo_, outra.numero_, outra.texto_);
}

} // namespace orvex::base
