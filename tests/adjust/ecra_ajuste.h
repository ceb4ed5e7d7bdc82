// The adjustment screen at work on the small company, with items of its own: 5 t worth 500 euro. The holder
// is that of the newest ledger row:
//
//     Item      Holder  Stock in
//     REEL'1    ORVEX   OR
//     CEDIDA    CL'1    CL
//     PARADA    ORVEX   OR        out of use
//     SEMSTOCK  ORVEX   CL        none where its holder's items lie
//     SEMLIVRO          OR        no ledger row
#pragma once

#include "adjust/mov_stocks.h"
#include "tests/apoio/empresa_teste.h"

namespace orvex::testes {

struct EcraAjuste : Bancada<adjust::MovStocks> {
    explicit EcraAjuste(int modo, const std::string& parametros = "")
        : Bancada(static_cast<std::int16_t>(modo)) {
        auto& BD_ = empresa.outra();
        BD_.IniciaTransaccao();
        empresa.com_ajustes_e_transferencias(parametros);
        for (const std::string item : {"REEL'1", "CEDIDA", "PARADA", "SEMSTOCK", "SEMLIVRO"}) {
            empresa.insere_artigo(item, m("5"), item == "CEDIDA" || item == "SEMSTOCK" ? "CL" : "OR",
                                  item == "PARADA");
            if (item == "SEMLIVRO") continue;
            insere(
                BD_, "xel_ORVEX", {"NumSerie", "Cliente", "CliFinal", "Data", "Quantidade"},
                {{item, "CL2", "CL2", base::DataHora{2019, 1, 2}, m("5")},
                 {item, item == "CEDIDA" ? "CL'1" : "ORVEX", "ORVEX", base::DataHora{2019, 1, 3}, m("0")}});
        }
        BD_.ConfirmaTransaccao();
        abre();
    }
    // On a company that has items of its own.
    EcraAjuste(EmpresaTeste& partilhada, std::int16_t modo) : Bancada(&partilhada, modo) { abre(); }

    void item(const std::string& codigo) { op.preenche(ecra.campo(0), codigo); }
    void quantidade(const std::string& texto) { op.preenche(ecra.campo(3), texto); }
    void confirma() { op.prime(ecra.btConf); }
    void anula() { op.prime(ecra.btAnular); }
    void ajusta(const std::string& codigo, const std::string& novo) {
        item(codigo);
        quantidade(novo);
        confirma();
    }
    void carrega(const char* numero) {
        janela.escolhe_a_primeira_com("No.Doc.", numero);
        op.prime(ecra.btFx(5));
    }

    std::string conteudo() {
        std::string tudo;
        for (auto& [indice, campo] : ecra.campo)
            tudo += campo.Text + "|";
        return tudo + ecra.Label2(1).Caption + "|" + ecra.DTPicker1.Value.data();
    }
    bool vazio() {
        return conteudo() == "|||||||15-03-2019" && no_campo(0) && !ecra.btAnular.Visible &&
               !BD.EmTransaccao();
    }
    // Of every stock document: type, quantity, whether it was cancelled; then the ledger's rows of documents.
    std::string documentos() {
        return empresa.linhas("select DocGcCab.TpDoc, Quant, NVias from DocGcCab inner join DocGcLin on "
                              "TpDocum=TpDoc and DocGcLin.NNumDoc=DocGcCab.NNumDoc order by DocGcCab.TpDoc, "
                              "DocGcCab.NNumDoc") +
               " / " +
               empresa.linhas("select TpDoc, Quantidade from xel_ORVEX where NNumDoc>0 order by Registo");
    }
};

} // namespace orvex::testes
