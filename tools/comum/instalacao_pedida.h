// The installation that a program was told of on its command line, or the one that it lies in.
#pragma once

#include "base/caminho.h"
#include "base/falha.h"
#include "startup/ficheiro.h"
#include "startup/instalacao.h"

namespace orvex {

// Throws Falha for what is no folder.
inline startup::PastasInstalacao instalacao_pedida(const std::filesystem::path& pedida,
                                                   const std::string& chamado) {
    const auto pasta = pedida.empty()
                           ? startup::pasta_da_instalacao(base::caminho_do_programa(chamado).parent_path())
                           : pedida;
    if (const std::string defeito = startup::defeito_da_pasta(pasta); !defeito.empty())
        throw base::Falha("«" + base::texto_de(pasta) + "» " + defeito + ".");
    return startup::PastasInstalacao::de(base::caminho_completo(pasta));
}

} // namespace orvex
