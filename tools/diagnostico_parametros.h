// The part of the diagnosis about the parameters file.
#pragma once

#include "diagnostico.h"
#include "startup/parametros.h"

namespace orvex::diagnostico {

// One key of the parameters file, as the most demanding of the screens reads it.
struct ChaveExigida {
    const char* chave;
    std::size_t elementos; // in each group
    bool com_serie;        // the second element is a number
    bool em_grupos;        // any number of groups, at least one
    const char* ecras;     // that read it
};
const std::vector<ChaveExigida>& chaves_exigidas();

void verifica_parametros(const startup::Parametros& parametros, const std::filesystem::path& pasta,
                         Resultados& resultados);

} // namespace orvex::diagnostico
