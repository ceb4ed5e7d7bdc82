// A delivery note, or a return of its lines, as the screen shows it when it is confirmed: read once from
// fields and grid, and handed to what builds the ERP's document and to what writes the ledger, so that both
// say the same.
#pragma once

#include "base/datahora.h"
#include "base/formato_regional.h"
#include "base/moeda.h"
#include "confirmacao/observador.h"
#include "livro/chaves.h"

#include <string>
#include <vector>

namespace orvex::delivery {

struct LinhaGuia {
    std::string Artigo{}; // none in a line of text
    std::string Nome{};
    base::Moeda Quant{};     // tonnes
    base::Moeda PesoBruto{}; // tonnes
    bool sem_peso_original =
        false; // taken from a line that never had a quantity: it has no gross weight either
    std::string Unidade{};
    std::string Doc{};           // of a note: the document it is taken from, 2019/FA/1/123, and its date
    std::string Data{};          //
    std::string OutroDocMesmo{}; // of a note: the open line it takes from, 2019/FA/1/123/2
    std::string OutroDoc{};      // the ledger's `Origem`: the open line, or the note's line that comes back
    std::int64_t NumLinha = 0;   // of a return: the number of the note's line
};

struct CabecalhoGuia {
    bool devolucao = false;
    livro::Documento Documento{}; // its number is not known yet
    std::int16_t Serie = 0;
    std::string Sector{};
    base::DataHora Data{};
    std::string Cliente{};
    std::string NomeCliente{};
    std::string NumeroContribuinte{};
    std::string Processo{};
    std::string VossoNoDocumento{};
    std::string Vendedor{}; // the account manager: what the ERP's document takes for its vendor
    std::string MeiodeTransporte{};
    std::string Matricula{};
    std::string LocalCarga{};
    std::string LocalDescarga{};
    base::DataHora Carga{};
    base::DataHora Descarga{};
    std::string Armazem{};
    std::string Detentor{}; // who holds the items afterwards

    livro::Documento documento(std::int32_t numero) const {
        return {Documento.Ano, Documento.TpDoc, Documento.Serie, numero};
    }
};

struct Guia {
    CabecalhoGuia cab{};
    std::vector<LinhaGuia> linhas{}; // text lines too, in the grid's order

    std::string texto(const base::FormatoRegional& formato) const; // "C0013, 3 linhas, 4,685 t"

    // What is about to be confirmed: the creation of this note or return, or the cancellation of the note
    // with this number.
    confirmacao::Intencao intencao() const;
    confirmacao::Intencao intencao_de_anular(std::int32_t numero) const;
};

} // namespace orvex::delivery
