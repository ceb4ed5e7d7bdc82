#include "platform/operacoes/linha.h"

#include "base/texto.h"
#include "platform/operacoes/sistema.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <chrono>
#include <cstdio>
#include <ctime>

namespace orvex::platform::operacoes {
namespace {

constexpr std::size_t segredo_curto = 4;
constexpr const char* no_lugar = "***";

// Local time with its distance from UTC. One thread writes the log.
std::string agora() {
    using namespace std::chrono;
    const auto momento = system_clock::now();
    const std::time_t segundos = system_clock::to_time_t(momento);
    const auto milesimos = duration_cast<milliseconds>(momento.time_since_epoch()).count() % 1000;
    const std::tm local = *std::localtime(&segundos); // NOLINT(concurrency-mt-unsafe)
    std::tm universal = *std::gmtime(&segundos);      // NOLINT(concurrency-mt-unsafe)
    universal.tm_isdst = local.tm_isdst;
    const int minutos = static_cast<int>(std::difftime(segundos, std::mktime(&universal))) / 60;
    std::array<char, 80> texto{};
    std::snprintf(texto.data(), texto.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%03d%c%02d:%02d",
                  local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                  local.tm_sec, static_cast<int>(milesimos), minutos < 0 ? '-' : '+', std::abs(minutos) / 60,
                  std::abs(minutos) % 60);
    return texto.data();
}

// Nothing in it ends the line or the value. Bytes that are no text become letters.
std::string com_escapes(std::string_view valor) {
    std::string texto;
    while (!valor.empty()) {
        const char32_t c = base::retira_caracter(valor);
        const bool de_controlo = c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
        if (c == '\n') {
            texto += "\\n";
        } else if (c == '\r') {
            texto += "\\r";
        } else if (de_controlo) {
            std::array<char, 8> codigo{};
            std::snprintf(codigo.data(), codigo.size(), "\\u%04x", static_cast<unsigned>(c));
            texto += codigo.data();
        } else {
            if (c == '"' || c == '\\') texto += '\\';
            base::acrescenta_caracter(texto, c);
        }
    }
    return texto;
}

bool de_palavra(std::string_view texto, std::size_t posicao) {
    const auto c = static_cast<unsigned char>(posicao < texto.size() ? texto[posicao] : ' ');
    return std::isalnum(c) != 0 || c >= 0x80;
}

} // namespace

void Segredos::junta(const std::string& segredo) {
    if (segredo.empty()) return;
    std::string dobrado; // as it stands in a connection text
    for (const char c : segredo)
        dobrado += c == '}' ? "}}" : std::string(1, c);
    for (const std::string& este : {dobrado, segredo})
        if (std::find(segredos_.begin(), segredos_.end(), este) == segredos_.end()) segredos_.push_back(este);
    // One may begin another.
    std::sort(segredos_.begin(), segredos_.end(),
              [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
}

std::string Segredos::tira_de(std::string texto) const {
    for (const std::string& segredo : segredos_)
        for (std::size_t i = texto.find(segredo); i != std::string::npos; i = texto.find(segredo, i)) {
            const bool dentro_de_outra =
                segredo.size() < segredo_curto &&
                ((i > 0 && de_palavra(texto, i - 1)) || de_palavra(texto, i + segredo.size()));
            if (!dentro_de_outra) texto.replace(i, segredo.size(), no_lugar);
            i += dentro_de_outra ? 1 : std::string_view(no_lugar).size();
        }
    return texto;
}

Linha::Linha(const char* acontecimento, const Segredos& segredos)
    : segredos_(segredos),
      texto_(agora() + " [" + std::to_string(numero_do_processo()) + "] " + acontecimento) {}

Linha& Linha::com(const char* nome, std::string_view valor) {
    if (!valor.empty()) texto_ += " " + std::string(nome) + "=\"" + com_escapes(valor) + "\"";
    return *this;
}

Linha& Linha::com_texto(const char* nome, std::string_view valor) {
    const std::string mostrado = segredos_.tira_de(std::string(valor));
    const std::string cortado = base::primeiros(mostrado, texto_maximo);
    return com(nome, cortado.size() < mostrado.size() ? cortado + "…" : cortado);
}

} // namespace orvex::platform::operacoes
