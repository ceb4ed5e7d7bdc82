#include "base/formato_regional.h"

#include "base/texto.h"

#include <algorithm>

namespace orvex::base {
namespace {

// The blanks that programs group digits with, and put around them, are all one.
std::string com_um_so_branco(std::string_view texto) {
    constexpr char32_t sem_quebra = 0xA0, fino = 0x2009, fino_sem_quebra = 0x202F;
    std::string resultado;
    while (!texto.empty()) {
        const char32_t c = retira_caracter(texto);
        const bool branco = c == sem_quebra || c == fino || c == fino_sem_quebra;
        acrescenta_caracter(resultado, branco ? U' ' : c);
    }
    return resultado;
}

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

std::string FormatoRegional::peso_inteiro(Moeda valor) const {
    std::string texto = peso(valor);
    const std::size_t sinal = texto.starts_with('-') ? 1 : 0;
    if (texto[sinal] == decimal) texto.insert(sinal, 1, '0');
    return texto;
}

std::optional<Moeda> FormatoRegional::le(std::string_view texto) const {
    const std::string escrito = com_um_so_branco(texto);
    texto = apara(escrito);
    std::string numero;
    if (!texto.empty() && (texto.front() == '-' || texto.front() == '+')) {
        numero = texto.front();
        texto.remove_prefix(1);
    }
    const std::size_t ultimo = texto.find_last_of(",.");
    if (ultimo != std::string_view::npos && texto.find(texto[ultimo]) != ultimo) return std::nullopt;

    std::string inteiros(texto.substr(0, ultimo));
    const char sinal = ultimo != std::string_view::npos && texto[ultimo] == '.' ? ',' : '.';
    for (const char agrupa : {' ', sinal})
        if (inteiros.find(agrupa) != std::string::npos) {
            if (!bem_agrupado(inteiros, agrupa)) return std::nullopt;
            std::erase(inteiros, agrupa);
        }
    numero += inteiros;
    if (ultimo != std::string_view::npos) numero += "." + std::string(texto.substr(ultimo + 1));
    const auto lido = Moeda::le(numero);
    return lido && cabe_numa_coluna(*lido) ? lido : std::nullopt;
}

} // namespace orvex::base
