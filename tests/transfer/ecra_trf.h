// The transfer screen at work on the small company, with items of its own: 2.5 t in the clients' warehouse,
// worth 250 euro. The newest ledger row of each:
//
//     Item      Cliente  CliFinal
//     REEL'1    CL'1     CL'1
//     CEDIDA    CL'1     CL2
//     CASA      ORVEX    ORVEX
//     COMGUIA   CL'1     CL'1      an open line of FA/1
//     OUTRA     CL'1     CL'1      an open line of FA/9, a series not taken
//     PARADA    CL'1     CL'1      out of use
//     SEMSTOCK  CL'1     CL'1      no stock at the clients'
#pragma once

#include "tests/apoio/empresa_teste.h"
#include "transfer/trf_bobines.h"

namespace orvex::testes {

struct EcraTrf : Bancada<transfer::TrfBobines> {
    explicit EcraTrf(int modo, const std::string& parametros = "")
        : Bancada(static_cast<std::int16_t>(modo)) {
        auto& BD_ = empresa.outra();
        BD_.IniciaTransaccao();
        empresa.com_ajustes_e_transferencias(parametros + "FACTURAS=FA,1,X;\r\n");
        for (const std::string item :
             {"REEL'1", "CEDIDA", "CASA", "COMGUIA", "OUTRA", "PARADA", "SEMSTOCK"}) {
            const std::string dono = item == "CASA" ? "ORVEX" : "CL'1";
            empresa.insere_artigo(item, m("2.5"), item == "SEMSTOCK" ? "OR" : "CL", item == "PARADA");
            insere(
                BD_, "xel_ORVEX", {"NumSerie", "Cliente", "CliFinal", "TpDoc", "NNumDoc"},
                {{item, "ORVEX", "ORVEX", "SB", 7}, {item, dono, item == "CEDIDA" ? "CL2" : dono, "SB", 8}});
        }
        insere(BD_, "xel_ORVEX_Mov", {"Ano", "TpDoc", "SerieDoc", "NumDoc", "NumLinha", "Artigo", "Qtd"},
               {{2019, "FA", 1, 500, 1, "COMGUIA", m("1")}, {2019, "FA", 9, 500, 1, "OUTRA", m("1")}});
        BD_.ConfirmaTransaccao();
        abre();
    }
    // On a company that has items of its own.
    EcraTrf(EmpresaTeste& partilhada, std::int16_t modo) : Bancada(&partilhada, modo) { abre(); }

    void item(const std::string& codigo) { op.preenche(ecra.campo(0), codigo); }
    void destino(const std::string& codigo) { op.preenche(ecra.campo(2), codigo); }
    void confirma() { op.prime(ecra.btConf); }
    bool vazio() { return ecra.campo(0).Text.empty() && conteudo() == "||||||" && no_campo(0); }
    // What the fields and labels filled by the validations hold.
    std::string conteudo() {
        std::string tudo;
        for (const int i : {2, 3, 4})
            tudo += ecra.Label2(i).Caption + "|";
        for (const int i : {1, 2, 4, 5})
            tudo += ecra.campo(i).Text + (i < 5 ? "|" : "");
        return tudo;
    }
    // The rows transfers wrote.
    std::string rasto() {
        return empresa.linhas(
            "select Cliente, CliFinal, Quantidade from xel_ORVEX where NNumDoc=0 order by Registo");
    }
};

} // namespace orvex::testes
