#include "platform/odbc/texto_largo.h"

#include "base/texto.h"

namespace orvex::platform::odbc {
namespace {

constexpr char32_t primeiro_suplementar = 0x10000;
constexpr char32_t primeiro_alto = 0xD800;
constexpr char32_t primeiro_baixo = 0xDC00;
constexpr char32_t fim_dos_pares = 0xE000;
constexpr char32_t metade = 0x3FF;
constexpr char32_t substituto = 0xFFFD;

} // namespace

TextoLargo largo(std::string_view texto) {
    TextoLargo resultado;
    resultado.reserve(texto.size() + 1);
    while (!texto.empty()) {
        const char32_t c = base::retira_caracter(texto);
        if (c < primeiro_suplementar) {
            resultado.push_back(static_cast<SQLWCHAR>(c));
        } else {
            const char32_t resto = c - primeiro_suplementar;
            resultado.push_back(static_cast<SQLWCHAR>(primeiro_alto + (resto >> 10)));
            resultado.push_back(static_cast<SQLWCHAR>(primeiro_baixo + (resto & metade)));
        }
    }
    resultado.push_back(0);
    return resultado;
}

std::string estreito(const SQLWCHAR* texto, std::size_t unidades) {
    std::string resultado;
    resultado.reserve(unidades);
    for (std::size_t i = 0; i < unidades; ++i) {
        char32_t c = texto[i];
        const bool alto = c >= primeiro_alto && c < primeiro_baixo;
        if (alto && i + 1 < unidades && texto[i + 1] >= primeiro_baixo && texto[i + 1] < fim_dos_pares)
            c = primeiro_suplementar + ((c & metade) << 10) + (texto[++i] & metade);
        else if (c >= primeiro_alto && c < fim_dos_pares)
            c = substituto; // half of a pair is no text
        base::acrescenta_caracter(resultado, c);
    }
    return resultado;
}

} // namespace orvex::platform::odbc
