#include "tests/apoio/tabela.h"
#include "tests/platform/erp/empresa_erp.h"

namespace orvex::testes {
namespace {

using DocumentosErp = EmpresaErp;

TEST_F(DocumentosErp,
       a_numeracao_e_de_cada_ano_tipo_e_serie_e_nao_repete_nem_com_dois_postos_ao_mesmo_tempo) {
    EXPECT_EQ(emitido({{"BOB2", "1"}}), 1);
    EXPECT_EQ(emitido({{"BOB2", "1"}}), 2);
    EXPECT_EQ(emitido({{"BOB2", "1"}}, "GV"), 1);
    EXPECT_EQ(emitido({{"BOB2", "1"}}, "GR", 2025), 1);
    EXPECT_TRUE(sessao.AnulaDocumento(1, {2026, "GR", 1, 2}).sucesso);
    EXPECT_EQ(emitido({{"BOB2", "1"}}), 3);

    SessaoERPEmbebida outra;
    liga(outra);
    auto daqui = documento(sessao, {{"BOB2", "1"}});
    auto dali = documento(outra, {{"BOB2", "1"}});
    ASSERT_EQ(sessao.SubmeteDocumento(3, daqui), 0);
    EXPECT_EQ(emite(outra, dali), "");
    EXPECT_EQ(emite(sessao, daqui), "");
    EXPECT_EQ(numero(dali), 4);
    EXPECT_EQ(numero(daqui), 5);
}

TEST_F(DocumentosErp,
       um_cabecalho_completo_traz_os_dados_do_cliente_e_uma_linha_os_do_artigo_mas_vazios_nada) {
    auto vazio = sessao.CriaObjecto("SageApiNextPlus.DocumentoComercial");
    EXPECT_NE(vazio->chama("Validar", {}).valor.inteiro(), 0) << "avisa sem falhar";
    EXPECT_NE(vazio->obtem("UltimaMensagem").valor.texto(), "");

    auto completo = documento(sessao, {});
    EXPECT_EQ(completo->chama("Validar", {}).valor.inteiro(), 0);
    auto cab = completo->obtem("Cab").objecto;
    EXPECT_EQ(cab->obtem("NumeroContribuinte").valor.texto(), "123456789");
    EXPECT_EQ(cab->obtem("Vendedor").valor.texto(), "V'2");

    auto linha = sessao.CriaObjecto("SageApiNextPlus.DocumentosGcLin");
    const auto sugere = [&](const char* artigo) {
        linha->poe("Artigo", artigo);
        completo->chama("SugereValoresLin", {linha, true, true, true, true, true, false, true});
        return linha->obtem("descricao").valor.texto() + "|" + linha->obtem("Unidade").valor.texto() + "|" +
               linha->obtem("TaxaIVA").valor.texto();
    };
    EXPECT_EQ(sugere(""), "||0");
    EXPECT_EQ(sugere("SEM"), "Sem existência|TON|6");
}

TEST_F(DocumentosErp, recusa_com_mensagem_o_que_nao_pode_gravar_e_nada_fica_gravado) {
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

TEST_F(DocumentosErp, uma_falha_a_meio_ou_um_erp_ocupado_nao_deixa_nada_gravado_nem_gasta_o_numero) {
    auto outra = outra_ligacao();
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

TEST_F(DocumentosErp, finalizar_recusa_o_que_nao_foi_submetido_o_que_ja_foi_gravado_e_uma_chave_trocada) {
    auto novo = documento(sessao, {{"BOB2", "1"}});
    const auto finaliza = [&](std::vector<startup::ValorERP> argumentos) {
        return novo->chama("Finalizar", argumentos).valor.inteiro();
    };
    EXPECT_NE(finaliza({0, 0, "GR", 2026}), 0);
    ASSERT_EQ(sessao.SubmeteDocumento(3, novo), 0);
    for (const auto& trocada : std::vector<std::vector<startup::ValorERP>>{
             {0, 0, "GV", 2026}, {0, 0, "GR", 2025}, {2026, 0, "GR", 0}})
        EXPECT_NE(finaliza(trocada), 0);
    EXPECT_FALSE(sessao.ResultadoUltimo().sucesso);
    EXPECT_EQ(finaliza({0, 0, "GR", 2026}), 0);
    EXPECT_NE(finaliza({1, 0, "GR", 2026}), 0) << "já gravado";
    EXPECT_EQ(empresa.linhas("select count(*) as n from DocGcCab"), "1");
}

} // namespace
} // namespace orvex::testes
