// What the log asks of the operating system.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

namespace orvex::platform::operacoes {

// The user's folder for what programs keep of their past: $XDG_STATE_HOME/orvex or ~/.local/state/orvex; on
// Windows %LOCALAPPDATA%\orvex. Empty where the system names none.
std::filesystem::path pasta_do_registo();

std::string utilizador_da_maquina();
std::string nome_da_maquina();
long numero_do_processo();

// Adds the bytes to the end of the file in one write, whoever else adds to it; makes it, for the user alone,
// where there is none. Waits for nobody.
std::error_code acrescenta(const std::filesystem::path& ficheiro, const std::string& bytes);

// Whether it could, asked without writing. The file or its folders need not exist.
std::error_code pode_acrescentar(const std::filesystem::path& ficheiro);

// One program's turn, for as long as this lives. Waits for nobody either.
class Vez {
  public:
    explicit Vez(const std::filesystem::path& ficheiro);
    ~Vez();
    Vez(const Vez&) = delete;
    Vez& operator=(const Vez&) = delete;

    bool minha() const { return aberto_ != nenhum; }

  private:
    static constexpr std::intptr_t nenhum = -1;
    std::intptr_t aberto_ = nenhum;
};

} // namespace orvex::platform::operacoes
