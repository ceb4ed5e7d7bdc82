// What is said to the user of a failure that may be anybody's.
#pragma once

#include "base/falha.h"

namespace orvex::base {

// A failure of ours speaks for itself; any other one stands behind words of ours.
inline std::string descricao(const std::exception& falha) {
    if (dynamic_cast<const Falha*>(&falha) != nullptr) return falha.what();
    return std::string("Ocorreu um erro inesperado (") + falha.what() + ").";
}

} // namespace orvex::base
