#include "base/formato_regional.h"

#include "base/texto.h"

#include <algorithm>

namespace orvex::base {
namespace {

// Groups of exactly three digits after the first, which has one to three.
bool bem_agrupado(std::string_view inteiros, char sinal) {
    std::size_t desde_o_sinal = 0;
    bool houve_sinal = false;
    for (const char c : inteiros) {
        if (c != sinal) {
            ++desde_o_sinal;
            continue;
        }
        if (desde_o_sinal == 0 || desde_o_sinal > 3 || (houve_sinal && desde_o_sinal != 3)) return false;
        houve_sinal = true;
        desde_o_sinal = 0;
    }
    return desde_o_sinal == 3;
}

} // namespace

std::string FormatoRegional::texto(Moeda valor) const {
    std::string resultado = valor.texto();
    std::replace(resultado.begin(), resultado.end(), '.', decimal);
    return resultado;
}

std::string FormatoRegional::texto(const Variante& valor) const {
    if (const auto* data = std::get_if<DataHora>(&valor.valor())) return data->data();
    if (std::holds_alternative<double>(valor.valor()) || std::holds_alternative<Moeda>(valor.valor()))
        return texto(valor.moeda());
    return valor.texto();
}

std::string FormatoRegional::peso(Moeda valor) const {
    std::string digitos = valor.arredondada(3).texto();
    const bool negativo = digitos.front() == '-';
    if (negativo) digitos.erase(0, 1);
    const std::size_t ponto = digitos.find('.');
    std::string inteiros = digitos.substr(0, ponto);
    std::string fraccao = ponto == std::string::npos ? "" : digitos.substr(ponto + 1);
    fraccao.resize(3, '0');
    if (inteiros == "0") inteiros.clear();
    for (int i = static_cast<int>(inteiros.size()) - 3; i > 0; i -= 3)
        inteiros.insert(static_cast<std::size_t>(i), 1, grupo);
    return (negativo ? "-" : "") + inteiros + decimal + fraccao;
}

std::optional<Moeda> FormatoRegional::le(std::string_view texto) const {
    texto = apara(texto);
    std::string sinal;
    if (!texto.empty() && (texto.front() == '-' || texto.front() == '+')) {
        sinal = texto.front();
        texto.remove_prefix(1);
    }
    const std::size_t ultimo = texto.find_last_of(",.");
    if (ultimo == std::string_view::npos) return Moeda::le(sinal + std::string(texto));
    if (texto.find(texto[ultimo]) != ultimo) return std::nullopt;

    std::string inteiros(texto.substr(0, ultimo));
    const char outro = texto[ultimo] == ',' ? '.' : ',';
    if (inteiros.find(outro) != std::string::npos) {
        if (!bem_agrupado(inteiros, outro)) return std::nullopt;
        std::erase(inteiros, outro);
    }
    return Moeda::le(sinal + inteiros + "." + std::string(texto.substr(ultimo + 1)));
}

} // namespace orvex::base
