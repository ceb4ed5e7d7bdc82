// The open lines: movement lines of the invoices, named by the groups of FACTURAS, of which something was not
// yet sent (`Qtd` above 0). Notes draw on them, and an item that has some cannot be transferred.
//
// FACTURAS that has an incomplete group, or a series that is no number, throws FalhaParametro.
#pragma once

#include "livro/chaves.h"
#include "startup/parametros.h"

#include <functional>
#include <string>

namespace orvex::livro {

struct LinhaAberta {
    std::string documento;   // FA/1/123; a part that is null is left empty
    base::Variante NumLinha; // these as they are read, null too, and Data that is no date
    base::Variante Qtd;      // tonnes
    base::Variante QtdOrig;
    base::Variante PesoBruto;
    base::Variante Data;
    std::string Artigo;
    std::string Descritivo;
    std::string Unidade;
};

// Shows one after the other, in the order of the database, the open lines of a client whose goods lie in the
// warehouse by the ERP's line, and those whose key is broken, which nobody can ask the ERP about. For the
// eye: what a confirmation takes is read again there (retira). Asked every few hundred lines whether it goes
// on; False when it was told not to.
bool mostra_linhas_abertas(startup::SessaoBD& BD, const std::string& Cliente, const std::string& Armazem,
                           const startup::ParametroGrupos& FACTURAS,
                           const std::function<void(const LinhaAberta&)>& mostra,
                           const std::function<bool()>& prossegue);

// Copies gross weights that the ledger lacks from the ERP's lines. Outside transactions; what another
// workstation that lists the same client repairs meanwhile is passed over.
void repara_pesos(startup::SessaoBD& BD, const std::string& Cliente,
                  const startup::ParametroGrupos& FACTURAS);

// Asked when an item is indicated for a transfer, and again under the ledger's lock.
bool tem_linhas_abertas(startup::SessaoBD& BD, const std::string& Artigo,
                        const startup::ParametroGrupos& FACTURAS);

// That a movement line is open and its article in use, of the columns of xel_ORVEX_Mov and Artigos joined.
std::string esta_aberta(const startup::ParametroGrupos& FACTURAS);

// What it asks, for a step that announces it.
namespace perguntas {
std::string tem_linhas_abertas(const std::string& Artigo, const startup::ParametroGrupos& FACTURAS);
}

} // namespace orvex::livro
