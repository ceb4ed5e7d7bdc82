#include "tests/contrato/empresa_vazia.h"

namespace orvex::testes {
namespace {

using Transaccoes = Contrato;

TEST_F(Transaccoes, AnulamOsDoisFicheirosMasNaoOConjuntoMeioLidoNemAcabamComUmaInstrucaoRecusada) {
    BD.IniciaTransaccao();
    junta_movimento(1);
    BD.Executa("Delete Artigos where CODIGO='B2'");
    for (const char* errada : {"Delete Nenhuma", "Delete xel_ORVEX_Mov where Nada=1"})
        EXPECT_NE(numero_da_falha([&] { BD.Executa(errada); }), 0);
    EXPECT_EQ(numero_da_falha([&] { junta_movimento(1); }), numeros::chave_violada);
    EXPECT_TRUE(BD.EmTransaccao());
    const auto conjunto = BD.Consulta("select * from xel_ORVEX_Mov");
    BD.AnulaTransaccao();
    EXPECT_FALSE(BD.EmTransaccao());
    EXPECT_EQ(conjunto->valor("NumLinha"), Variante(1));
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 0);
    EXPECT_EQ(linhas("Artigos"), 2);
}

// What is read before the lock is for the eye; it neither hides what others wrote nor stands in the way.
TEST_F(Transaccoes, ATrancaMostraOQueOutrosGravaramEntretanto) {
    BD.IniciaTransaccao();
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 0);
    insere(outra(), "xel_ORVEX_Mov", {"Ano", "TpDoc", "NumDoc", "SerieDoc", "NumLinha"}, {{1, "A", 1, 1, 7}});
    BD.Tranca();
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 1);
    junta_movimento(1);
    BD.ConfirmaTransaccao();
    EXPECT_EQ(linhas("xel_ORVEX_Mov"), 2);
    EXPECT_EQ(BD.Comprimento("XEL_orvex_mov", "descritivo"), 80u);
    EXPECT_EQ(BD.Comprimento("xel_ORVEX_Mov", "Qtd") + BD.Comprimento("Nenhuma", "Qtd"), 0u);
}

} // namespace
} // namespace orvex::testes
