// The keys of the ledger's lines and documents as texts: the one place that builds, reads and refuses them.
//
// A line's key is its document's year, type, series and number and its own number: 2019/FA/1/123/2. The
// forms made of it:
//
//     2019/FA/1/123/2        the open line that a line of a note takes from
//     2019/FA/1/123/2/00000  the same in a column `Origem`: of a note's line the line it was taken from, of a
//                            return's line the line of the note that came back
//     2019/FA/1/123/2/00003  of a text line under it, in the grid's row 3
//     2019/FA/1/123          its document, by which the lines of a note are put together
//     FA/1/123               its document, as the user reads it
#pragma once

#include "base/datahora.h"
#include "startup/sessao_bd.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvex::livro {

// The parts stay as they were written, "01" too: statements repeat them to the letter.
struct ChaveLinha {
    std::string Ano;
    std::string TpDoc;
    std::string Serie;
    std::string NumDoc;
    std::string NumLinha;

    std::string texto() const;     // 2019/FA/1/123/2
    std::string origem() const;    // 2019/FA/1/123/2/00000
    std::string documento() const; // FA/1/123
};

// Nothing for what is no line's key, with or without five digits behind it: a part too many or too few, one
// that is no number, or a number that no key of the ledger can have. What was read may stand in a statement.
std::optional<ChaveLinha> le_chave(std::string_view texto);

// What a column `Origem` says, read back from the ledger's line `linha`. Nothing where it is null or empty:
// that line was taken from none. Throws FalhaGuarda, naming both, for any other text that is no key, because
// what is to be given back would be given back nowhere.
std::optional<ChaveLinha> le_origem(const std::string& Origem, const ChaveLinha& linha);

// Of a row of xel_ORVEX_Mov. Nothing where a part is null: the line cannot be found again. An empty part is
// one like any other.
std::optional<ChaveLinha> chave_propria(startup::ConjuntoRegistos& movimento);

// The forms as texts, made of texts: what a list shows may lack a part, and then makes a text that is no key.
std::string com_ano(std::string_view data, std::string_view documento); // "01-03-2019" -> 2019/FA/1/123
std::string sem_ano(std::string_view documento_com_ano);                // 2019/FA/1/123 -> FA/1/123
std::string com_linha(std::string_view documento_com_ano, std::string_view NumLinha); // -> 2019/FA/1/123/2
std::string com_sufixo(std::string_view chave, int numero);           // -> 2019/FA/1/123/2/00003
bool e_da_linha(std::string_view com_sufixo, std::string_view chave); // of that very line, whatever follows

// A document of this system, as statements name it.
struct Documento {
    int Ano = 0;
    std::string TpDoc;
    std::string Serie; // as the parameters file writes it, which statements and keys repeat
    std::int32_t Numero = 0;

    ChaveLinha linha(const std::string& NumLinha) const;
};

} // namespace orvex::livro
