// The engine's errors as the failures the rules know, with a text for the user and the engine's own after it.
#pragma once

#include "base/falha.h"

#include <SQLiteCpp/Exception.h>

#include <chrono>
#include <thread>

namespace orvex::platform::sqlite {

base::Falha falha_de(const SQLite::Exception& erro);

// Another program is at work: a lock of its own, its recovery of a log, its change of the schema.
bool passageira(const SQLite::Exception& erro);

// Tries again, for as long as is waited for a lock, what meets another program at work. For what a failure
// leaves undone: not inside a transaction.
template <typename Procedimento>
decltype(auto) insiste(int espera_ms, Procedimento procedimento) {
    const auto limite = std::chrono::steady_clock::now() + std::chrono::milliseconds(espera_ms);
    for (;;) {
        try {
            return procedimento();
        } catch (const SQLite::Exception& erro) {
            if (!passageira(erro) || std::chrono::steady_clock::now() >= limite) throw;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

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
