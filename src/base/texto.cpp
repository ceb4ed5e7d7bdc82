#include "base/texto.h"

#include <algorithm>
#include <charconv>

namespace orvex::base {
namespace {

constexpr char32_t primeiro_suplementar = 0x10000;

std::size_t unidades_de(char32_t c) { return c >= primeiro_suplementar ? 2 : 1; }

bool simples(char c) { return static_cast<unsigned char>(c) < 0x80; }

// The well-formed character of several bytes that the text starts with; its size is 0 when there is none.
struct Caracter {
    char32_t codigo = 0;
    std::size_t bytes = 0;
};

Caracter primeiro_composto(std::string_view texto) {
    const auto byte = [&texto](std::size_t i) { return static_cast<unsigned char>(texto[i]); };
    const unsigned char primeiro = byte(0);
    const std::size_t bytes = primeiro < 0xC0 ? 0 : primeiro < 0xE0 ? 2 : primeiro < 0xF0 ? 3 : 4;
    if (bytes == 0 || primeiro >= 0xF8 || bytes > texto.size()) return {};
    char32_t codigo = primeiro & (0xFFU >> (bytes + 1));
    for (std::size_t i = 1; i < bytes; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) return {};
        codigo = (codigo << 6U) | (byte(i) & 0x3FU);
    }
    constexpr char32_t minimos[] = {0, 0, 0x80, 0x800, primeiro_suplementar};
    const bool meio_par = codigo >= 0xD800 && codigo < 0xE000;
    if (codigo < minimos[bytes] || codigo > 0x10FFFF || meio_par) return {};
    return {codigo, bytes};
}

// Takes whole characters off the text while they fit into so many units; one that does not fit is taken too
// when `excede`.
void salta(std::string_view& texto, std::size_t unidades, bool excede) {
    while (!texto.empty() && unidades > 0) {
        std::string_view resto = texto;
        const std::size_t deste = unidades_de(retira_caracter(resto));
        if (deste > unidades && !excede) return;
        texto = resto;
        unidades -= std::min(deste, unidades);
    }
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
    while (!texto.empty())
        total += unidades_de(retira_caracter(texto));
    return total;
}

// No character has more units than bytes.
bool excede(std::string_view texto, std::size_t unidades) {
    return texto.size() > unidades && comprimento(texto) > unidades;
}

std::string primeiros(std::string_view texto, std::size_t unidades) {
    std::string_view resto = texto;
    salta(resto, unidades, false);
    return std::string(texto.substr(0, texto.size() - resto.size()));
}

std::string ultimos(std::string_view texto, std::size_t unidades) {
    const std::size_t total = comprimento(texto);
    if (total > unidades) salta(texto, total - unidades, true);
    return std::string(texto);
}

std::string a_partir_de(std::string_view texto, std::size_t posicao) {
    if (posicao > 1) salta(texto, posicao - 1, true);
    return std::string(texto);
}

bool utf8_valido(std::string_view texto) {
    for (std::size_t i = 0; i < texto.size();) {
        const std::size_t bytes = simples(texto[i]) ? 1 : primeiro_composto(texto.substr(i)).bytes;
        if (bytes == 0) return false;
        i += bytes;
    }
    return true;
}

bool texto_valido(std::string_view texto) {
    return texto.find('\0') == std::string_view::npos && utf8_valido(texto);
}

std::string_view apara(std::string_view texto) {
    const std::size_t inicio = texto.find_first_not_of(' ');
    if (inicio == std::string_view::npos) return {};
    return texto.substr(inicio, texto.find_last_not_of(' ') - inicio + 1);
}

char32_t retira_caracter(std::string_view& texto) {
    const char byte = texto.front();
    const Caracter primeiro = simples(byte) ? Caracter{} : primeiro_composto(texto);
    texto.remove_prefix(primeiro.bytes > 0 ? primeiro.bytes : 1);
    return primeiro.bytes > 0 ? primeiro.codigo : static_cast<unsigned char>(byte);
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
