// The language of the statements, where the screens' own statements do not show it.
#include "tests/apoio/tabela.h"
#include "tests/contrato/empresa_vazia.h"

namespace orvex::testes {
namespace {

class Linguagem : public Contrato {
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

TEST_F(Linguagem, values_match_quoted_or_not_and_whatever_their_case_and_plus_joins_texts_and_adds_numbers) {
    for (const auto& caso : tabela(
             {"Data from DocGcCab where TpDoc='gr ' and Serie='1' and Nnumdoc='12' => 2024-03-05 10:20:30",
              "NNumDoc from DocGcCab where Ano=2024 and NNumdoc= 12and Serie =1 => 12",
              "CODIGO FROM Clientes where Nome='D''ÁVILA & FILHOS' => C1",
              "Nome FROM Clientes where CODIGO='x'' or 1=1 or CODIGO=''' => ",
              "CODIGO+Nome, STDISP+ULTPRCOM, Observ+'x' FROM Artigos where CODIGO='B1' => B1Bobina 1|15.5|"}))
        EXPECT_EQ(primeira("SELECT " + caso[0]), caso[1]) << caso[0];
    EXPECT_NE(numero_da_falha([&] { BD.Consulta("SELECT CODIGO+STDISP FROM Artigos"); }), 0);
    const auto recente = BD.Consulta("Select top 1 NNumDoc as 'No. Doc.' from DocGcCab order by Data desc");
    EXPECT_EQ(recente->valor(0), Variante(13));
    EXPECT_EQ(recente->contagem(), 1);
    EXPECT_EQ(recente->nome_coluna(0), "No. Doc.");
}

TEST_F(Linguagem, an_alter_adds_all_its_columns_or_none) {
    BD.Executa("CREATE TABLE [t]([a] [int] NULL, [PesoBruto] [money] NULL)");
    const char* altera = "ALTER TABLE  t ADD PesoLiquido money null, PesoBruto money Null";
    EXPECT_EQ(numero_da_falha([&] { BD.Executa(altera); }), numeros::instrucao_errada);
    EXPECT_FALSE(BD.EmTransaccao());
    BD.IniciaTransaccao();
    EXPECT_NE(numero_da_falha([&] { BD.Executa(altera); }), 0);
    EXPECT_TRUE(BD.EmTransaccao()) << "a refused change leaves the program's transaction alone";
    BD.AnulaTransaccao();
    EXPECT_EQ(BD.Consulta("select * from t")->colunas(), 2U);
}

} // namespace
} // namespace orvex::testes
