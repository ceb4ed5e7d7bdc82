// Where the journals of a company are: the one place that the program, the diagnosis and the auditor ask.
#pragma once

#include "base/caminho.h"
#include "platform/diario/gaveta.h"
#include "platform/operacoes/sistema.h"
#include "startup/definicoes.h"

namespace orvex::app {

// In the folder that the settings name, which must be there, or else in the user's own. Where there is
// neither it can be neither read nor written.
inline platform::diario::Gaveta gaveta_da_empresa(const startup::DefinicoesBD& definicoes) {
    const auto nomeada = base::caminho_de(definicoes.diario);
    const auto do_utilizador = platform::operacoes::pasta_do_registo();
    if (nomeada.empty() && do_utilizador.empty()) return platform::diario::Gaveta({});
    return platform::diario::Gaveta(
        platform::diario::pasta_da_empresa(nomeada.empty() ? do_utilizador / "diario" : nomeada,
                                           definicoes.servidor, definicoes.base,
                                           platform::operacoes::nome_da_maquina()),
        nomeada);
}

} // namespace orvex::app
