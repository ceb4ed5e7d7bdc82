#include "base/texto.h"

#include <algorithm>
#include <charconv>

namespace orvex::base {
namespace {

bool continua(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

// Byte offset of the character at the given position (from 0), or the end of the text.
std::size_t deslocamento(std::string_view texto, std::size_t posicao) {
    std::size_t i = 0;
    for (; i < texto.size(); ++i)
        if (!continua(texto[i]) && posicao-- == 0) break;
    return i;
}

} // namespace

void acrescenta_caracter(std::string& texto, char32_t c) {
    if (c < 0x80) {
        texto += static_cast<char>(c);
    } else if (c < 0x800) {
        texto += static_cast<char>(0xC0U | (c >> 6U));
        texto += static_cast<char>(0x80U | (c & 0x3FU));
    } else if (c < 0x10000) {
        texto += static_cast<char>(0xE0U | (c >> 12U));
        texto += static_cast<char>(0x80U | ((c >> 6U) & 0x3FU));
        texto += static_cast<char>(0x80U | (c & 0x3FU));
    } else {
        texto += static_cast<char>(0xF0U | (c >> 18U));
        texto += static_cast<char>(0x80U | ((c >> 12U) & 0x3FU));
        texto += static_cast<char>(0x80U | ((c >> 6U) & 0x3FU));
        texto += static_cast<char>(0x80U | (c & 0x3FU));
    }
}

std::vector<std::string> divide(std::string_view texto, char separador) {
    std::vector<std::string> elementos;
    if (texto.empty()) return elementos;
    std::size_t inicio = 0;
    for (std::size_t fim = texto.find(separador); fim != std::string_view::npos;
         fim = texto.find(separador, inicio)) {
        elementos.emplace_back(texto.substr(inicio, fim - inicio));
        inicio = fim + 1;
    }
    elementos.emplace_back(texto.substr(inicio));
    return elementos;
}

std::size_t comprimento(std::string_view texto) {
    std::size_t total = 0;
    for (const char c : texto)
        total += continua(c) ? 0 : 1;
    return total;
}

std::string primeiros(std::string_view texto, std::size_t caracteres) {
    return std::string(texto.substr(0, deslocamento(texto, caracteres)));
}

std::string ultimos(std::string_view texto, std::size_t caracteres) {
    const std::size_t total = comprimento(texto);
    return std::string(texto.substr(deslocamento(texto, total > caracteres ? total - caracteres : 0)));
}

std::string a_partir_de(std::string_view texto, std::size_t posicao) {
    return std::string(texto.substr(deslocamento(texto, posicao > 0 ? posicao - 1 : 0)));
}

std::string_view apara(std::string_view texto) {
    const std::size_t inicio = texto.find_first_not_of(' ');
    if (inicio == std::string_view::npos) return {};
    return texto.substr(inicio, texto.find_last_not_of(' ') - inicio + 1);
}

char32_t retira_caracter(std::string_view& texto) {
    const auto primeiro = static_cast<unsigned char>(texto.front());
    texto.remove_prefix(1);
    std::size_t seguintes = 0;
    char32_t c = primeiro;
    if (primeiro >= 0xF0) {
        seguintes = 3;
        c = primeiro & 0x07U;
    } else if (primeiro >= 0xE0) {
        seguintes = 2;
        c = primeiro & 0x0FU;
    } else if (primeiro >= 0xC0) {
        seguintes = 1;
        c = primeiro & 0x1FU;
    }
    for (; seguintes > 0 && !texto.empty() && continua(texto.front()); --seguintes) {
        c = (c << 6U) | (static_cast<unsigned char>(texto.front()) & 0x3FU);
        texto.remove_prefix(1);
    }
    return c;
}

char32_t maiuscula(char32_t c) {
    if (c >= U'a' && c <= U'z') return c - 32;
    if (c < 0xE0) return c;
    if (c <= 0xFE) return c == 0xF7 ? c : c - 32; // 0xF7 is the division sign
    switch (c) {
    case 0xFF:
        return 0x178; // y with diaeresis
    case 0x153:
        return 0x152; // oe
    case 0x161:
        return 0x160; // s with caron
    case 0x17E:
        return 0x17D; // z with caron
    default:
        return c;
    }
}

std::string maiusculas(std::string_view texto) {
    std::string resultado;
    resultado.reserve(texto.size());
    while (!texto.empty())
        acrescenta_caracter(resultado, maiuscula(retira_caracter(texto)));
    return resultado;
}

bool mesmo_nome(std::string_view a, std::string_view b) {
    const auto sem_caixa = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return sem_caixa(x) == sem_caixa(y); });
}

std::string entre_plicas(std::string_view valor) {
    std::string resultado = "'";
    for (const char c : valor) {
        if (c == '\'') resultado += '\'';
        resultado += c;
    }
    return resultado + "'";
}

std::optional<std::int64_t> le_inteiro(std::string_view texto) {
    texto = apara(texto);
    if (texto.starts_with('+') && !texto.starts_with("+-")) texto.remove_prefix(1);
    std::int64_t valor = 0;
    const auto [fim, erro] = std::from_chars(texto.data(), texto.data() + texto.size(), valor);
    if (erro != std::errc() || fim != texto.data() + texto.size() || texto.empty()) return std::nullopt;
    return valor;
}

} // namespace orvex::base
