// How the thread that asked for something waits for it, while the call runs elsewhere: the server's answer,
// the ERP's.
//
// Without a toolkit: the windows give a session their way of waiting, and neither knows the other.
#pragma once

#include <chrono>
#include <functional>

namespace orvex::platform::espera {

// What is waited for.
enum class Motivo {
    servidor, // the database
    posto,    // another workstation, which has what is asked for
    erp,
};

// Waits at most that long for the call, and says whether it is done. Once it is, says so at once.
using Acabou = std::function<bool(std::chrono::milliseconds)>;

// Called once for each call, on the thread that made it. Returns when the call is done, whether it succeeded
// or failed, and throws nothing: what the call refers to lives on the waiting thread's stack. Nothing of the
// rules may run inside.
using Espera = std::function<void(Motivo motivo, const Acabou& acabou)>;

inline void so_espera(Motivo /*motivo*/, const Acabou& acabou) {
    while (!acabou(std::chrono::seconds(1)))
        continue;
}

// Of work that goes on on the very thread that would wait: a moment of it, over as soon as it is waited for.
inline bool so_um_momento(std::chrono::milliseconds limite) { return limite.count() > 0; }

} // namespace orvex::platform::espera
