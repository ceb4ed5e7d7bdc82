#include "livro/artigos.h"
#include "livro/chaves.h"
#include "tests/apoio/empresa_teste.h"

using namespace orvex;
using namespace orvex::testes;

TEST(ChaveDeLinha, LeSeComOuSemSufixoFicaComoFoiEscritaEOutraERecusada) {
    for (const auto& caso :
         tabela("2019/FA/1/123/2 => 2019/FA/1/123/2 | 2019/FA/1/123/2/00000 => 2019/FA/1/123/2 | "
                "2019/FA/1/123/2/00017 => 2019/FA/1/123/2 | "
                "2019/D'A/ 01/0123/02 => 2019/D'A/ 01/0123/02 | "
                "2019/FA/-32768/2147483647/32767 => 2019/FA/-32768/2147483647/32767 |  => ? | "
                "FA => ? | 2019/FA/1/123 => ? | 2019/FA/1/123/ => ? | 2019/FA/1/123/2/ => ? | "
                "2019/FA/1/123/2/0000 => ? | 2019/FA/1/123/2/000000 => ? | 2019/FA/1/123/2/-0001 => ? | "
                "2019/FA/1/123/2/00000/1 => ? | /FA/1/123/2 => ? | 2019//1/123/2 => ? | "
                "2019/F/A/1/123/2 => ? | 2019/FA/1/x/2 => ? | 32768/FA/1/123/2 => ? | "
                "2019/FA/1/2147483648/2 => ? | 2019/FA/1/123/32768 => ? | 2019/FA/1/123/2 or 1=1 => ?")) {
        const auto chave = livro::le_chave(caso[0]);
        EXPECT_EQ(chave ? livro::le_chave(chave->origem())->texto() : "?", caso[1]) << caso[0];
    }
    EXPECT_TRUE(livro::e_da_linha("2019/FA/1/123/2/00017", "2019/FA/1/123/2"));
    EXPECT_FALSE(livro::e_da_linha("2019/FA/1/123/21/00000", "2019/FA/1/123/2"));
}

TEST(ChaveDeLinha, UmaOrigemQueNaoEChaveERecusadaComOSeuTextoEASuaLinha) {
    const livro::ChaveLinha linha{"2019", "GR", "1", "7", "3"};
    EXPECT_FALSE(livro::le_origem("", linha));
    for (const char* estragada : {" ", "2019/FA/1/123", "2019/FA/1/123/2/00000 "})
        EXPECT_THAT([&] { livro::le_origem(estragada, linha); },
                    testing::ThrowsMessage<base::FalhaGuarda>(
                        AllOf(HasSubstr("A linha 2019/GR/1/7/3 dos movimentos da ORVEX"),
                              HasSubstr("«" + std::string(estragada) + "»"))));
}

TEST(Preco, EOCustoMedioESemStockOUltimoDeCompraSalvoNasTransferencias) {
    EmpresaTeste empresa;
    insere(empresa.outra(), "Artigos", {"CODIGO", "VLREXIST", "STDISP", "ULTPRCOM"},
           {{"D'A", m("150"), m("3"), m("12.5")}, {"SEM", m("0"), m("0"), m("12.5")}});
    for (const auto& caso : tabela({"D'A => 50 => 50", "SEM => 12.5 => 0", "? => 0 => 0"})) {
        EXPECT_DOUBLE_EQ(livro::preco_movimento(empresa.outra(), caso[0]), std::stod(caso[1]));
        EXPECT_DOUBLE_EQ(livro::preco_transferencia(empresa.outra(), caso[0]), std::stod(caso[2]));
    }
}
