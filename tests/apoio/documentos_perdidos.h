// The checks that no document of the ERP is ever forgotten, and no row of the ledger left without its
// document.
#pragma once

#include "tests/apoio/empresa_teste.h"

namespace orvex::testes {

// Documents in force that the ledger does not know and that no box named: of the confirmation that failed, or
// of the recovery.
inline std::string documentos_perdidos(EmpresaTeste& empresa, const std::string& caixas) {
    std::string perdidos;
    for (const std::string& chave :
         partes(empresa.linhas("select TpDoc, Serie, NNumDoc, Ano from DocGcCab where NVias<>-1"), "; ")) {
        const auto p = partes(chave, "|");
        const std::string onde = " where TpDoc='" + p[0] + "' and Ano=" + p[3];
        // Where the failure was to read the number the ERP gave, the document is named without it.
        const bool nomeado =
            caixas.find("\n\r'" + p[0] + "/" + p[1] + "/" + p[2] + "/" + p[3] + " '") != std::string::npos ||
            caixas.find("o documento " + p[0] + "/" + p[1] + " de " + p[3] + " (") != std::string::npos ||
            caixas.find("em vigor o documento " + p[0] + "/" + p[1] + "/" + p[2] + "/" + p[3] + ",") !=
                std::string::npos;
        // A transfer's rows carry no number: they stand for the document that moved their item.
        const std::string no_livro =
            empresa.linhas("select Artigo from xel_ORVEX_MOV" + onde + " and SerieDoc=" + p[1] +
                           " and NumDoc=" + p[2]) +
            empresa.linhas("select NumSerie from xel_ORVEX" + onde + " and Serie=" + p[1] +
                           " and NNumDoc=" + p[2]) +
            empresa.linhas("select NumSerie from xel_ORVEX INNER JOIN DocGcLin ON Artigo=NumSerie where "
                           "xel_ORVEX.NNumDoc=0 and TpDocum='" +
                           p[0] + "' and DocGcLin.NNumDoc=" + p[2]);
        if (!nomeado && no_livro.empty()) perdidos += chave + " ";
    }
    return perdidos;
}

// Rows of numbered documents of the ERP's types that are cancelled or were never there, and that no box
// named.
inline std::string linhas_sem_documento(EmpresaTeste& empresa, const std::string& caixas) {
    std::string sem;
    for (const std::string& chave : partes(
             empresa.linhas("select TpDoc, Serie, NNumDoc, Ano from xel_ORVEX INNER JOIN TiposDocumento on "
                            "Codigo=TpDoc where NNumDoc>0 and Ano>0"),
             "; ")) {
        const auto p = partes(chave, "|");
        const bool em_vigor =
            !empresa
                 .linhas("select Ano from DocGcCab where NVias<>-1 and TpDoc='" + p[0] +
                         "' and Serie=" + p[1] + " and NNumDoc=" + p[2] + " and Ano=" + p[3])
                 .empty();
        const std::string nome = " documento " + p[0] + "/" + p[1] + "/" + p[2] + "/" + p[3];
        const bool dito = caixas.find("O" + nome + " ficou anulado no ERP") != std::string::npos ||
                          caixas.find("O" + nome + " pode ter ficado anulado no ERP") != std::string::npos ||
                          caixas.find("o" + nome + " está anulado no ERP, e continua") != std::string::npos;
        if (!em_vigor && !dito) sem += chave + " ";
    }
    return sem;
}

} // namespace orvex::testes
