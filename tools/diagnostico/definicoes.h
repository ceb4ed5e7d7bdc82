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

// "utilizador orvex", or whose session of the system logs in.
std::string quem_entra(const startup::DefinicoesBD& definicoes);

// Names of the values that are empty: "Base, Utilizador".
struct Valor {
    const char* nome;
    const std::string& texto;
};
std::string em_falta(std::initializer_list<Valor> valores);

} // namespace orvex::diagnostico
