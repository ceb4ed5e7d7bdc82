// The whole run of a program that looks whether something of an installation is right.
#pragma once

#include "base/descricao.h"
#include "platform/consola/consola.h"
#include "tools/comum/instalacao_pedida.h"

#include <iostream>
#include <span>

namespace orvex {

enum Fim { tudo_certo = 0, nao_viu = 1, ha_defeitos = 2 };

// `le_argumentos` gives what was asked for on the command line, among it `ajuda` and the installation's
// `pasta`; `corre` gives how it ended. What either throws is said, and `nada_feito` behind it.
template <typename LeArgumentos, typename Corre>
int exame_da_instalacao(int argc, char** argv, const LeArgumentos& le_argumentos, const std::string& uso,
                        const Corre& corre, const char* nada_feito) {
    const platform::consola::Consola consola;
    const auto argumentos = base::linha_de_comando(argc, argv);
    try {
        const auto opcoes = le_argumentos(std::span(argumentos).subspan(1));
        if (!opcoes.ajuda) return corre(opcoes, instalacao_pedida(opcoes.pasta, argumentos[0]));
        std::cout << uso << "\n";
        return tudo_certo;
    } catch (const std::exception& falha) {
        std::cerr << base::descricao(falha) << "\n" << nada_feito << "\n";
        return nao_viu;
    }
}

} // namespace orvex
