// The company that an installation's settings name, opened to be read and nothing else.
#pragma once

#include "startup/definicoes.h"
#include "startup/instalacao.h"
#include "startup/sessao_bd.h"

#include <functional>
#include <memory>

namespace orvex {

struct EmpresaParaLer {
    startup::DefinicoesBD definicoes;
    std::string nome; // for people
    // A session of its own each time. Throws Falha when it does not open, also where the ledger was never
    // begun.
    std::function<std::unique_ptr<startup::SessaoBD>()> abre;
    // What the files of an embedded company look like; none for a server.
    std::function<std::string()> aspecto;
};

// Statements may take so many seconds on a server. Throws Falha when the settings cannot be used.
EmpresaParaLer empresa_para_ler(const startup::PastasInstalacao& pastas, int espera_da_instrucao);

// An embedded company that nobody has open is read as its files stand; if somebody opened it meanwhile, what
// was read may be neither the old nor the new, a failure of the reading too, and is read again. False when
// that happened each time.
template <typename Le>
bool le_em_repouso(const std::function<std::string()>& aspecto, const Le& le) {
    constexpr int vezes = 3;
    for (int vez = 1; vez <= vezes; ++vez) {
        const std::string antes = aspecto ? aspecto() : std::string();
        const auto vale = [&] {
            return !aspecto || antes.find("fechado") == std::string::npos || aspecto() == antes;
        };
        try {
            le();
        } catch (...) {
            if (vale()) throw;
            continue;
        }
        if (vale()) return true;
    }
    return false;
}

} // namespace orvex
