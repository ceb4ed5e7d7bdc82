// The parameters file: document types, series, warehouses and the client that stands for ORVEX.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace orvex::startup {

inline constexpr const char* ficheiro_parametros = "xel_Parametros_ORVEX.xel";

// The value of a key, split at ",". Elements count from 0; one that is missing throws Falha naming the key.
struct ListaParametros {
    std::string chave;
    std::vector<std::string> elementos;

    const std::string& operator[](std::size_t indice) const;
    std::int16_t serie(std::size_t indice) const; // throws Falha when the element is no 16-bit number
};

class Parametros {
  public:
    explicit Parametros(std::filesystem::path pasta) : ficheiro_(std::move(pasta) / ficheiro_parametros) {}

    // The value of the first line that starts with the key and "="; the empty text when there is none. Reads
    // the file anew on every call and throws Falha when it cannot be opened.
    std::string LerParametros(const std::string& Texto) const;

    ListaParametros lista(const std::string& chave) const;
    // Of a value whose groups may also be separated by ";".
    ListaParametros lista_de_grupos(const std::string& chave) const;

  private:
    std::filesystem::path ficheiro_;
};

} // namespace orvex::startup
