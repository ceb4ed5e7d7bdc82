// A failure with the number the rules know it by: database and ERP numbers keep their own, 0 means none.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace orvex::base {

class Falha : public std::runtime_error {
  public:
    explicit Falha(const std::string& descricao, std::int32_t numero = 0)
        : std::runtime_error(descricao), numero_(numero) {}

    std::int32_t numero() const { return numero_; }

  private:
    std::int32_t numero_;
};

// A guard of the program's own refuses: what was decided on is no longer so, or cannot be carried out. Its
// text says nothing of any later failure, so it is shown and never kept.
class FalhaGuarda : public Falha {
  public:
    using Falha::Falha;
};

namespace numeros_falha {
inline constexpr std::int32_t sem_elemento = 9;    // a list is shorter than the element asked for
inline constexpr std::int32_t tipo_diferente = 13; // a value is not of the type asked for
inline constexpr std::int32_t valor_excessivo = 6; // a number does not fit its type
inline constexpr std::int32_t valor_nulo = 94;     // a null where a value is needed
} // namespace numeros_falha

} // namespace orvex::base
