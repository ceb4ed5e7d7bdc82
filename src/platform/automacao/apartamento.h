// A thread with an apartment of its own, where objects of a component live and die. It handles the system's
// messages while nothing is to do, which such objects need.
#pragma once

#include "platform/automacao/com.h"
#include "platform/espera/espera.h"

#include <memory>
#include <thread>

namespace orvex::platform::automacao {

using espera::Espera;

class Apartamento {
  public:
    using Trabalho = std::function<void()>;

    Apartamento();
    Apartamento(const Apartamento&) = delete;
    Apartamento& operator=(const Apartamento&) = delete;
    ~Apartamento(); // lets what is waiting be done first

    // Runs there and waits for it, the way that `espera` does; what it throws is thrown here. When `espera`
    // itself fails or is impatient, what was begun still counts: the work refers to the caller's values.
    void executa(Trabalho trabalho, const Espera& espera);
    // Runs there some time, unless the thread ends before; throws nothing there.
    void entrega(Trabalho trabalho);
    // Runs there last of all; then the thread ends. False when that takes longer: the thread is left to
    // itself, so the work may refer to nothing that goes before the process.
    bool termina(Trabalho trabalho, std::chrono::milliseconds limite);

  private:
    struct Fila;
    static void corre(const std::shared_ptr<Fila>& fila);

    std::shared_ptr<Fila> fila_;
    std::thread linha_;
};

} // namespace orvex::platform::automacao
