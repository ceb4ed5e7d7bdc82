// How long the component stays: while there is an object of it, or somebody holds on to it without one.
#pragma once

#include <atomic>
#include <functional>

namespace orvex::componente {

class Vida {
  public:
    // What each object and each lock holds.
    Vida() { ++posses_; }
    Vida(const Vida&) : Vida() {}
    Vida& operator=(const Vida&) = default;
    ~Vida() {
        if (--posses_ == 0 && ao_acabar) ao_acabar();
    }

    static bool usada() { return posses_ > 0; }

    // When the last one goes; set before there is any.
    inline static std::function<void()> ao_acabar;

  private:
    inline static std::atomic<long> posses_ = 0;
};

} // namespace orvex::componente
