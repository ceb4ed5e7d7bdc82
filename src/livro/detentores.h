// The holder rows (xel_ORVEX): who holds an item, and through which documents it came and went.
//
// Every movement of an item into or out of a holder is a row, numbered by the database (`Registo`). The
// newest row of an item names its holder: the chain of rows is the item's history. Examples:
//
//     a note to a client    BOB1  C1     -2.5 t  GR/1/7, line 3
//     a surplus             BOB1  ORVEX   0.2 t  SB/1/12, line 1
//     a transfer to ORVEX   BOB1  C1     -5 t    QB/1, number 0   the exit, and then
//                           BOB1  ORVEX   5 t    SB/1, number 0   the entry: the holder from now on
//
// What is read to be written over (the newest row, a row that is replaced or cancelled) is read again inside
// the transaction, once it has the ledger's lock. Nothing here keeps a record set.
#pragma once

#include "base/datahora.h"
#include "base/moeda.h"
#include "startup/sessao_bd.h"
#include "startup/sessao_erp.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orvex::livro {

struct LinhaDetentor {
    std::string NumSerie; // the item
    std::string Cliente;  // the holder that the row concerns
    base::DataHora Data;
    base::Moeda Quantidade; // tonnes: positive into the holder, negative out of it
    std::string Obs;
    std::string CliFinal;
    startup::ChaveDocumento Documento; // number 0: the rows of a transfer do not carry one
    std::int32_t NumLin = 1;
};

// Adds a row, which becomes the item's newest. Inside a confirmation, under the ledger's lock.
void acrescenta_detentor(startup::SessaoBD& BD, const LinhaDetentor& linha);

struct UltimoMovimento {
    std::int64_t Registo = 0;
    std::string Cliente; // the holder
    std::string CliFinal;
};

// The newest row of an item, or nothing. A validation asks twice, before and after it looked at the article
// and the stock, and its second question is laid down in a text of its own.
std::optional<UltimoMovimento> ultimo_movimento(startup::SessaoBD& BD, const std::string& NumSerie);
std::optional<UltimoMovimento> ultimo_movimento_outra_vez(startup::SessaoBD& BD, const std::string& NumSerie);

// A row by its number, or nothing when it is no longer there. Throws FalhaGuarda, naming the column, when the
// row lacks what its document is known by: it can be neither loaded nor replaced nor cancelled. The text
// that loads and replaces an adjustment begins with a blank, that of cancelling one does not.
std::optional<LinhaDetentor> movimento(startup::SessaoBD& BD, std::int32_t Registo);
std::optional<LinhaDetentor> movimento_a_anular(startup::SessaoBD& BD, std::int32_t Registo);
// Under the ledger's lock.
void apaga_movimento(startup::SessaoBD& BD, std::int32_t Registo);

// What these ask, for a step that announces it.
namespace perguntas {
std::string ultimo_movimento(const std::string& NumSerie);
std::string ultimo_movimento_outra_vez(const std::string& NumSerie);
std::string movimento(std::int32_t Registo);
std::string movimento_a_anular(std::int32_t Registo);
} // namespace perguntas

// Statements of pick lists. Every item that ever had a row, wherever it is now, on the screen of adjustments
// and on that of transfers, whose texts differ in a blank.
std::string lista_de_artigos_a_ajustar();
std::string lista_de_artigos_a_transferir();
// The past adjustments of a type and series, newest first; the first column is date, number and `Registo`
// joined by "*".
std::string lista_de_ajustes(const std::string& TpDoc, std::int16_t Serie);

} // namespace orvex::livro
