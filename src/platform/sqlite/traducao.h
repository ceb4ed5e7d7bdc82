// The server's dialect, as far as the program speaks it, in the engine's. The language understood is:
//
//     SELECT [TOP n] items FROM t [[AS] a] {[INNER | LEFT [OUTER]] JOIN t ON condition} [WHERE condition]
//            [GROUP BY items] [ORDER BY items [ASC | DESC]]
//     DELETE [FROM] t [WHERE condition]
//     UPDATE t SET column = expression, ... [WHERE condition]
//     CREATE TABLE t (columns, CONSTRAINT name PRIMARY KEY ...) with the server's storage options
//     ALTER TABLE t ADD column, ...
//
// and in expressions: AND, OR, NOT, comparisons, IS [NOT] NULL, x IN (values) and x IN (SELECT ...), x LIKE
// pattern (%, _ and one letter in brackets), + and -, abs, count, max, min, sum, convert(nvarchar(n), x, 120)
// and cast(x as nvarchar(n)). Anything else is a faulty statement, here as there
// or at least here: better refused than understood differently.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvex::platform::sqlite {

struct Traducao {
    enum class Genero { consulta, alteracao, esquema };

    Genero genero = Genero::consulta;
    std::vector<std::string> instrucoes; // more than one only for a change of the schema: all or nothing
    std::string tabela;                  // of a query of plain columns of one table, which can be updated
};

// Joins two values as the server's + does: registered with the engine under this name, with two arguments.
inline constexpr const char* funcao_soma = "soma_servidor";

// The server's LIKE, with the text and the pattern as its arguments: without case, accented letters too.
inline constexpr const char* funcao_semelhante = "semelhante_servidor";
bool semelhante(std::string_view texto, std::string_view padrao);

// Where the rows of a table (a name in brackets) are added and deleted: Artigos is a view of the ERP's, whose
// file is `erp`.
std::string onde_se_escreve(const std::string& tabela);

// Translates a shape (Forma). Throws Falha (instrucao_errada).
Traducao traduz(std::string_view chave);

} // namespace orvex::platform::sqlite
