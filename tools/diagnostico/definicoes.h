// The part of the diagnosis about the settings file, and the catalogue that stands in for its [BD].
#pragma once

#include "diagnostico.h"

#include <optional>

namespace orvex::diagnostico {

struct Definicoes {
    std::filesystem::path ficheiro;
    std::optional<startup::DefinicoesBD> bd;   // none where they cannot be read, or are incomplete
    std::optional<startup::DefinicoesERP> erp; // none where they cannot be read
};
Definicoes verifica_definicoes(const startup::PastasInstalacao& pastas, Resultados& resultados);

// The programs read Windows-1252 and UTF-8; of UTF-16 they would find no key, and say that all are missing.
bool em_utf16(const std::filesystem::path& ficheiro);
inline constexpr const char* grave_de_novo =
    "está em UTF-16, que o programa não lê. Volte a gravá-lo como ANSI ou UTF-8.";

// Names of the values that are empty: "Base, Utilizador".
struct Valor {
    const char* nome;
    const std::string& texto;
};
std::string em_falta(std::initializer_list<Valor> valores);

} // namespace orvex::diagnostico
