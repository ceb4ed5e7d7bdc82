// A thread that runs calls, one at a time, for the one that waits for each.
#pragma once

#include "platform/espera/espera.h"

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace orvex::platform::espera {

class Linha {
  public:
    using Trabalho = std::function<void()>;

    explicit Linha(Espera espera);
    Linha(const Linha&) = delete;
    Linha& operator=(const Linha&) = delete;
    ~Linha();

    // Runs the work there and returns when it is done; what it throws is thrown here. So it may refer to the
    // caller's values, whatever becomes of the waiting. Work that asks for more of it does that at once.
    void executa(Motivo motivo, const Trabalho& trabalho);

  private:
    void corre();

    Espera espera_;
    std::mutex tranca_; // guards what follows
    std::condition_variable mudou_;
    const Trabalho* trabalho_ = nullptr; // none when it is done
    std::exception_ptr falha_;
    bool fim_ = false;
    std::thread linha_;
};

} // namespace orvex::platform::espera
