// The tables that the ledger's statements write, with their columns: for those who look at how they are made.
#pragma once

namespace orvex::livro {

// One row for each movement of an item into or out of a holder.
inline constexpr const char* tabela_detentores = "xel_ORVEX";
inline constexpr const char* colunas_detentores[] = {
    "NumSerie", "Registo", "Cliente", "Data",  "Quantidade", "Obs",     "Funcionario",
    "CliFinal", "Preco",   "Ano",     "TpDoc", "Serie",      "NNumDoc", "NumLin"};

// One row for each line of a document that moved items.
inline constexpr const char* tabela_movimentos = "xel_ORVEX_Mov";
inline constexpr const char* colunas_movimentos[] = {
    "Ano",     "TpDoc",      "NumDoc",  "SerieDoc", "NumLinha", "Data",        "Artigo",
    "Cliente", "Descritivo", "QtdOrig", "Qtd",      "Origem",   "PesoLiquido", "PesoBruto"};
// Of these, start-up adds two, both at once, where they are missing.
inline constexpr const char* colunas_de_pesos[] = {"PesoLiquido", "PesoBruto"};

// The gross weight of a line of the ERP, which belongs to the ERP and is written with the ledger.
inline constexpr const char* tabela_pesos_brutos = "U_DocGcLin1";
inline constexpr const char* colunas_pesos_brutos[] = {"Ano",     "TpDocUM",  "Serie",
                                                       "NNumDoc", "NumLinha", "PesoBruto"};

// Statements that ask whether the tables can be read, alone and beside the ERP's articles; they give no row.
inline constexpr const char* sonda_detentores = "Select * from xel_ORVEX where 1=0";
inline constexpr const char* sonda_artigos_nos_movimentos =
    "Select * from xel_ORVEX_Mov INNER JOIN Artigos ON Artigos.Codigo=xel_ORVEX_Mov.Artigo where 1=0";

} // namespace orvex::livro
