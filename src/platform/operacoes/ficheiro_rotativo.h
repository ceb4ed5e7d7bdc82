// A file that several programs add lines to at once, and a few older ones beside it: operacoes.log,
// operacoes.1.log, ..., the last the oldest. Nothing here waits for another program or loses its lines.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace orvex::platform::operacoes {

class FicheiroRotativo {
  public:
    static constexpr int ficheiros = 5;              // this one and its older ones
    static constexpr std::uintmax_t maior = 1 << 20; // bytes

    explicit FicheiroRotativo(std::filesystem::path pasta) : pasta_(std::move(pasta)) {}

    std::filesystem::path caminho(int quantos_antes = 0) const; // 0 is the one being written

    // Adds a line. Empty, or why it was not written.
    std::string escreve(const std::string& linha);

    // Why no line could be written, asked without writing one; empty when it could.
    std::string defeito() const;

  private:
    void roda(std::size_t bytes);

    std::filesystem::path pasta_;
};

} // namespace orvex::platform::operacoes
