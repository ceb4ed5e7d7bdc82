// How long the component stays: while there is an object of it, or somebody holds on to it without one.
#pragma once

#include <atomic>
#include <functional>

namespace orvex::componente {

class Vida {
  public:
    // What each object holds.
    Vida() { ++posses_; }
    Vida(const Vida&) : Vida() {}
    Vida& operator=(const Vida&) = default;
    ~Vida() { larga(); }

    static bool usada() { return posses_ > 0; }

    // Of the whole component, whoever it was asked of; one too many opens nothing.
    static void tranca() {
        ++posses_;
        ++trancas_;
    }
    static void destranca() {
        long havia = trancas_;
        while (havia > 0 && !trancas_.compare_exchange_weak(havia, havia - 1))
            continue;
        if (havia > 0) larga();
    }

    // When the last one goes; set before there is any.
    inline static std::function<void()> ao_acabar;

  private:
    static void larga() {
        if (--posses_ == 0 && ao_acabar) ao_acabar();
    }

    inline static std::atomic<long> posses_ = 0, trancas_ = 0;
};

} // namespace orvex::componente
