#include "base/dobrado.h"

namespace orvex::base {
namespace {

// Base letters of U+00C0 to U+00FF; "*" stands for itself.
constexpr std::string_view sem_acento = "aaaaaaaceeeeiiiidnooooo*ouuuuy*saaaaaaaceeeeiiiidnooooo*ouuuuy*y";

} // namespace

// The letters around "x" have two bytes in UTF-8: C3 and one of 80 to BF.
void dobra_em(std::string_view texto, std::string& destino) {
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const char c = texto[i];
        if (c >= 'A' && c <= 'Z') {
            destino += static_cast<char>(c - 'A' + 'a');
        } else if (static_cast<unsigned char>(c) == 0xC3 && i + 1 < texto.size()) {
            const auto segundo = static_cast<unsigned char>(texto[i + 1]);
            const char letra = segundo >= 0x80 && segundo < 0xC0 ? sem_acento[segundo - 0x80u] : '*';
            if (letra != '*') {
                destino += letra;
                ++i;
            } else {
                destino += c;
            }
        } else {
            destino += c;
        }
    }
}

std::string dobrado(std::string_view texto) {
    std::string resultado;
    resultado.reserve(texto.size());
    dobra_em(texto, resultado);
    return resultado;
}

} // namespace orvex::base
