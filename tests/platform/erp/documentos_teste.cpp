#include "tests/platform/erp/empresa_erp.h"

namespace orvex::testes {
namespace {

using DocumentosErp = EmpresaErp;

TEST_F(DocumentosErp, DaONumeroAQuemGravaPrimeiroENaoORepeteComDoisPostosAoMesmoTempo) {
    SessaoERPEmbebida outra;
    liga(outra);
    auto daqui = documento(sessao, {{"BOB2", "1"}});
    auto dali = documento(outra, {{"BOB2", "1"}});
    ASSERT_EQ(sessao.SubmeteDocumento(3, daqui), 0);
    EXPECT_EQ(emite(outra, dali), "");
    EXPECT_EQ(emite(sessao, daqui), "");
    EXPECT_EQ(numero(dali), 1);
    EXPECT_EQ(numero(daqui), 2);
}

TEST_F(DocumentosErp, RecusaComMensagemOQueNaoPodeGravarENadaFicaGravado) {
    const auto antes = empresa.stock();
    // Artigo, quantidade, armazém => membro do cabeçalho => o que lá se põe => mensagem.
    for (const auto& caso :
         tabela({" => Sector => SG => O documento não tem linhas.",
                 "X|1|OR => Sector => SG => O artigo «X» não existe.",
                 "BOB2|-1|OR => Sector => SG => A quantidade não pode ser negativa.",
                 "BOB2|1|A7 => Sector => SG => O armazém «A7» não existe.",
                 "BOB2|1|OR => Terceiro => X => O cliente «X» não existe ou está inactivo.",
                 "BOB2|1|OR => Terceiro => INA => O cliente «INA» não existe ou está inactivo.",
                 "BOB2|1|OR => Terceiro =>  => Falta o cliente do documento.",
                 "BOB2|1|OR => Serie => 2 => O tipo de documento «GR» não existe na série 2.",
                 "BOB2|1|OR => Data =>  => Falta a data do documento.",
                 "BOB2|1|OR => Processo => 1234567890123456789012345678901 => O campo Processo não pode ter "
                 "mais de 30 caracteres."})) {
        std::vector<Linha> linhas;
        const auto p = partes(caso[0], "|"); // the lines point into it
        if (p.size() > 1) linhas = {{p[0], p[1].c_str(), p[2]}};
        auto novo = documento(sessao, linhas);
        novo->obtem("Cab").objecto->poe(caso[1], caso[2]);
        EXPECT_EQ(sessao.SubmeteDocumento(3, novo), -1) << caso[3];
        EXPECT_EQ(sessao.ResultadoUltimo().mensagem, caso[3]);
        EXPECT_EQ(sessao.DocumentoSubmetido(), nullptr);
    }
    EXPECT_EQ(empresa.linhas("select * from DocGcCab") + empresa.stock(), antes);
}

TEST_F(DocumentosErp, UmaFalhaAMeioOuUmErpOcupadoNaoDeixaNadaGravadoNemGastaONumero) {
    auto outra =
        platform::sqlite::abre_base(empresa.pasta() / platform::sqlite::ficheiro_erp, SQLite::OPEN_READWRITE);
    std::int64_t seguinte = 0;
    for (const auto& caso :
         tabela({"alter table artarm rename to longe => alter table longe rename to artarm => ",
                 "begin immediate => rollback => ocupada por outro posto"})) {
        auto novo = documento(sessao, {{"BOB2", "1"}});
        outra.exec(caso[0]);
        const std::string mensagem = emite(sessao, novo);
        EXPECT_THAT(mensagem, testing::AllOf(testing::Ne(""), testing::HasSubstr(caso[2])));
        EXPECT_FALSE(sessao.AnulaDocumento(1, {2026, "GR", 1, 1}).sucesso);
        outra.exec(caso[1]);
        EXPECT_EQ(numero(novo), 0) << "um número que não ficou gravado não fica no documento";
        EXPECT_EQ(emite(sessao, novo), "");
        EXPECT_EQ(numero(novo), ++seguinte);
    }
}

TEST_F(DocumentosErp, DeixamOStockNegativoAoUltimoPrecoEOCustoVoltaASerOQueEraAoAnular) {
    EXPECT_EQ(emite(sessao, documento(sessao, {{"SEM", "2"}})), "");
    EXPECT_EQ(stock("SEM"), "-2 = -2|-100");
    EXPECT_EQ(emite(sessao, documento(sessao, {{"BOB2", "20"}})), "");
    EXPECT_EQ(stock("BOB2"), "10; -10 = 0|0");
    for (const int numero : {1, 2})
        EXPECT_TRUE(sessao.AnulaDocumento(1, {2026, "GR", 1, numero}).sucesso);
    EXPECT_EQ(stock("SEM"), "0 = 0|0");
    EXPECT_EQ(stock("BOB2"), "10; 10 = 20|2000");
    EXPECT_EQ(sessao.AnulaDocumento(1, {2026, "SB", 1, 9}).mensagem, "O documento SB/1/9/2026 não existe.");
}

TEST_F(DocumentosErp, RecusaODocumentoDeStockQueNaoPodeCriarENaoGastaNumero) {
    startup::PedidoDocStock pedido{.sector = "1", .serie = 1, .processo = "P1", .armazem = "OR"};
    pedido.artigos = {"", "BOB2"};
    pedido.textos_15 = pedido.textos_18 = {"", ""};
    pedido.precos = {0, 100};
    for (const auto& [tipo, quantidade, data, destino] : {std::tuple{"TR", 1, "05-03-2026", "A7"},
                                                          {"SB", 1, "ontem", "CL"},
                                                          {"FA", 1, "05-03-2026", "CL"},
                                                          {"ZZ", 1, "05-03-2026", "CL"},
                                                          {"QB", -1, "05-03-2026", "CL"},
                                                          {"SB", 1, "05-03-2026", "CL"}}) {
        EXPECT_EQ(empresa.linhas("select * from DocGcCab"), "");
        pedido.tipo_documento = tipo;
        pedido.quantidades = {0, static_cast<double>(quantidade)};
        pedido.data = data;
        pedido.destino = destino;
        const bool criado = sessao.CriaDocStock(pedido) == startup::ChaveDocumento{2026, "SB", 1, 1};
        EXPECT_EQ(sessao.ResultadoUltimo().sucesso, criado) << tipo;
        EXPECT_EQ(sessao.ResultadoUltimo().mensagem.empty(), criado) << tipo;
    }
    EXPECT_EQ(empresa.linhas("select TpTerc, Processo, Data, NVias from DocGcCab"),
              "1|P1|2026-03-05 00:00:00|0");
}

} // namespace
} // namespace orvex::testes
