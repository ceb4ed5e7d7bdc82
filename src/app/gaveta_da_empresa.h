// Where the journals of a company are: the one place that the program, the diagnosis and the auditor ask.
#pragma once

#include "base/caminho.h"
#include "platform/diario/gaveta.h"
#include "platform/operacoes/sistema.h"
#include "startup/definicoes.h"
#include "startup/instalacao.h"

namespace orvex::app {

// Where the settings name none: the machine's, if the installer made one that all its users may write in, so
// that each finds what another's program left; else the user's own.
inline std::filesystem::path pasta_dos_diarios() {
    std::error_code erro;
    const auto da_maquina = startup::pasta_da_maquina();
    if (!da_maquina.empty() && std::filesystem::is_directory(da_maquina / "diario", erro))
        return da_maquina / "diario";
    const auto do_utilizador = platform::operacoes::pasta_do_registo();
    return do_utilizador.empty() ? do_utilizador : do_utilizador / "diario";
}

// In the folder that the settings name, which must be there, or else where this machine keeps them. Where
// there is none it can be neither read nor written.
inline platform::diario::Gaveta gaveta_da_empresa(const startup::DefinicoesBD& definicoes) {
    const auto nomeada = base::caminho_de(definicoes.diario);
    const auto todas = nomeada.empty() ? pasta_dos_diarios() : nomeada;
    if (todas.empty()) return platform::diario::Gaveta({});
    const bool pasta = definicoes.servidor == startup::servidor_embebido;
    return platform::diario::Gaveta(
        platform::diario::pasta_da_empresa(todas, definicoes.servidor,
                                           pasta ? base::chave_do_caminho(base::caminho_de(definicoes.base))
                                                 : definicoes.base,
                                           platform::operacoes::nome_da_maquina()),
        nomeada);
}

} // namespace orvex::app
