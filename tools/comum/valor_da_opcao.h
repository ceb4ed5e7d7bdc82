// The options of a command line.
#pragma once

#include "base/falha.h"

#include <span>
#include <string>

namespace orvex {

// What stands behind the option at `i`, which then stands there too. Throws Falha where that is nothing.
inline const std::string& valor_da_opcao(std::span<const std::string> argumentos, std::size_t& i) {
    const std::string& opcao = argumentos[i];
    if (i + 1 == argumentos.size() || argumentos[i + 1].empty())
        throw base::Falha("A opção " + opcao + " precisa de um valor.");
    return argumentos[++i];
}

} // namespace orvex
