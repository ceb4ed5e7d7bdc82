#include "tabelas_usadas.h"

#include "livro/tabelas.h"

#include <iterator>

namespace orvex::diagnostico {
namespace {

template <typename Colunas>
std::vector<const char*> todas(const Colunas& colunas) {
    return {std::begin(colunas), std::end(colunas)};
}

} // namespace

const std::vector<TabelaUsada>& tabelas_usadas() {
    static const std::vector<TabelaUsada> tabelas{
        {livro::tabela_detentores, true, todas(livro::colunas_detentores), {"SELECT", "INSERT", "DELETE"}},
        {livro::tabela_movimentos,
         true,
         todas(livro::colunas_movimentos),
         {"SELECT", "INSERT", "UPDATE", "DELETE"}},
        {livro::tabela_pesos_brutos, false, todas(livro::colunas_pesos_brutos), {"SELECT", "INSERT"}},
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
        {"xel_ORVEX", "xel_ORVEX_Cliente"},        {"xel_ORVEX", "xel_ORVEX_Data"},
    };
    return indices;
}

} // namespace orvex::diagnostico
