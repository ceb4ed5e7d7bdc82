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
        novo.destino = "A2";
        novo.processo = "P1";
        novo.data = "05-03-2026";
        novo.armazem = "A1";
        novo.artigos = {"", "B1"};
        novo.textos_15 = novo.textos_18 = {"", ""};
        novo.quantidades = {0, quantidade};
        novo.precos = {0, 100};
        return novo;
    }
};

TEST_F(StockErp, cada_tipo_de_documento_de_stock_move_o_seu_sentido_e_a_anulacao_repoe) {
    const struct {
        const char* tipo;
        const char* em_a1;
        const char* em_a2;
        const char* total;
        const char* custo;
    } casos[] = {{"SB", "10.1", "0", "10.1", "1010"},
                 {"QB", "9.9", "0", "9.9", "990"},
                 {"CI", "9.9", "0", "9.9", "990"},
                 {"TR", "9.9", "0.1", "10", "1000"}};
    for (const auto& caso : casos) {
        const ChaveDocumento chave = sessao.CriaDocStock(pedido(caso.tipo, 0.1));
        ASSERT_TRUE(sessao.ResultadoUltimo().sucesso) << sessao.ResultadoUltimo().mensagem;
        EXPECT_EQ(chave, (ChaveDocumento{2026, caso.tipo, 1, 1}));
        EXPECT_EQ(no_armazem("B1", "A1"), moeda(caso.em_a1)) << caso.tipo;
        EXPECT_EQ(no_armazem("B1", "A2"), moeda(caso.em_a2)) << caso.tipo;
        EXPECT_EQ(total("B1"), moeda(caso.total)) << caso.tipo;
        EXPECT_EQ(custo("B1"), moeda(caso.custo)) << caso.tipo;
        EXPECT_TRUE(sessao.AnulaDocumento(1, chave).sucesso);
        EXPECT_EQ(no_armazem("B1", "A1"), moeda("10")) << caso.tipo;
        EXPECT_EQ(no_armazem("B1", "A2"), moeda("0")) << caso.tipo;
        EXPECT_EQ(total("B1"), moeda("10")) << caso.tipo;
        EXPECT_EQ(custo("B1"), moeda("1000")) << caso.tipo;
    }
}

TEST_F(StockErp, o_documento_de_stock_guarda_o_processo_e_o_terceiro_pedidos_e_a_designacao_do_artigo) {
    sessao.CriaDocStock(pedido("SB", 1));
    EXPECT_EQ(valor("select TpTerc || Processo || Data from DocGcCab").texto(), "1P12026-03-05 00:00:00");
    EXPECT_EQ(valor("select Descr || Unidade || ArmDestino from DocGcLin").texto(), "Bobine umTN");
}

TEST_F(StockErp, a_guia_tira_do_armazem_da_linha_e_a_devolucao_poe_nele) {
    emitido(sessao, {{"B1", "3.3333"}, {"B1", "0.0001"}});
    EXPECT_EQ(no_armazem("B1", "A1"), moeda("6.6666"));
    emitido(sessao, {{"B1", "1.1", "A2"}}, "GD");
    EXPECT_EQ(no_armazem("B1", "A2"), moeda("1.1"));
    EXPECT_EQ(total("B1"), moeda("7.7666"));
    emitido(sessao, {{"B1", "5"}}, "FA");
    EXPECT_EQ(total("B1"), moeda("7.7666")) << "uma factura não move stock";
}

TEST_F(StockErp, muitas_quantidades_pequenas_somam_exactamente) {
    for (int i = 0; i < 30; ++i)
        sessao.CriaDocStock(pedido("QB", 0.1001));
    EXPECT_EQ(no_armazem("B1", "A1"), moeda("6.997"));
    EXPECT_EQ(total("B1"), moeda("6.997"));
}

TEST_F(StockErp, pode_ficar_negativo_e_o_custo_volta_a_ser_o_que_era_ao_anular) {
    emitido(sessao, {{"B2", "2", "A2"}});
    EXPECT_EQ(no_armazem("B2", "A2"), moeda("-2"));
    EXPECT_EQ(custo("B2"), moeda("-100")) << "sem existência vale o último preço de compra";
    EXPECT_TRUE(sessao.AnulaDocumento(1, {2026, "GR", 1, 1}).sucesso);
    emitido(sessao, {{"B1", "10"}});
    EXPECT_EQ(custo("B1"), moeda("0"));
    EXPECT_TRUE(sessao.AnulaDocumento(1, {2026, "GR", 1, 2}).sucesso);
    EXPECT_EQ(custo("B1"), moeda("1000"));
    EXPECT_EQ(custo("B2"), moeda("0"));
}

TEST_F(StockErp, anular_marca_o_documento_uma_so_vez_e_o_que_nao_existe_e_recusado) {
    emitido(sessao, {{"B1", "4"}});
    EXPECT_TRUE(sessao.AnulaDocumento(1, {2026, "GR", 1, 1}).sucesso);
    EXPECT_EQ(valor("select NVias from DocGcCab").inteiro(), -1);

    const auto segunda = sessao.AnulaDocumento(1, {2026, "GR", 1, 1});
    EXPECT_FALSE(segunda.sucesso);
    EXPECT_EQ(segunda.mensagem, "O documento GR/1/1/2026 já está anulado.");
    EXPECT_EQ(sessao.ResultadoUltimo().mensagem, segunda.mensagem);
    EXPECT_EQ(no_armazem("B1", "A1"), moeda("10")) << "o stock só se repõe uma vez";
    EXPECT_EQ(sessao.AnulaDocumento(1, {2026, "GR", 1, 9}).mensagem, "O documento GR/1/9/2026 não existe.");
}

TEST_F(StockErp, recusa_o_documento_de_stock_que_nao_pode_criar_e_nao_gasta_numero) {
    auto sem_artigo = pedido("SB", 1);
    sem_artigo.artigos[1] = "X";
    auto sem_destino = pedido("TR", 1);
    sem_destino.destino = "A7";
    auto sem_data = pedido("SB", 1);
    sem_data.data = "ontem";
    for (const auto& errado :
         {sem_artigo, sem_destino, sem_data, pedido("FA", 1), pedido("ZZ", 1), pedido("QB", -1)}) {
        EXPECT_EQ(sessao.CriaDocStock(errado), ChaveDocumento{});
        EXPECT_FALSE(sessao.ResultadoUltimo().sucesso);
        EXPECT_NE(sessao.ResultadoUltimo().mensagem, "");
    }
    EXPECT_EQ(valor("select count(*) from DocGcCab").inteiro(), 0);
    EXPECT_EQ(sessao.CriaDocStock(pedido("SB", 1)).NossoNoDocumento, 1);
}

} // namespace
} // namespace orvex::testes
