// Makes a ready installation for training, tests and benchmarks: settings, parameters and an embedded company
// with clients, articles, stock, open invoice lines and issued delivery notes, all in agreement with one
// another.
//
// The options decide every row: the same seed on the same day makes the same company.
#pragma once

#include "base/datahora.h"

#include <cstdint>
#include <filesystem>

namespace orvex::demo {

struct OpcoesEmpresa {
    std::filesystem::path pasta; // of the installation; must be empty or not exist yet
    std::int64_t clientes = 40;  // besides ORVEX itself
    std::int64_t artigos = 300;
    std::int64_t linhas = 600; // open invoice lines
    std::uint64_t semente = 1;
    std::int64_t linhas_primeiro_cliente = 12; // of `linhas`, those of the first client
    base::DataHora hoje;                       // decides the current year
};

// Codes of the company made.
inline constexpr const char* pasta_empresa = "Empresa"; // inside the installation
inline constexpr const char* codigo_empresa = "ORVEX";
inline constexpr const char* utilizador = "demo"; // without a password
inline constexpr const char* cliente_orvex = "ORVEX";
inline constexpr const char* armazem_orvex = "A1";
inline constexpr const char* armazem_clientes = "A2";
inline constexpr int guias_emitidas = 11; // of the current year, when there are lines enough

// Throws Falha when the folder is not empty, an option makes no sense or something cannot be written; what
// was made by then is removed.
void faz_empresa(const OpcoesEmpresa& opcoes);

// The code of a client (from 1), wide enough for them all.
std::string codigo_cliente(std::int64_t numero, const OpcoesEmpresa& opcoes);

} // namespace orvex::demo
