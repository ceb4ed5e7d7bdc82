// What a procedure fails with: its number and its text, none when it does not fail.
#pragma once

#include "base/falha.h"

#include <string>

namespace orvex::testes {

base::Falha falha_de(const auto& procedimento) {
    try {
        procedimento();
    } catch (const base::Falha& apanhada) {
        return apanhada;
    }
    return base::Falha("", 0);
}

std::int32_t numero_da_falha(const auto& procedimento) { return falha_de(procedimento).numero(); }

std::string falha(const auto& procedimento) { return falha_de(procedimento).what(); }

} // namespace orvex::testes
