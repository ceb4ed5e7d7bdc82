// Pseudo-random numbers that are the same on every machine (those of the standard distributions are not).
#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace orvex::demo {

class Sorteio {
  public:
    explicit Sorteio(std::uint64_t semente) : estado_(semente) {}

    std::uint64_t numero() {
        std::uint64_t z = (estado_ += 0x9E3779B97F4A7C15U);
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31U);
    }

    // Both ends included.
    std::int64_t entre(std::int64_t menor, std::int64_t maior) {
        return menor + static_cast<std::int64_t>(numero() % static_cast<std::uint64_t>(maior - menor + 1));
    }

    bool uma_em(std::int64_t vezes) { return entre(1, vezes) == 1; }

    template <typename Lista>
    const auto& de(const Lista& lista) {
        return lista[static_cast<std::size_t>(entre(0, static_cast<std::int64_t>(std::size(lista)) - 1))];
    }

    template <typename Tipo>
    void baralha(std::vector<Tipo>& lista) {
        for (std::size_t i = lista.size(); i > 1; --i)
            std::swap(lista[i - 1],
                      lista[static_cast<std::size_t>(entre(0, static_cast<std::int64_t>(i) - 1))]);
    }

  private:
    std::uint64_t estado_;
};

} // namespace orvex::demo
