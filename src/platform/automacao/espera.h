// How the thread that called the ERP waits for it, while the call runs on the thread that the ERP's objects
// live on.
//
// Without Windows and without a toolkit: the windows give a session their way of waiting, and neither knows
// the other.
#pragma once

#include <chrono>
#include <functional>

namespace orvex::platform::automacao {

// Waits at most that long for the call, and says whether it is done. Once it is, says so at once.
using Acabou = std::function<bool(std::chrono::milliseconds)>;

// Called once for each call, on the thread that made it. Returns when the call is done, whether it succeeded
// or failed, and throws nothing: what the call refers to lives on the waiting thread's stack.
using Espera = std::function<void(const Acabou& acabou)>;

} // namespace orvex::platform::automacao
