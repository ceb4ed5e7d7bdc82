// The ledger read whole, by programs that compare it with itself and with the ERP: statements, and the
// columns of what they give. Rows come once each, so that nothing has to be kept. Keys are numbers within one
// type and series: an order that is the same for every database, whatever its collation makes of texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace orvex::livro {

// Every movement line, in no order, with its article, client and gross weight as the ERP has them.
namespace movimento_lido {
enum Coluna : std::size_t {
    Ano,
    TpDoc,
    SerieDoc,
    NumDoc,
    NumLinha,
    Data,
    Artigo,
    Cliente,
    QtdOrig,
    Qtd,
    PesoLiquido,
    PesoBruto,
    Origem,
    ArtigoNoERP,
    ClienteNoERP,
    PesoBrutoNoERP
};
} // namespace movimento_lido
std::string movimentos();
// One of them.
std::string movimento(std::int64_t Ano, const std::string& TpDoc, std::int64_t SerieDoc, std::int64_t NumDoc,
                      std::int64_t NumLinha);

// The movement lines and the holder rows of the documents of a type and series, as the documents are
// numbered; holder rows without a number (transfers) are left out.
namespace linha_lida {
enum Coluna : std::size_t {
    Ano,
    Numero,
    Linha,
    Data,
    Artigo,
    Cliente,
    Quantidade,
    PesoBruto, // of movement lines
    Aberto,    //
    Registo = PesoBruto,
};
} // namespace linha_lida
std::string movimentos_dos_documentos(const std::string& TpDoc, std::int16_t Serie);
std::string detentores_dos_documentos(const std::string& TpDoc, std::int16_t Serie);

// Every holder row, item by item, oldest first, with the article (and its note and its stock in two
// warehouses) and the client as the ERP has them.
namespace detentor_lido {
enum Coluna : std::size_t {
    NumSerie,
    Registo,
    Cliente,
    CliFinal,
    Data,
    Quantidade,
    Ano,
    TpDoc,
    Serie,
    NNumDoc,
    ArtigoNoERP,
    ClienteNoERP,
    Observ,
    Existencia1,
    Existencia2
};
} // namespace detentor_lido
std::string historias(const std::string& armazem1, const std::string& armazem2);

} // namespace orvex::livro
