// Requests of several statements. After each one a query of ours, its mark, tells its place, how many rows it
// was about and whether it failed: whatever triggers and drivers report in between is counted for nobody, and
// a failure is known even where a driver reports it as information.
#pragma once

#include "platform/odbc/falhas.h"
#include "platform/odbc/instrucao.h"

#include <optional>
#include <string>
#include <vector>

namespace orvex::platform::odbc {

// Once, at the head of a request: what is known of a statement is taken before anything else changes it.
inline constexpr const char* variaveis_das_marcas = "DECLARE @n int=0,@e int=0;\n";

// Directly after a statement.
std::string marca_de(std::size_t lugar);
// That the server has understood the request, and begins.
std::string marca_do_inicio(std::size_t lugar);

struct Marca {
    std::size_t lugar;
    std::int64_t linhas;
    std::optional<FalhaODBC> causa; // it failed
};

// None when the result on which the statement stands is no mark.
std::optional<Marca> le_marca(Instrucao& instrucao, const std::vector<registos::Coluna>& colunas);

} // namespace orvex::platform::odbc
