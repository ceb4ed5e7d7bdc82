// The language of the statements, where the screens' own statements do not show it.
#include "tests/apoio/tabela.h"
#include "tests/contrato/empresa_vazia.h"

namespace orvex::testes {
namespace {

using Linguagem = Contrato;

TEST_F(Linguagem, OsValoresIgualamSeComOuSemPlicasEMaiusculasEOMaisJuntaTextosESomaNumeros) {
    for (const auto& caso :
         tabela({"Data from DocGcCab where TpDoc='gr ' and Serie='1' and Nnumdoc='12' => 2024-03-05 10:20:30",
                 "NNumDoc from DocGcCab where Ano=2024 and NNumdoc= 12and Serie =1 => 12",
                 "CODIGO FROM Clientes where Nome='D''ÁVILA & FILHOS' => C1",
                 "count(*) FROM Clientes where CODIGO='x'' or 1=1 or CODIGO=''' => 0",
                 "CODIGO+Nome FROM Artigos where CODIGO='B1' => B1Bobina 1",
                 "STDISP+ULTPRCOM FROM Artigos where CODIGO='B1' => 15.5",
                 "Observ+'x' FROM Artigos where CODIGO='B1' => "}))
        EXPECT_EQ(valor("SELECT " + caso[0]).texto(), caso[1]) << caso[0];
    EXPECT_NE(numero_da_falha([&] { BD.Consulta("SELECT CODIGO+STDISP FROM Artigos"); }), 0);
    const auto recente = BD.Consulta("Select top 1 NNumDoc as 'No. Doc.' from DocGcCab order by Data desc");
    EXPECT_EQ(recente->valor(0), Variante(13));
    EXPECT_EQ(recente->contagem(), 1);
    EXPECT_EQ(recente->nome_coluna(0), "No. Doc.");
}

} // namespace
} // namespace orvex::testes
