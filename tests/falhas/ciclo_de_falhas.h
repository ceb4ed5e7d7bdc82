// Fails the first step of a flow, then the second, and so on until a run is clean; then again with what comes
// after the failure failing too. Whatever fails, the ledger is as it was or complete, every document of the
// ERP is in the ledger, cancelled or named for manual cancellation, and the screen can be used.
#pragma once

#include "tests/apoio/empresa_teste.h"
#include "tests/apoio/tabela.h"

#include <gmock/gmock.h>

#include <iostream>

namespace orvex::testes {

template <typename TBancada>
struct Fluxo {
    const char* nome;
    std::function<void(TBancada&)> prepara;
    std::function<void(TBancada&)> age;        // the last press
    std::function<bool(TBancada&)> utilizavel; // afterwards: does something with the screen
    bool segue_com_recusa = false;             // a refused cancellation does not stop it
};

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
        if (!nomeado(p[2]) && !nomeado("0") &&
            empresa
                .linhas("select Artigo from xel_ORVEX_MOV" + onde + " and SerieDoc=" + p[1] +
                        " and NumDoc=" + p[2])
                .empty() &&
            empresa
                .linhas("select NumSerie from xel_ORVEX" + onde + " and Serie=" + p[1] +
                        " and NNumDoc=" + p[2])
                .empty() &&
            // A transfer's rows carry no number: they stand for the document that moved their item.
            empresa
                .linhas("select NumSerie from xel_ORVEX INNER JOIN DocGcLin ON Artigo=NumSerie where "
                        "xel_ORVEX.NNumDoc=0"
                        " and TpDocum='" +
                        p[0] + "' and DocGcLin.NNumDoc=" + p[2])
                .empty())
            perdidos += chave + " ";
    }
    return perdidos;
}

// The number of steps of the clean run.
template <typename TBancada>
int percorre(const Fluxo<TBancada>& fluxo, Diario::Maneira maneira, Diario::Depois depois,
             const std::string& completo) {
    for (int passo = 1;; ++passo) {
        SCOPED_TRACE(std::string(fluxo.nome) + ", step " + std::to_string(passo) + ", way " +
                     std::to_string(static_cast<int>(maneira)) + ", afterwards " +
                     std::to_string(static_cast<int>(depois)));
        TBancada bancada;
        fluxo.prepara(bancada);
        bancada.caixas();
        const auto antes = bancada.empresa.livro();
        bancada.diario.recomeca();
        bancada.diario.falha_no = passo;
        bancada.diario.maneira = maneira;
        bancada.diario.depois = depois;
        EXPECT_NO_THROW(fluxo.age(bancada));
        const bool falhou = bancada.diario.falhou;
        const std::string rasto = bancada.diario.texto();
        const int passos = bancada.diario.passos;
        bancada.diario.recomeca();

        const std::string caixas = bancada.caixas();
        const bool parou = caixas.find("Situação Anómala\n\rErro: ") != std::string::npos;
        EXPECT_TRUE(parou == falhou || (fluxo.segue_com_recusa && maneira == Diario::Maneira::recusa))
            << rasto;
        EXPECT_EQ(bancada.empresa.livro(), parou ? antes : completo) << rasto;
        EXPECT_EQ(documentos_perdidos(bancada.empresa, caixas), "") << rasto;
        EXPECT_FALSE(bancada.BD.EmTransaccao()) << rasto;
        EXPECT_TRUE(fluxo.utilizavel(bancada)) << rasto;
        if (!falhou) return passos;
        if (testing::Test::HasFailure()) return 0;
    }
}

template <typename TBancada>
void ciclo_de_falhas(const Fluxo<TBancada>& fluxo) {
    using Maneira = Diario::Maneira;
    using Depois = Diario::Depois;
    std::string completo;
    {
        TBancada bancada;
        fluxo.prepara(bancada);
        fluxo.age(bancada);
        completo = bancada.empresa.livro();
    }
    int passos = 0;
    for (const auto& [maneira, depois] : {std::pair{Maneira::lanca, Depois::nada},
                                          {Maneira::recusa, Depois::anulacao_recusada},
                                          {Maneira::lanca, Depois::tudo_lanca}})
        passos = percorre(fluxo, maneira, depois, completo);
    std::cout << fluxo.nome << ": " << passos << " steps, each failed in 3 ways\n";
}

} // namespace orvex::testes
