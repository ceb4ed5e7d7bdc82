// What is read of the ERP's documents: statements, and the columns of what they give.
#pragma once

#include "livro/casa.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace orvex::auditoria {

using livro::Numeracao;

// The documents of a type and series with their lines and gross weights, as they are numbered; of a document
// without lines one row whose line is null.
namespace documento_lido {
enum Coluna : std::size_t {
    Ano,
    NNumDoc,
    NVias,
    Data,
    Terceiro,
    NumLinha,
    Artigo,
    Quant,
    Armazem,
    PesoBruto
};
} // namespace documento_lido
std::string documentos(const Numeracao& qual);
std::string documento(const Numeracao& qual, std::int64_t Ano, std::int64_t NNumDoc);

// The lines of every cancelled document.
namespace anulada_lida {
enum Coluna : std::size_t { TpDoc, Serie, Terceiro, Artigo, Armazem };
} // namespace anulada_lida
std::string linhas_anuladas();

} // namespace orvex::auditoria
