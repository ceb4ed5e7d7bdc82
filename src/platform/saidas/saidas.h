// A view as text: for the eye, for spreadsheets and for programs. Each is written as its rows come.
#pragma once

#include "livro/consultas/quadro.h"

#include <iosfwd>
#include <memory>

namespace orvex::platform::saidas {

// Tables whose columns stand under one another, with the regional decimal sign.
std::unique_ptr<livro::consultas::Destino> texto(std::ostream& saida);

// As Portuguese spreadsheets read it: ";" between cells, decimal comma, dates dd-mm-yyyy, a byte-order mark.
// Without totals, which a sum over the column would count again. A view of one table is headings and rows; of
// several, each stands under its title, with an empty line between. What a spreadsheet would take for
// something else (a code of digits, a text that begins like a formula) is written as the text it is.
std::unique_ptr<livro::consultas::Destino> csv(std::ostream& saida);

// For the clipboard, without totals too: cells with tabs between, and tables in which texts are said to be
// texts and numbers numbers, whole once it is destroyed. What would begin another cell or row is a blank.
std::unique_ptr<livro::consultas::Destino> tabulado(std::ostream& saida);
std::unique_ptr<livro::consultas::Destino> html(std::ostream& saida);

// {"vista", "titulo", "filtros", "quadros": [{"quadro", "titulo", "colunas", "linhas", "totais"}]}; rows are
// objects by the columns' keys, dates yyyy-mm-dd, weights numbers in tonnes. Whole once it is destroyed.
std::unique_ptr<livro::consultas::Destino> json(std::ostream& saida);

// A cell as a person reads it: weights with three decimals, dates without a time.
std::string escrito(const livro::consultas::Coluna& coluna, const base::Variante& valor);
std::string numa_linha(std::string texto); // what a terminal would obey is shown as blanks

} // namespace orvex::platform::saidas
