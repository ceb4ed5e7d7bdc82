// What a procedure fails with: its number and its text, none when it does not fail.
#pragma once

#include "base/falha.h"

#include <string>

namespace orvex::testes {

template <typename Procedimento>
base::Falha falha_de(Procedimento procedimento) {
    try {
        procedimento();
    } catch (const base::Falha& apanhada) {
        return apanhada;
    }
    return base::Falha("", 0);
}

template <typename Procedimento>
std::int32_t numero_da_falha(Procedimento procedimento) {
    return falha_de(procedimento).numero();
}

template <typename Procedimento>
std::string falha(Procedimento procedimento) {
    return falha_de(procedimento).what();
}

} // namespace orvex::testes
