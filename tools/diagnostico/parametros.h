// The part of the diagnosis about the parameters file.
#pragma once

#include "diagnostico.h"
#include "startup/parametros.h"

namespace orvex::diagnostico {

inline constexpr std::size_t comprimento_tipo = 3; // of a document type, in the ERP and in the ledger

// One key of the parameters file, as the most demanding of the screens reads it.
struct ChaveExigida {
    const char* chave;
    std::size_t elementos; // in each group
    bool com_serie;        // a document type, and as second element its series, a number
    bool em_grupos;        // any number of groups, at least one
    const char* ecras;     // that read it
};
const std::vector<ChaveExigida>& chaves_exigidas();

startup::ListaParametros le(const startup::Parametros& parametros, const ChaveExigida& exigida);

// Whether the file could be read, whatever it holds.
bool verifica_parametros(const startup::Parametros& parametros, const std::filesystem::path& pasta,
                         Resultados& resultados);

} // namespace orvex::diagnostico
