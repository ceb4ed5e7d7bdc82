// The engine's errors as the failures the rules know, with a text for the user and the engine's own after it.
#pragma once

#include "base/falha.h"

#include <SQLiteCpp/Exception.h>

namespace orvex::platform::sqlite {

base::Falha falha_de(const SQLite::Exception& erro);

// Runs a procedure that works on the engine; whatever it throws of the engine comes out as a Falha.
template <typename Procedimento>
decltype(auto) com_falhas(Procedimento procedimento) {
    try {
        return procedimento();
    } catch (const SQLite::Exception& erro) {
        throw falha_de(erro);
    }
}

} // namespace orvex::platform::sqlite
