// Grids: the current cell, edits, tick boxes, and how they end when the keyboard leaves.
#include "tests/qt/janela_aberta.h"

#include <QLineEdit>
#include <QTableView>

#include <gtest/gtest.h>

namespace orvex::testes {
namespace {

constexpr int coluna_nome = 1;
constexpr int coluna_peso = 2;
constexpr int coluna_marca = 4;

struct Grelhas : testing::Test, JanelaAberta {
    common::Grelha& grelha() { return ecra.grelha; }
    QTableView& vista() { return em<QTableView>("grelha"); }
    QLineEdit* editor() { return vista().findChild<QLineEdit*>("editor"); }
    std::string nome(int linha) { return grelha().texto(linha, "Nome"); }
};

TEST_F(Grelhas, EscreverAbreAEdicaoEEnterGuardaESegue) {
    clica_celula("grelha", 1, coluna_nome);
    escreve("Bobine redonda"); // of ten letters at most
    ASSERT_NE(editor(), nullptr);
    tecla(Qt::Key_Return);
    EXPECT_EQ(nome(1), "Bobine red");
    EXPECT_EQ(grelha().coluna_actual, coluna_peso);
    escreve("1,5");
    tecla(Qt::Key_Tab);
    EXPECT_EQ(grelha().moeda(1, "Peso").texto(), "1.5");
    EXPECT_EQ(com_teclado(), "campo(2)");
}

TEST_F(Grelhas, SairComORatoOuComALetraDeAcessoGuardaAEdicaoPrimeiro) {
    for (const bool rato : {true, false}) {
        SCOPED_TRACE(rato);
        clica_celula("grelha", rato ? 0 : 1, coluna_nome);
        escreve("texto");
        if (rato)
            clica("confirmar");
        else
            tecla(Qt::Key_C, Qt::AltModifier);
        EXPECT_EQ(nome(rato ? 0 : 1), "texto");
        EXPECT_EQ(com_teclado(), "confirmar");
    }
    EXPECT_EQ(ecra.confirmacoes, 2);
}

TEST_F(Grelhas, UmaEdicaoRecusadaVoltaAoTextoAntigoFicaAbertaEEngoleOClique) {
    grelha().BeforeColUpdate = [](int, int, const base::Variante&, bool& Cancel) { Cancel = true; };
    clica_celula("grelha", 0, coluna_peso);
    escreve("99");
    clica("confirmar");
    EXPECT_EQ(ecra.confirmacoes, 0);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->text(), "1");
    EXPECT_EQ(grelha().moeda(0, "Peso").texto(), "1");
}

TEST_F(Grelhas, F2AbreOTextoQueOProgramaPosPorInteiroEEscDesiste) {
    grelha().define_valor(0, "Nome", "texto que o programa pôs");
    clica_celula("grelha", 0, coluna_nome);
    tecla(Qt::Key_F2);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->text(), "texto que o programa pôs");
    editor()->clear();
    escreve("outro");
    tecla(Qt::Key_Escape);
    tecla(Qt::Key_Tab);
    EXPECT_EQ(nome(0), "texto que o programa pôs");
}

TEST_F(Grelhas, AsMarcasMudamComORatoEComOEspacoMasNaoEmLinhasVazias) {
    clica_celula("grelha", 0, coluna_marca);
    EXPECT_TRUE(grelha().valor(0, "Marca").logico());
    tecla(Qt::Key_Space);
    EXPECT_FALSE(grelha().valor(0, "Marca").logico());
    clica_celula("grelha", 3, coluna_marca);
    EXPECT_TRUE(grelha().valor(3, "Marca").nulo());
}

TEST_F(Grelhas, SemFocoNaColunaVaiParaAVizinha) {
    clica_celula("grelha", 1, 0);
    EXPECT_EQ(grelha().linha_actual, 2);
    EXPECT_EQ(grelha().coluna_actual, coluna_nome);
    EXPECT_EQ(vista().currentIndex().column(), coluna_nome);
    tecla(Qt::Key_Left);
    EXPECT_EQ(grelha().coluna_actual, coluna_nome);
}

TEST_F(Grelhas, EnterEspacoEDuploCliqueEscolhemALinha) {
    int escolhidas = 0;
    grelha().DblClick = [&] { ++escolhidas; };
    clica_celula("grelha", 1, coluna_nome);
    tecla(Qt::Key_Return);
    tecla(Qt::Key_Space);
    QTest::mouseDClick(vista().viewport(), Qt::LeftButton, {}, celula(qt, "grelha", 1, coluna_nome));
    EXPECT_EQ(escolhidas, 3);
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(Grelhas, CtrlDeleteApagaALinhaQuandoPodeSer) {
    clica_celula("grelha", 0, coluna_nome);
    tecla(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(grelha().texto(0, "Artigo"), "A0");
    grelha().permite_apagar = true;
    tecla(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(grelha().texto(0, "Artigo"), "A1");
    EXPECT_EQ(vista().model()->rowCount(), 3);
}

TEST_F(Grelhas, LinhasPintadasTemCorELetraLegivel) {
    grelha().estilo = common::EstiloCondicional{0, "A1", 0x203040};
    const QModelIndex pintada = vista().model()->index(1, coluna_nome);
    EXPECT_EQ(pintada.data(Qt::BackgroundRole).value<QBrush>().color(), QColor(0x20, 0x30, 0x40));
    EXPECT_EQ(pintada.data(Qt::ForegroundRole).value<QBrush>().color(), QColor(Qt::white));
    EXPECT_FALSE(vista().model()->index(0, coluna_nome).data(Qt::BackgroundRole).isValid());
    EXPECT_EQ(vista().model()->headerData(coluna_peso, Qt::Horizontal).toString(), "Peso (t)");
}

TEST_F(Grelhas, AsLargurasFicamParaAProximaVez) {
    vista().setColumnWidth(coluna_peso, 133);
    qt.close();
    JanelaAberta outra;
    EXPECT_EQ(outra.em<QTableView>("grelha").columnWidth(coluna_peso), 133);
}

TEST_F(Grelhas, SoMostraAsMudancasComORedesenhoLigado) {
    grelha().redesenha = false;
    grelha().garante_linha(9999);
    qt.mostra();
    EXPECT_EQ(vista().model()->rowCount(), 4);
    grelha().redesenha = true;
    grelha().linha_actual = 10000;
    qt.mostra();
    EXPECT_EQ(vista().model()->rowCount(), 10000);
    EXPECT_TRUE(vista().viewport()->rect().intersects(vista().visualRect(vista().currentIndex())));
}

} // namespace
} // namespace orvex::testes
