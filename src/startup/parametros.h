// The parameters file: document types, series, warehouses and the client that stands for ORVEX.
#pragma once

#include "base/falha.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace orvex::startup {

inline constexpr const char* ficheiro_parametros = "xel_Parametros_ORVEX.xel";

// A key whose value lacks an element, or has text where a number is needed: a matter of the file, not of what
// the user was doing.
class FalhaParametro : public base::Falha {
  public:
    using base::Falha::Falha;
};

// The value of a key, split at ",". Elements count from 0; one that is missing throws FalhaParametro naming
// the key.
struct ListaParametros {
    std::string chave;
    std::vector<std::string> elementos;

    const std::string& operator[](std::size_t indice) const;
    std::int16_t serie(std::size_t indice) const; // throws FalhaParametro when it is no 16-bit number
};

inline constexpr std::size_t tamanho_grupo = 3;

class Parametros {
  public:
    explicit Parametros(const std::filesystem::path& pasta) : ficheiro_(pasta / ficheiro_parametros) {}

    // The value of the first line that starts with the key and "="; the empty text when there is none. Reads
    // the file anew on every call and throws Falha when it cannot be opened.
    std::string LerParametros(const std::string& Texto) const;

    ListaParametros lista(const std::string& chave) const;
    // Of groups of three (type, series, a third value that may be empty), which ";" may separate too. A
    // separator after the last whole group begins no other.
    ListaParametros lista_de_grupos(const std::string& chave) const;

  private:
    std::filesystem::path ficheiro_;
};

} // namespace orvex::startup
