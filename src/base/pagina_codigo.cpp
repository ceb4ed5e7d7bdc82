#include "base/pagina_codigo.h"

#include "base/texto.h"

#include <array>

namespace orvex::base {
namespace {

// The letters and signs of 0x80 to 0x9F; the five unused places keep their own code.
constexpr std::array<char16_t, 32> altos{0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                         0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                         0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                         0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

} // namespace

std::string texto_de_ficheiro(std::string_view bytes) {
    constexpr std::string_view marca = "\xEF\xBB\xBF";
    if (bytes.starts_with(marca)) bytes.remove_prefix(marca.size());
    if (utf8_valido(bytes)) return std::string(bytes);

    std::string texto;
    texto.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        const auto b = static_cast<unsigned char>(byte);
        acrescenta_caracter(texto, b >= 0x80 && b < 0xA0 ? altos[b - 0x80U] : b);
    }
    return texto;
}

} // namespace orvex::base
