// The movement lines (xel_ORVEX_Mov) and the gross weights of the ERP's lines (U_DocGcLin1).
//
// Every line of an ERP document that moved items is a row. `QtdOrig` is its quantity, `Qtd` what is still
// open of it: what later notes have not taken. `Origem` names the line it was taken from. For example
//
//     FA/1/123, line 2   5 t, open 2.5   no origin               an invoice: this system only takes from it
//     GR/1/7, line 3     2.5 t           2019/FA/1/123/2/00000   a note that took 2.5 t of that line
//     GV/1/2, line 1     2.5 t           2019/GR/1/7/3/00000     the return of the note's line
//
// Weights are tonnes. A null weight is one that nobody knows: it stays null, whatever is taken or given back.
//
// All that writes runs inside a confirmation, and all that guards it is asked there too, once the transaction
// has the ledger's lock (SessaoBD::Tranca): whoever comes second waits, and sees what the first one wrote.
// Nothing here keeps a record set, so none stands open while the ERP works or the user is asked.
#pragma once

#include "base/moeda.h"
#include "livro/chaves.h"
#include "startup/sessao_erp.h"

#include <optional>
#include <string>
#include <vector>

namespace orvex::livro {

struct Pesos {
    base::Moeda Qtd;
    base::Moeda Liquido;
    base::Moeda Bruto;
};

// Taking from an open line and giving back to it. A line that is not there is passed over. Taking more than
// is still open throws FalhaGuarda: somebody else sent it since it was listed, and sent twice its weight
// would be lost.
void retira(startup::SessaoBD& BD, const ChaveLinha& origem, const Pesos& pesos);
void repoe(startup::SessaoBD& BD, const ChaveLinha& origem, const Pesos& pesos);

// A row to be added. What is open of it at first is its quantity.
struct LinhaMovimento {
    startup::ChaveDocumento Documento;
    std::int32_t NumLinha = 0;
    base::DataHora Data; // the column keeps the day
    std::string Artigo;
    std::string Cliente;
    std::optional<std::string> Descritivo;
    base::Moeda Quantidade;
    std::string Origem;
    std::optional<base::Moeda> PesoLiquido;
    std::optional<base::Moeda> PesoBruto;
};
void acrescenta_movimento(startup::SessaoBD& BD, const LinhaMovimento& linha);

// The gross weight of a line of the ERP.
void acrescenta_peso_bruto(startup::SessaoBD& BD, const startup::ChaveDocumento& documento,
                           std::int32_t NumLinha, base::Moeda peso);
// Zero where none is known.
base::Moeda peso_bruto(startup::SessaoBD& BD, const startup::ChaveDocumento& documento,
                       const std::string& NumLinha);

// A line of an ERP document just made, as the ERP shows it. Its lines of text are left out.
struct LinhaERP {
    startup::ChaveDocumento Documento;
    std::int32_t NumLinha = 0;
    std::string Artigo;
    std::optional<std::string> Descr;
    base::Moeda Quant;
};
std::vector<LinhaERP> linhas_no_erp(startup::SessaoBD& BD, const Documento& documento);
// As the ERP marks it; False for a document that it does not know.
bool anulado_no_erp(startup::SessaoBD& BD, const Documento& documento);

// A row of a note, read back.
struct MovimentoLido {
    ChaveLinha chave;
    std::string Artigo;
    Pesos pesos; // nulls count as nothing
    std::string Origem;

    // Throws FalhaGuarda where the column holds something else.
    std::optional<ChaveLinha> origem() const { return le_origem(Origem, chave); }
};
// The note's rows. Cancelling it and taking its items back ask the same in texts that differ in their blanks.
std::vector<MovimentoLido> linhas_a_anular(startup::SessaoBD& BD, const Documento& guia);
std::vector<MovimentoLido> linhas_a_devolver(startup::SessaoBD& BD, const Documento& guia);
// The note's rows of both tables.
void apaga_linhas(startup::SessaoBD& BD, const Documento& guia);
// Takes a note that is cancelled in the ERP out of the ledger: what its lines took is given back to where it
// came from, and its rows go. Throws FalhaGuarda when a return of type `TpDocDevolucao` brought one of its
// lines back.
void retira_guia(startup::SessaoBD& BD, const Documento& guia, const std::string& TpDocDevolucao);
// The same of a return: what it gave back to the lines that the note had taken from is taken from them again.
// Throws FalhaGuarda when a later note has sent it meanwhile.
void retira_devolucao(startup::SessaoBD& BD, const Documento& devolucao);

// What these ask, for a step that announces it: `linha` for what is taken from it or given back.
namespace perguntas {
std::string linha(const ChaveLinha& linha);
std::string peso_bruto(const startup::ChaveDocumento& documento, const std::string& NumLinha);
std::string linhas_no_erp(const Documento& documento);
std::string devolvida_pelo_cliente(const std::string& Cliente, const std::string& TpDoc,
                                   const std::string& Artigo);
std::string devolvida(const std::string& TpDoc, const ChaveLinha& linha);
} // namespace perguntas

// Whether a line of a note came back, by the returns of type `TpDoc`: those that name this client and
// article, which is how the user is told of it beforehand; or any, which is the guard, since the ledger may
// say that it came back from somebody else. The guard is asked after the source lines were written.
bool devolvida_pelo_cliente(startup::SessaoBD& BD, const std::string& Cliente, const std::string& TpDoc,
                            const std::string& Artigo, const ChaveLinha& linha);
bool devolvida(startup::SessaoBD& BD, const std::string& TpDoc, const ChaveLinha& linha);

} // namespace orvex::livro
