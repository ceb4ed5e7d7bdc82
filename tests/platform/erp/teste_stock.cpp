#include "tests/apoio/tabela.h"
#include "tests/platform/erp/empresa_erp.h"

namespace orvex::testes {
namespace {

class StockErp : public EmpresaErp {
  protected:
    static startup::PedidoDocStock pedido(const char* tipo, double quantidade) {
        startup::PedidoDocStock novo;
        novo.tipo_documento = tipo;
        novo.sector = "1";
        novo.serie = 1;
        novo.destino = "CL";
        novo.processo = "P1";
        novo.data = "05-03-2026";
        novo.armazem = "OR";
        novo.artigos = {"", "BOB2"};
        novo.textos_15 = novo.textos_18 = {"", ""};
        novo.quantidades = {0, quantidade};
        novo.precos = {0, 100};
        return novo;
    }
};

TEST_F(StockErp, cada_tipo_de_documento_de_stock_move_o_seu_sentido_e_so_uma_anulacao_repoe) {
    const std::string antes = stock("BOB2");
    for (const auto& caso : tabela({"SB => 10; 10.1 = 20.1|2010", "QB => 10; 9.9 = 19.9|1990",
                                    "CI => 10; 9.9 = 19.9|1990", "TR => 10.1; 9.9 = 20|2000"})) {
        const auto chave = sessao.CriaDocStock(pedido(caso[0].c_str(), 0.1));
        EXPECT_EQ(chave, (startup::ChaveDocumento{2026, caso[0], 1, 1}));
        EXPECT_EQ(stock("BOB2"), caso[1]) << caso[0];
        EXPECT_TRUE(sessao.AnulaDocumento(1, chave).sucesso);
        EXPECT_EQ(sessao.AnulaDocumento(1, chave).mensagem,
                  "O documento " + caso[0] + "/1/1/2026 já está anulado.");
        EXPECT_FALSE(sessao.ResultadoUltimo().sucesso);
        EXPECT_EQ(stock("BOB2"), antes) << caso[0];
    }
    EXPECT_EQ(sessao.AnulaDocumento(1, {2026, "SB", 1, 9}).mensagem, "O documento SB/1/9/2026 não existe.");
    EXPECT_EQ(empresa.linhas("select TpTerc, Processo, Data, NVias from DocGcCab where TpDoc='SB'"),
              "1|P1|2026-03-05 00:00:00|-1");
    EXPECT_EQ(empresa.linhas("select Descr, Unidade, ArmDestino from DocGcLin where TpDocum='SB'"),
              "Bobina d'aço|TON|");
}

TEST_F(StockErp,
       a_guia_tira_do_armazem_da_linha_a_devolucao_poe_nele_e_quantidades_pequenas_somam_exactamente) {
    emitido({{"BOB2", "3.3333"}, {"BOB2", "0.0001"}});
    emitido({{"BOB2", "1.1", "CL"}}, "GV");
    EXPECT_EQ(stock("BOB2"), "11.1; 6.6666 = 17.7666|1776.66");
    emitido({{"BOB2", "5"}}, "FA");
    for (int i = 0; i < 30; ++i)
        sessao.CriaDocStock(pedido("QB", 0.1001));
    EXPECT_THAT(stock("BOB2"), testing::StartsWith("11.1; 3.6636 = 14.7636|"))
        << "uma factura não move stock";
}

TEST_F(StockErp, pode_ficar_negativo_ao_ultimo_preco_e_o_custo_volta_a_ser_o_que_era_ao_anular) {
    emitido({{"SEM", "2"}});
    EXPECT_EQ(stock("SEM"), "-2 = -2|-100");
    emitido({{"BOB2", "20"}});
    EXPECT_EQ(stock("BOB2"), "10; -10 = 0|0");
    for (const int numero : {1, 2})
        EXPECT_TRUE(sessao.AnulaDocumento(1, {2026, "GR", 1, numero}).sucesso);
    EXPECT_EQ(stock("SEM"), "0 = 0|0");
    EXPECT_EQ(stock("BOB2"), "10; 10 = 20|2000");
}

TEST_F(StockErp, recusa_o_documento_de_stock_que_nao_pode_criar_e_nao_gasta_numero) {
    auto sem_destino = pedido("TR", 1);
    sem_destino.destino = "A7";
    auto sem_data = pedido("SB", 1);
    sem_data.data = "ontem";
    for (const auto& errado : {sem_destino, sem_data, pedido("FA", 1), pedido("ZZ", 1), pedido("QB", -1)}) {
        EXPECT_EQ(sessao.CriaDocStock(errado), startup::ChaveDocumento{});
        EXPECT_FALSE(sessao.ResultadoUltimo().sucesso || sessao.ResultadoUltimo().mensagem.empty());
    }
    EXPECT_EQ(empresa.linhas("select * from DocGcCab"), "");
    EXPECT_EQ(sessao.CriaDocStock(pedido("SB", 1)).NossoNoDocumento, 1);
}

} // namespace
} // namespace orvex::testes
