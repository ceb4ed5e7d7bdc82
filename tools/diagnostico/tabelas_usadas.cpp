#include "tabelas_usadas.h"

namespace orvex::diagnostico {

const std::vector<TabelaUsada>& tabelas_usadas() {
    static const std::vector<TabelaUsada> tabelas{
        {"xel_ORVEX",
         true,
         {"NumSerie", "Registo", "Cliente", "Data", "Quantidade", "Obs", "Funcionario", "CliFinal", "Preco",
          "Ano", "TpDoc", "Serie", "NNumDoc", "NumLin"},
         {"SELECT", "INSERT", "DELETE"}},
        {"xel_ORVEX_Mov",
         true,
         {"Ano", "TpDoc", "NumDoc", "SerieDoc", "NumLinha", "Data", "Artigo", "Cliente", "Descritivo",
          "QtdOrig", "Qtd", "Origem", "PesoLiquido", "PesoBruto"},
         {"SELECT", "INSERT", "UPDATE", "DELETE"}},
        {"U_DocGcLin1",
         false,
         {"Ano", "TpDocUM", "Serie", "NNumDoc", "NumLinha", "PesoBruto"},
         {"SELECT", "INSERT"}},
        {"Artigos",
         false,
         {"CODIGO", "Nome", "UnBase", "artoudes", "VLREXIST", "STDISP", "ULTPRCOM", "Inactivo", "Observ"},
         {"SELECT", "UPDATE"}},
        {"artarm", false, {"Artigo", "Armazem", "Existenc"}, {"SELECT"}},
        {"Clientes",
         false,
         {"CODIGO", "Nome", "NContrib", "GesCnt", "Vendedor", "RegIva", "Inactivo"},
         {"SELECT"}},
        {"DocGcCab",
         false,
         {"Ano", "TpDoc", "Serie", "NNumDoc", "Data", "Terceiro", "TpTerc", "NVias", "Convert", "Processo"},
         {"SELECT"}},
        {"DocGcLin",
         false,
         {"Ano", "TpDocum", "Serie", "NNumDoc", "NumLinha", "Artigo", "Descr", "Quant", "Armazem"},
         {"SELECT"}},
        {"RGIVA", false, {"Codigo", "Mercado"}, {"SELECT"}},
        {"Vendedor", false, {"CODIGO", "NOME"}, {"SELECT"}},
    };
    return tabelas;
}

const std::vector<IndiceFacultativo>& indices_facultativos() {
    static const std::vector<IndiceFacultativo> indices{
        {"xel_ORVEX", "xel_ORVEX_Registo"},        {"xel_ORVEX", "xel_ORVEX_Documento"},
        {"xel_ORVEX", "xel_ORVEX_TpDoc"},          {"xel_ORVEX_Mov", "xel_ORVEX_Mov_Cliente"},
        {"xel_ORVEX_Mov", "xel_ORVEX_Mov_Artigo"}, {"xel_ORVEX_Mov", "xel_ORVEX_Mov_Origem"},
    };
    return indices;
}

} // namespace orvex::diagnostico
