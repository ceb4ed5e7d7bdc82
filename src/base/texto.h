// Small operations on UTF-8 text. Lengths and positions are UTF-16 units, as the server counts its columns: a
// character beyond the basic plane counts two, and is never cut in half.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::base {

// Splits at every separator; the empty text has no elements. Elements are taken as they stand, blanks
// included.
std::vector<std::string> divide(std::string_view texto, char separador);

std::size_t comprimento(std::string_view texto);
bool excede(std::string_view texto, std::size_t unidades);           // is longer than so many
std::string primeiros(std::string_view texto, std::size_t unidades); // so many at most
std::string ultimos(std::string_view texto, std::size_t unidades);
std::string a_partir_de(std::string_view texto, std::size_t posicao); // positions count from 1

// Well-formed: no overlong form, no half of a pair, nothing beyond the last code point.
bool utf8_valido(std::string_view texto);
// What may go into a statement or a column: well-formed, without the null character.
bool texto_valido(std::string_view texto);

std::string_view apara(std::string_view texto); // without blanks at either end

// Takes the first character off the text and gives its code point; a byte that starts no well-formed
// character stands for itself.
char32_t retira_caracter(std::string_view& texto);
void acrescenta_caracter(std::string& texto, char32_t caracter);
// The upper-case form of one letter of the system's 8-bit code page (accented ones too); any other as it is.
char32_t maiuscula(char32_t caracter);
std::string maiusculas(std::string_view texto);

// Names of columns and members: the same but for the case of their plain letters.
inline bool mesmo_nome(std::string_view a, std::string_view b) {
    const auto sem_caixa = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return x == y || sem_caixa(x) == sem_caixa(y); });
}

// The one place that turns a value into a quoted SQL text: apostrophes inside are doubled.
std::string entre_plicas(std::string_view valor);

// Whole number as written in fields and keys: digits with an optional sign, blanks around them ignored.
std::optional<std::int64_t> le_inteiro(std::string_view texto);

} // namespace orvex::base
