// The check that no document of the ERP is ever forgotten.
#pragma once

#include "tests/apoio/empresa_teste.h"
#include "tests/apoio/tabela.h"

namespace orvex::testes {

// Documents in force that the ledger does not know and that no box named.
inline std::string documentos_perdidos(EmpresaTeste& empresa, const std::string& caixas) {
    std::string perdidos;
    for (const std::string& chave :
         partes(empresa.linhas("select TpDoc, Serie, NNumDoc, Ano from DocGcCab where NVias<>-1"), "; ")) {
        if (chave.empty()) continue;
        const auto p = partes(chave, "|");
        const std::string onde = " where TpDoc='" + p[0] + "' and Ano=" + p[3];
        // Where the failure was to read the number the ERP gave, the document is named without it.
        const auto nomeado = [&](const std::string& numero) {
            return caixas.find("\n\r'" + p[0] + "/" + p[1] + "/" + numero + "/" + p[3] + " '") !=
                   std::string::npos;
        };
        const auto ha = [&](const std::string& linhas) {
            return !empresa.linhas("select NumSerie from xel_ORVEX" + linhas).empty();
        };
        const bool na_guia = !empresa
                                  .linhas("select Artigo from xel_ORVEX_MOV" + onde +
                                          " and SerieDoc=" + p[1] + " and NumDoc=" + p[2])
                                  .empty();
        // A transfer's rows carry no number: they stand for the document that moved their item.
        if (!nomeado(p[2]) && !nomeado("0") && !na_guia &&
            !ha(onde + " and Serie=" + p[1] + " and NNumDoc=" + p[2]) &&
            !ha(" INNER JOIN DocGcLin ON Artigo=NumSerie where xel_ORVEX.NNumDoc=0 and TpDocum='" + p[0] +
                "' and DocGcLin.NNumDoc=" + p[2]))
            perdidos += chave + " ";
    }
    return perdidos;
}

} // namespace orvex::testes
