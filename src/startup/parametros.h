// The parameters file: document types, series, warehouses and the client that stands for ORVEX.
#pragma once

#include "base/falha.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
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

// Keys by what their elements mean. Each is read when it is asked for, so that a list too short for one is
// refused only where that one is needed.

// An ERP document: type, series and a third value, which the ERP takes for the sector. "GR,1,S1"
struct ParametroDocumento : ListaParametros {
    static constexpr std::size_t tamanho = 3;

    ParametroDocumento() = default;
    ParametroDocumento(ListaParametros lista) : ListaParametros(std::move(lista)) {}

    const std::string& TpDoc() const { return (*this)[0]; }
    std::int16_t Serie() const { return serie(1); }
    const std::string& SerieEscrita() const { return (*this)[1]; } // which statements and keys repeat
    const std::string& Sector() const { return (*this)[2]; }
    bool completo() const { return elementos.size() >= tamanho; }
};

// A warehouse: code and label. "A1,Clientes"
struct ParametroArmazem : ListaParametros {
    static constexpr std::size_t tamanho = 2;

    ParametroArmazem() = default;
    ParametroArmazem(ListaParametros lista) : ListaParametros(std::move(lista)) {}

    const std::string& Codigo() const { return (*this)[0]; }
    const std::string& Nome() const { return (*this)[1]; }
    bool completo() const { return elementos.size() >= tamanho; }
};

// A client: the code.
struct ParametroCliente : ListaParametros {
    static constexpr std::size_t tamanho = 1;

    ParametroCliente() = default;
    ParametroCliente(ListaParametros lista) : ListaParametros(std::move(lista)) {}

    const std::string& Codigo() const { return (*this)[0]; }
    bool completo() const { return elementos.size() >= tamanho; }
};

// Any number of types and series, at least one, each with a third value that nobody reads. "FA,1,x;FR,2,"
struct ParametroGrupos : ListaParametros {
    static constexpr std::size_t tamanho_grupo = 3;
    struct Grupo {
        std::string TpDoc;
        std::string SerieEscrita; // a 16-bit number; which statements repeat
    };

    ParametroGrupos() = default;
    ParametroGrupos(ListaParametros lista) : ListaParametros(std::move(lista)) {}

    bool completo() const { return !elementos.empty() && elementos.size() % tamanho_grupo == 0; }
    std::vector<Grupo> grupos() const; // throws FalhaParametro when one is incomplete, or there is none
};

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
