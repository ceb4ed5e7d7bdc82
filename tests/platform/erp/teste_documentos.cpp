#include "tests/platform/erp/empresa_erp.h"

#include "base/falha.h"

namespace orvex::testes {
namespace {

using DocumentosErp = EmpresaErp;

TEST_F(DocumentosErp, a_numeracao_e_de_cada_ano_tipo_e_serie_e_nao_repete_depois_de_anular) {
    EXPECT_EQ(emitido(sessao, {{"B1", "1"}}), 1);
    EXPECT_EQ(emitido(sessao, {{"B1", "1"}}), 2);
    EXPECT_EQ(emitido(sessao, {{"B1", "1"}}, "GD"), 1);
    EXPECT_EQ(emitido(sessao, {{"B1", "1"}}, "GR", 2025), 1);
    EXPECT_TRUE(sessao.AnulaDocumento(1, {2026, "GR", 1, 2}).sucesso);
    EXPECT_EQ(emitido(sessao, {{"B1", "1"}}), 3);
}

TEST_F(DocumentosErp, dois_postos_ao_mesmo_tempo_recebem_numeros_diferentes) {
    SessaoERPEmbebida outra;
    liga(outra);
    auto daqui = documento(sessao, {{"B1", "1"}});
    auto dali = documento(outra, {{"B1", "1"}});
    ASSERT_EQ(sessao.SubmeteDocumento(3, daqui), 0);
    EXPECT_EQ(emite(outra, dali), "");
    EXPECT_EQ(emite(sessao, daqui), "");
    EXPECT_EQ(numero(dali), 1);
    EXPECT_EQ(numero(daqui), 2);
}

TEST_F(DocumentosErp, as_linhas_numeram_se_de_1_a_n_pela_ordem_em_que_entram_textos_incluidos) {
    emitido(sessao, {{"", "0", "", "O material"}, {"B2", "1.5"}, {"", "0", "", "Obrigado"}, {"B1", "2.25"}});
    auto lido = sessao.CriaObjecto("SageApiNextPlus.DocumentoComercial");
    ASSERT_EQ(lido->chama("Ler", {2026, 1, 1, "GR"}).valor.inteiro(), 0);
    auto linhas = lido->obtem("Linhas").objecto;
    ASSERT_EQ(linhas->obtem("Count").valor.inteiro(), 4);
    std::string resumo;
    for (int i = 1; i <= 4; ++i) {
        auto linha = linhas->chama("Item", {i}).objecto;
        for (const char* membro :
             {"NumeroDaLinha", "Artigo", "descricao", "Quantidade", "Armazem", "Unidade"})
            resumo += linha->obtem(membro).valor.texto() + ";";
        resumo += "\n";
    }
    EXPECT_EQ(resumo,
              "1;;O material;0;;;\n2;B2;Bobine;1.5;A1;TN;\n3;;Obrigado;0;;;\n4;B1;Bobine;2.25;A1;TN;\n");
}

TEST_F(DocumentosErp, ler_da_de_volta_o_cabecalho_como_foi_posto) {
    auto novo = documento(sessao, {{"B1", "1"}});
    auto cab = novo->obtem("Cab").objecto;
    const std::pair<const char*, const char*> postos[] = {{"Processo", "P-1"},
                                                          {"VossoNoDocumento", "V'7"},
                                                          {"NumeroContribuinte", "501"},
                                                          {"Vendedor", "V3"},
                                                          {"Matricula", "AA-00-BB"},
                                                          {"MeiodeTransporte", "Camião"},
                                                          {"LocalCarga", "Águeda"},
                                                          {"LocalDescarga", "Évora"},
                                                          {"DataCarga", "06-03-2026"},
                                                          {"HoraCarga", "09:30:00"},
                                                          {"Sector", "1"},
                                                          {"Terceiro", "C1"}};
    for (const auto& [membro, posto] : postos)
        cab->poe(membro, posto);
    cab->poe("IvaIncluido", false);
    ASSERT_EQ(emite(sessao, novo), "");

    auto lido = sessao.CriaObjecto("SageApiNextPlus.DocumentoComercial");
    ASSERT_EQ(lido->chama("Ler", {2026, 1, 1, "gr"}).valor.inteiro(), 0);
    cab = lido->obtem("Cab").objecto;
    for (const auto& [membro, posto] : postos)
        EXPECT_EQ(cab->obtem(membro).valor.texto(), posto) << membro;
    EXPECT_EQ(cab->obtem("Data").valor.data(), (base::DataHora{2026, 3, 5, 0, 0, 0}));
    EXPECT_EQ(cab->obtem("DataDescarga").valor.texto() + cab->obtem("HoraDescarga").valor.texto(), "");
    EXPECT_EQ(cab->obtem("RegimeIva").valor.texto(), "NAC") << "vem do cliente";
    EXPECT_EQ(cab->obtem("convertido").valor.inteiro(), 0);
    EXPECT_EQ(cab->obtem("NumeroViasemitidas").valor.inteiro(), 0);
    EXPECT_EQ(valor("select DataCarga from DocGcCab").texto(), "2026-03-06 00:00:00");
}

TEST_F(DocumentosErp, ler_um_documento_que_nao_existe_diz_qual) {
    auto novo = sessao.CriaObjecto("SageApiNextPlus.DocumentoComercial");
    EXPECT_NE(novo->chama("Ler", {2026, 1, 77, "GR"}).valor.inteiro(), 0);
    EXPECT_EQ(novo->obtem("UltimaMensagem").valor.texto(), "O documento GR/1/77/2026 não existe.");
    EXPECT_NE(novo->chama("Ler", {2026, 1, 0, "GR"}).valor.inteiro(), 0);
}

TEST_F(DocumentosErp, validar_um_cabecalho_vazio_avisa_sem_falhar_e_um_completo_traz_os_dados_do_cliente) {
    auto vazio = sessao.CriaObjecto("SageApiNextPlus.DocumentoComercial");
    EXPECT_NE(vazio->chama("Validar", {}).valor.inteiro(), 0);
    EXPECT_NE(vazio->obtem("UltimaMensagem").valor.texto(), "");

    auto completo = documento(sessao, {});
    EXPECT_EQ(completo->chama("Validar", {}).valor.inteiro(), 0);
    auto cab = completo->obtem("Cab").objecto;
    EXPECT_EQ(cab->obtem("NumeroContribuinte").valor.texto(), "500000000");
    EXPECT_EQ(cab->obtem("Vendedor").valor.texto(), "V1");
}

TEST_F(DocumentosErp, sugere_os_valores_do_artigo_e_nada_para_uma_linha_sem_artigo) {
    auto novo = documento(sessao, {});
    auto linha = sessao.CriaObjecto("SageApiNextPlus.DocumentosGcLin");
    const auto sugere = [&](const char* artigo) {
        linha->poe("Artigo", artigo);
        novo->chama("SugereValoresLin", {linha, true, true, true, true, true, false, true});
        return linha->obtem("descricao").valor.texto() + "|" + linha->obtem("Unidade").valor.texto() + "|" +
               linha->obtem("TaxaIVA").valor.texto();
    };
    EXPECT_EQ(sugere(""), "||0");
    EXPECT_EQ(sugere("B2"), "Bobine dois|TN|6");
}

TEST_F(DocumentosErp, recusa_com_mensagem_o_que_nao_pode_gravar_e_nada_fica_gravado) {
    using Estraga = void (*)(startup::ObjectoERP&);
    const auto nada = [](startup::ObjectoERP&) {};
    const struct {
        std::vector<Linha> linhas;
        Estraga estraga;
        const char* mensagem;
    } casos[] = {{{}, nada, "O documento não tem linhas."},
                 {{{"X", "1"}}, nada, "O artigo «X» não existe."},
                 {{{"B1", "-1"}}, nada, "A quantidade não pode ser negativa."},
                 {{{"B1", "1", "A7"}}, nada, "O armazém «A7» não existe."},
                 {{{"B1", "1"}},
                  [](auto& cab) { cab.poe("Terceiro", "X"); },
                  "O cliente «X» não existe ou está inactivo."},
                 {{{"B1", "1"}},
                  [](auto& cab) { cab.poe("Terceiro", "C9"); },
                  "O cliente «C9» não existe ou está inactivo."},
                 {{{"B1", "1"}}, [](auto& cab) { cab.poe("Terceiro", ""); }, "Falta o cliente do documento."},
                 {{{"B1", "1"}},
                  [](auto& cab) { cab.poe("Serie", 2); },
                  "O tipo de documento «GR» não existe na série 2."},
                 {{{"B1", "1"}}, [](auto& cab) { cab.poe("Data", ""); }, "Falta a data do documento."},
                 {{{"B1", "1"}},
                  [](auto& cab) { cab.poe("Processo", std::string(31, 'x')); },
                  "O campo Processo não pode ter mais de 30 caracteres."}};
    for (const auto& caso : casos) {
        auto novo = documento(sessao, caso.linhas);
        caso.estraga(*novo->obtem("Cab").objecto);
        EXPECT_EQ(sessao.SubmeteDocumento(3, novo), -1) << caso.mensagem;
        EXPECT_EQ(sessao.ResultadoUltimo().mensagem, caso.mensagem);
        EXPECT_EQ(sessao.DocumentoSubmetido(), nullptr);
    }
    EXPECT_EQ(valor("select count(*) from DocGcCab").inteiro(), 0);
    EXPECT_EQ(no_armazem("B1", "A1"), moeda("10"));
}

TEST_F(DocumentosErp, uma_falha_a_meio_nao_deixa_nada_gravado_nem_gasta_o_numero) {
    auto novo = documento(sessao, {{"B1", "1"}});
    base.bd().exec("alter table artarm rename to longe");
    EXPECT_NE(emite(sessao, novo), "");
    base.bd().exec("alter table longe rename to artarm");
    EXPECT_EQ(valor("select count(*) from DocGcCab").inteiro(), 0);
    EXPECT_EQ(numero(novo), 0);
    EXPECT_EQ(emite(sessao, novo), "");
    EXPECT_EQ(numero(novo), 1);
}

TEST_F(DocumentosErp, finalizar_recusa_o_que_nao_foi_submetido_o_que_ja_foi_gravado_e_uma_chave_trocada) {
    auto novo = documento(sessao, {{"B1", "1"}});
    const auto finaliza = [&](std::vector<startup::ValorERP> argumentos) {
        return novo->chama("Finalizar", argumentos).valor.inteiro();
    };
    EXPECT_NE(finaliza({0, 0, "GR", 2026}), 0);
    ASSERT_EQ(sessao.SubmeteDocumento(3, novo), 0);
    for (const auto& trocada : std::vector<std::vector<startup::ValorERP>>{
             {0, 0, "GD", 2026}, {0, 0, "GR", 2025}, {2026, 0, "GR", 0}})
        EXPECT_NE(finaliza(trocada), 0);
    EXPECT_FALSE(sessao.ResultadoUltimo().sucesso);
    EXPECT_EQ(finaliza({0, 0, "GR", 2026}), 0);
    EXPECT_NE(finaliza({1, 0, "GR", 2026}), 0) << "já gravado";
    EXPECT_EQ(valor("select count(*) from DocGcCab").inteiro(), 1);
}

} // namespace
} // namespace orvex::testes
