// Lines sorted by a heading, found by typing, and picked as a barcode reader does it.
#include "platform/qt/janelas/janela_guias_remessa.h"
#include "tests/delivery/ecra_guias.h"
#include "tests/qt/na_janela.h"

namespace orvex::testes {
namespace {

constexpr int pausa_de_pessoa_ms = 200;

// The open lines BOB'1, BOB2, BOB3 of FR/2/9 and BOB3 of FA/1/1130.
struct ComMaisUmaFactura : EcraGuias {
    ComMaisUmaFactura() {
        insere_linha(empresa.outra(), {"FA", 1, 1130, 1, "BOB3", m("10"), m("10.1"), "OR"});
    }
};
struct LinhasAbertas : testing::Test, NaJanela<ComMaisUmaFactura, platform::qt::JanelaGuiasRemessa> {
    LinhasAbertas() {
        joga("«CL'1», Return");
        clica_celula("Detalhe", 0, 1);
    }
    std::string dito() { return em<QLabel>("ajuda").text().toStdString(); }
    std::string actual() {
        const int linha = ecra.Detalhe.linha_actual - 1;
        return ecra.Detalhe.texto(linha, "Artigo") + " " + ecra.Detalhe.texto(linha, "Doc");
    }
    void clica_titulo(int coluna) {
        const QHeaderView& titulos = *em<QTableView>("Detalhe").horizontalHeader();
        QTest::mouseClick(titulos.viewport(), Qt::LeftButton, {},
                          {titulos.sectionViewportPosition(coluna) + 10, titulos.height() / 2});
    }
};

TEST_F(LinhasAbertas, OrdenamSePelosTitulosComALinhaActualNoSeuLugarENuncaPorCimaDeUmaRecusa) {
    joga("«bob2», Esc");
    clica_titulo(ecra.Detalhe.coluna("Quant"));
    clica_titulo(ecra.Detalhe.coluna("Quant"));
    EXPECT_EQ(linhas(ecra.Detalhe, {"Quant"}), "10; 3; 2.5; 1.15");
    EXPECT_EQ(actual(), "BOB2 FA/1/123");
    joga("Ctrl+6"); // the document, numbers in it as numbers
    EXPECT_EQ(linhas(ecra.Detalhe, {"Doc"}), "FA/1/123; FA/1/123; FA/1/1130; FR/2/9");
    joga("Return"); // picks what is seen
    EXPECT_EQ(linhas(ecra.Gr, {"Artigo"}), "BOB2");
    clica("campo(1)");
    escreve("x");
    Respostas respostas;
    respostas.carrega(ok);
    clica_titulo(0);
    EXPECT_EQ(com_teclado(), "campo(1)");
    const QHeaderView& titulos = *em<QTableView>("Detalhe").horizontalHeader();
    EXPECT_EQ(titulos.sortIndicatorSection(), ecra.Detalhe.coluna("Doc"));
}

TEST_F(LinhasAbertas, AchamSePeloQueSeEscreveSemAcentosEEscOuBackspaceLargam) {
    for (const auto& caso :
         tabela({"bob2 => BOB2 FA/1/123", "bob => BOB'1 FA/1/123", "D'ACO => BOB'1 FA/1/123",
                 "fr/2 => BOB3 FR/2/9", "1130 => BOB3 FA/1/1130"})) {
        escreve(caso[0].c_str());
        EXPECT_EQ(actual(), caso[1]) << caso[0];
        EXPECT_THAT(dito(), StartsWith("Procurar: " + caso[0]));
        joga("Esc");
        EXPECT_EQ(dito().find("Procurar"), std::string::npos);
    }
    joga("«bob2x», Backspace");
    EXPECT_EQ(dito() + com_teclado(), "Procurar: bob2Detalhe");
}

TEST_F(LinhasAbertas, UmLeitorEscolheAsLinhasDosSeusCodigosSemSairDoLugar) {
    joga("«bob2 », Return, «BOB'1», Return");
    EXPECT_EQ(linhas(ecra.Gr, {"Artigo"}) + com_teclado(), "BOB2; BOB'1Detalhe");
    joga("«BOB», Return, Return"); // the beginning of others, from a reader that sends two
    EXPECT_THAT(dito(), HasSubstr("Não há aqui nenhuma linha do artigo BOB."));
    joga("«0BOB2», Return");
    EXPECT_EQ(linhas(ecra.Gr, {"Artigo"}), "BOB2; BOB'1");

    Respostas respostas;
    respostas.faz([](QWidget& escolha) { // the next code answers nothing; a person does
        testes::escreve(escolha, "OC");
        testes::tecla(escolha, Qt::Key_Return);
        EXPECT_TRUE(escolha.isVisible());
        QTest::qWait(pausa_de_pessoa_ms);
        testes::tecla(escolha, Qt::Key_Down);
        testes::tecla(escolha, Qt::Key_Return);
    });
    joga("«BOB3», Return");
    EXPECT_EQ(linhas(ecra.Gr, {"Doc"}), "2019/FA/1/123; 2019/FA/1/123; 2019/FR/2/9");
    respostas.faz([](QWidget& caixa) {
        QTest::qWait(pausa_de_pessoa_ms);
        testes::tecla(caixa, Qt::Key_Return);
    });
    activa();
    joga("«bob2», Return");
    EXPECT_THAT(respostas.textos, ElementsAre("Impossível seleção!\nLinha esgotada."));
}

TEST_F(LinhasAbertas, EscritasAMaoEscolhemALinhaAchadaESemNadaEscritoAActual) {
    escreve("fr/");
    QTest::qWait(pausa_de_pessoa_ms);
    joga("Return");
    EXPECT_EQ(linhas(ecra.Gr, {"Doc"}) + com_teclado(), "2019/FR/2/9Gr");
    clica_celula("Detalhe", 1, 1);
    joga("Return");
    EXPECT_EQ(linhas(ecra.Gr, {"Artigo"}), "BOB3; BOB2");
}

TEST_F(LinhasAbertas, NaDevolucaoUmLeitorMarcaSemDesmarcarEDizOQueNaoHa) {
    joga("«bob2», Return, «BOB'1», Return");
    tecla(Qt::Key_C, Qt::AltModifier, {ok});
    joga("Tab, «1», Tab, Alt+D, «bob2», Return, «bob2», Return");
    EXPECT_THAT(dito(), HasSubstr("já está marcado"));
    joga("«BOB», Return");
    EXPECT_THAT(dito(), StartsWith("Não há aqui"));
    EXPECT_EQ(linhas(ecra.Final, {"Artigo", "Transf"}), "BOB2|-1; BOB'1|0");
    joga("«bo», Esc");
    EXPECT_TRUE(ecra.Frame3.Visible);
}

} // namespace
} // namespace orvex::testes
