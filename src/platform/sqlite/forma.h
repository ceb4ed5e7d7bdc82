// The shape of a statement: its text with the literals of the WHERE and SET clauses taken out. Statements of
// one shape share one translation and one prepared statement; the literals become its parameters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orvex::platform::sqlite {

inline constexpr char lugar_texto = '\x01';  // stands in a shape for a text taken out
inline constexpr char lugar_numero = '\x02'; // and for a number

// Kept from one statement to the next, so that reading a known shape allocates nothing.
class Forma {
  public:
    using Literal = std::variant<std::int64_t, double, std::string>;

    // Throws Falha (instrucao_errada) for a text that does not end.
    void le(std::string_view sql);

    const std::string& chave() const { return chave_; }
    std::size_t literais() const { return total_; }
    const Literal& literal(std::size_t indice) const { return literais_[indice]; }

  private:
    Literal& novo_literal();
    std::size_t le_texto(std::string_view sql, std::size_t inicio);
    std::size_t le_numero(std::string_view sql, std::size_t inicio);

    std::string chave_;
    std::vector<Literal> literais_;
    std::size_t total_ = 0;
};

} // namespace orvex::platform::sqlite
