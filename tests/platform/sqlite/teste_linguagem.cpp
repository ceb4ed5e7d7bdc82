// The statements the program sends, as it sends them.
#include "tests/platform/sqlite/empresa_teste.h"

namespace orvex::teste {
namespace {

class Linguagem : public EmpresaTeste {
  protected:
    // The first row of a query, its values joined; empty when there is no row.
    std::string primeira(const std::string& sql) {
        const auto conjunto = BD.Consulta(sql);
        if (conjunto->fim()) return {};
        std::string texto;
        for (std::size_t i = 0; i < conjunto->colunas(); ++i)
            texto += (i == 0 ? "" : "|") + conjunto->valor(i).texto();
        return texto;
    }
};

TEST_F(Linguagem, the_note_list_joins_date_number_and_client_and_names_its_columns) {
    const auto lista = BD.Consulta(
        " SELECT (convert(nvarchar(19),docgccab.data,120)+'*'+cast(DocGcCab.NNumDoc as "
        "nvarchar(10))+'*'+cast(DocGcCab.Terceiro as nvarchar(15))) as Teste,DocGcCab.Data as 'Data Doc.', "
        "DocGcCab.NNumdoc as 'No. Doc.',DOCGCCAB.TERCEIRO AS Cliente, CLIENTES.NOME as 'Nome Cliente' FROM "
        "DOCGCCAB "
        "INNER JOIN CLIENTES ON CLIENTES.CODIGO = DOCGCCAB.TERCEIRO WHERE     (DOCGCCAB.NVIAS <> - 1) AND "
        "(DOCGCCAB.TPTERC = 2) AND (DOCGCCAB.TPDOC = 'GR') AND (DOCGCCAB.SERIE = '1')  and Ano=2024 and "
        "[Convert]<>-1 and DOCGCCAB.Terceiro='c1 ' ORDER BY DocGcCab.Data,serie,nnumdoc");
    ASSERT_EQ(lista->contagem(), 1) << "cancelled and converted notes stay out";
    EXPECT_EQ(lista->valor("teste"), Variante("2024-03-05 10:20:30*12*C1"));
    EXPECT_EQ(lista->nome_coluna(2), "No. Doc.");
    EXPECT_EQ(lista->valor("data doc."), Variante(DataHora{2024, 3, 5, 10, 20, 30}));
    EXPECT_EQ(lista->valor("Nome Cliente"), Variante("D'Ávila & Filhos"));
}

TEST_F(Linguagem, the_adjustment_list_cuts_the_date_and_takes_a_number_glued_to_a_word) {
    junta("xel_ORVEX", {{"NumSerie", "B1"},
                        {"Data", DataHora{2024, 5, 6, 7, 8, 9}},
                        {"Quantidade", moeda("-0.25")},
                        {"TpDoc", "SB"},
                        {"Serie", 1},
                        {"NNumDoc", 12},
                        {"Ano", 2024}});
    EXPECT_EQ(
        primeira(
            " SELECT     CONVERT(nvarchar(10), Data, 120) + '*' + CAST(NNumDoc AS nvarchar(10))+ '*' + "
            "CAST(Registo AS nvarchar(10)) AS teste,  NNumDoc AS 'No.Doc.', Data,NumSerie as "
            "'Artigo',Artigos.Nome as 'Designação Artigo',Abs(Quantidade) as Peso   From xel_ORVEX  Inner "
            "join Artigos on Artigos.Codigo=xel_Orvex.Numserie  WHERE     (TpDoc = 'SB') AND (Serie = 1) "
            "and  nnumdoc>0 order by Data desc"),
        "2024-05-06*12*1|12|2024-05-06 07:08:09|B1|Bobina 1|0.25");
    EXPECT_EQ(
        primeira("Select NumSerie from xel_ORVEX where Ano=2024 and TpDoc='SB' and NNumdoc= 12and Serie =1"),
        "B1");
}

TEST_F(Linguagem, the_open_lines_keep_rows_without_a_gross_weight_in_the_left_join) {
    junta("xel_ORVEX_MOV", movimento(1));
    junta("xel_ORVEX_MOV", movimento(2, {{"TpDoc", "FX"}}));
    junta("U_DocGcLin1", {{"Ano", 2024},
                          {"TpDocUM", "FX"},
                          {"Serie", 1},
                          {"NNumDoc", 7},
                          {"NumLinha", 2},
                          {"PesoBruto", moeda("1.75")}});
    const auto abertas = BD.Consulta(
        " Select m.*,l.PESOBRUTO as 'PB' from xel_ORVEX_Mov as m inner join artigos as a on "
        "a.codigo=m.Artigo left "
        "outer  join U_Docgclin1 as l ON l.ano=m.ano and  l.TPDOCUM =m.tpdoc and l.SERIE =m.seriedoc and "
        "l.nnumdoc=m.numdoc and l.NUMLINHA =m.numlinha where Cliente ='C1' and Qtd>0 and artoudes=0 and ( "
        "(TpDoc='FA' "
        "and SerieDoc=1) OR  (TpDoc='FX' and SerieDoc=1) )");
    EXPECT_TRUE(abertas->valor("PB").nulo());
    abertas->move_seguinte();
    EXPECT_EQ(abertas->valor("pb"), Variante(moeda("1.75")));
    EXPECT_EQ(abertas->valor("Qtd"), Variante(moeda("1.5")));
}

TEST_F(Linguagem, the_item_list_groups_and_top_one_takes_the_newest_row) {
    for (const char* cliente : {"C1", "C2"})
        junta("xel_ORVEX", {{"NumSerie", "B1"}, {"Cliente", cliente}, {"Ano", 2024}});
    EXPECT_EQ(
        BD.Consulta("SELECT NUMSERIE AS Artigo, ARTIGOS.Nome AS Nome From xel_ORVEX INNER JOIN Artigos  ON "
                    "ARTIGOS.CODIGO=xel_ORVEX.NUMSERIE  Group By NumSerie,Nome ORDER BY NUMSERIE")
            ->contagem(),
        1);
    const auto mais_recente =
        BD.Consulta("Select top 1 * from xel_ORVEX where NumSerie='B1' order by Registo desc");
    EXPECT_EQ(mais_recente->contagem(), 1);
    EXPECT_EQ(mais_recente->valor("Cliente"), Variante("C2"));
}

TEST_F(Linguagem, values_match_quoted_or_not_and_whatever_their_case_and_trailing_blanks) {
    EXPECT_EQ(
        primeira(
            "Select * from DocGcLin where TpDocum='gr ' and Serie='1' and Nnumdoc='12' and Ano='2024' and "
            "NumLinha='1'"),
        "2024|GR|1|12|1|A1");
    EXPECT_EQ(primeira("SELECT Nome FROM Clientes  where Clientes.CODIGO='c1' and Clientes.Inactivo<>-1 "),
              "D'Ávila & Filhos");
    EXPECT_EQ(primeira("SELECT CODIGO FROM Clientes where Nome='D''ÁVILA & FILHOS'"), "C1");
    EXPECT_EQ(primeira("SELECT Nome FROM Clientes where CODIGO='x'' or 1=1 or CODIGO='''"), "");
}

TEST_F(Linguagem, plus_joins_texts_and_adds_numbers) {
    EXPECT_EQ(primeira("SELECT CODIGO+Nome, STDISP+ULTPRCOM, Observ+'x' FROM Artigos where CODIGO='B1'"),
              "B1Bobina 1|15.5|");
    EXPECT_NE(numero_da_falha([&] { BD.Consulta("SELECT CODIGO+STDISP FROM Artigos"); }), 0);
}

TEST_F(Linguagem, delete_and_update_touch_the_rows_named) {
    for (const int linha : {1, 2, 3})
        junta("xel_ORVEX_MOV", movimento(linha));
    BD.Executa(
        "Delete xel_ORVEX_MOV where Ano=2024 and TpDoc='FA'     and NumDoc=7 and SerieDoc=1  and NumLinha=2");
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 2);
    BD.Executa("UPDATE xel_ORVEX_Mov SET Descritivo='d''água', Qtd=Qtd + 1 WHERE NumLinha=3");
    EXPECT_EQ(primeira("select Descritivo, Qtd from xel_ORVEX_Mov where NumLinha=3"), "d'água|2.5");
}

TEST_F(Linguagem, statements_of_one_shape_keep_their_own_values) {
    for (const int linha : {1, 2})
        junta("xel_ORVEX_MOV", movimento(linha, {{"Origem", "o" + std::to_string(linha)}}));
    for (const int linha : {1, 2, 1, 3})
        EXPECT_EQ(primeira("select Origem from xel_ORVEX_Mov where NumLinha=" + std::to_string(linha)),
                  linha == 3 ? "" : "o" + std::to_string(linha));
    EXPECT_EQ(primeira("select convert(nvarchar(4),Data,120) from DocGcCab where NNumDoc=12"), "2024");
    EXPECT_EQ(primeira("select convert(nvarchar(7),Data,120) from DocGcCab where NNumDoc=12"), "2024-03");
}

TEST_F(Linguagem, what_the_server_would_refuse_or_we_do_not_know_is_a_faulty_statement) {
    for (const char* sql : {"",
                            "select",
                            "select * from Clientes limit 1",
                            "select * from Clientes where Nome='aberto",
                            "select * from Clientes where",
                            "select * from Clientes; delete Clientes",
                            "select * from Clientes -- x",
                            "select Nada from Clientes",
                            "select \"Nada\" from Clientes",
                            "select * from Clientes order by 1",
                            "select * from Clientes where Nome like 'x%'",
                            "select top x * from Clientes",
                            "drop table Clientes",
                            "delete Clientes",
                            "pragma user_version",
                            "select convert(nvarchar(10),Data,103) from DocGcCab",
                            "select * from Clientes where CODIGO=?",
                            "select * from Clientes where Nome='a' 'b'",
                            "create table t([a] [xml] null)",
                            "alter table xel_ORVEX add Novo text"})
        EXPECT_EQ(numero_da_falha([&] { BD.Consulta(sql); }), numeros::instrucao_errada) << sql;
    EXPECT_EQ(linhas("Clientes"), 2) << "a query that is none is not run";
    EXPECT_EQ(numero_da_falha([&] { BD.Executa("Delete Nenhuma where a=1"); }), numeros::tabela_em_falta);
}

TEST_F(Linguagem, the_ledger_tables_are_made_with_their_keys_and_cannot_be_made_twice) {
    EXPECT_EQ(
        numero_da_falha([&] { BD.Executa("CREATE TABLE [dbo].[xel_ORVEX]([a] [int] NULL) ON [PRIMARY]"); }),
        numeros::instrucao_errada);
    EXPECT_TRUE(BD.Consulta("select PesoLiquido, PesoBruto from xel_ORVEX_Mov")->fim());
}

TEST_F(Linguagem, an_alter_of_two_columns_adds_both_or_none) {
    BD.Executa("CREATE TABLE [t]([a] [int] NULL, [PesoBruto] [money] NULL)");
    const char* altera = "ALTER TABLE  t ADD PesoLiquido money null, PesoBruto money Null";
    EXPECT_EQ(numero_da_falha([&] { BD.Executa(altera); }), numeros::instrucao_errada);
    EXPECT_FALSE(BD.EmTransaccao());
    EXPECT_EQ(BD.Consulta("select * from t")->colunas(), 2U);

    BD.IniciaTransaccao();
    EXPECT_NE(numero_da_falha([&] { BD.Executa(altera); }), 0);
    EXPECT_TRUE(BD.EmTransaccao()) << "a refused change leaves the program's transaction alone";
    BD.AnulaTransaccao();
}

TEST_F(Linguagem, columns_added_by_another_program_are_seen_by_a_known_statement) {
    BD.Executa("CREATE TABLE [t]([a] [int] NULL)");
    EXPECT_EQ(BD.Consulta("select * from t")->colunas(), 1U);
    outra_ligacao().exec("ALTER TABLE t ADD COLUMN b money");
    EXPECT_EQ(BD.Consulta("select * from t")->colunas(), 2U);
}

} // namespace
} // namespace orvex::teste
