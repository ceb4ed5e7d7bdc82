// Grids: the current cell, edits, tick boxes, and how they end when the keyboard leaves.
#include "tests/qt/na_janela.h"

namespace orvex::testes {
namespace {

constexpr int coluna_nome = 1;
constexpr int coluna_peso = 2;
constexpr int coluna_marca = 4;

struct Grelhas : testing::Test, JanelaAberta {
    common::Grelha& grelha() { return ecra.grelha; }
    QTableView& vista() { return em<QTableView>("grelha"); }
    QLineEdit* editor() { return qobject_cast<QLineEdit*>(qt.focusWidget()); }
    std::string nome(int linha) { return grelha().texto(linha, "Nome"); }
    std::string peso(int linha) { return grelha().moeda(linha, "Peso").texto(); }
};

TEST_F(Grelhas, EscreverOuF2AbreAEdicaoEnterETabGuardamEEscDesiste) {
    clica_celula("grelha", 1, coluna_nome);
    joga("«Bobine redonda», Return"); // of ten letters at most
    EXPECT_EQ(nome(1), "Bobine red");
    EXPECT_EQ(grelha().coluna_actual, coluna_peso);
    joga("«1,5», Tab");
    EXPECT_EQ(peso(1), "1.5");
    EXPECT_EQ(com_teclado(), "campo(2)");

    grelha().define_valor(0, "Nome", "texto que o programa pôs");
    clica_celula("grelha", 0, coluna_nome);
    tecla(Qt::Key_F2);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->text(), "texto que o programa pôs");
    editor()->clear();
    joga("«outro», Esc, Tab");
    EXPECT_EQ(nome(0), "texto que o programa pôs");
}

TEST_F(Grelhas, SairComORatoOuComALetraDeAcessoGuardaAEdicaoEUmaRecusaRepoeOTextoEEngoleOClique) {
    bool recusa = true;
    grelha().BeforeColUpdate = [&](int, int, const base::Variante&, bool& Cancel) { Cancel = recusa; };
    clica_celula("grelha", 0, coluna_peso);
    escreve("99");
    clica("confirmar");
    EXPECT_EQ(ecra.confirmacoes, 0);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->text(), "1");
    EXPECT_EQ(peso(0), "1");

    recusa = false;
    escreve("7");
    clica("confirmar");
    clica_celula("grelha", 1, coluna_peso);
    joga("«8», Alt+C");
    EXPECT_EQ(peso(0) + "|" + peso(1), "7|8");
    EXPECT_EQ(ecra.confirmacoes, 2);
}

TEST_F(Grelhas, EscreverOMesmoContaComoEscritoEAbrirAEdicaoSoPorSiNaoOQueEColadoEAparado) {
    int verificadas = 0;
    grelha().BeforeColUpdate = [&](int, int, const base::Variante&, bool&) { ++verificadas; };
    clica_celula("grelha", 0, coluna_peso);
    joga("F2, Return");
    EXPECT_EQ(verificadas, 0);
    clica_celula("grelha", 0, coluna_peso);
    joga("«1», Return");
    EXPECT_EQ(verificadas, 1);
    EXPECT_EQ(peso(0), "1");
    clica_celula("grelha", 0, coluna_nome);
    tecla(Qt::Key_F2);
    QGuiApplication::clipboard()->setText(" a\tb\r\n");
    joga("Ctrl+V, Return");
    EXPECT_EQ(nome(0), "a b");
}

TEST_F(Grelhas, SemFocoNaColunaVaiParaAVizinhaEUmaLinhaVaziaNaoTemMarca) {
    clica_celula("grelha", 1, 0);
    EXPECT_EQ(grelha().linha_actual, 2);
    EXPECT_EQ(grelha().coluna_actual, coluna_nome);
    EXPECT_EQ(vista().currentIndex().column(), coluna_nome);
    tecla(Qt::Key_Left);
    EXPECT_EQ(grelha().coluna_actual, coluna_nome);
    clica_celula("grelha", 3, coluna_marca);
    EXPECT_TRUE(grelha().valor(3, "Marca").nulo());
}

TEST_F(Grelhas, EnterEspacoEDuploCliqueEscolhemALinhaECtrlDeleteApagaAQuandoPodeSer) {
    int escolhidas = 0;
    grelha().DblClick = [&] { ++escolhidas; };
    clica_celula("grelha", 0, coluna_nome);
    joga("Return, Space");
    QTest::mouseDClick(vista().viewport(), Qt::LeftButton, {}, celula(qt, "grelha", 0, coluna_nome));
    EXPECT_EQ(escolhidas, 3);

    tecla(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(vista().model()->rowCount(), 4);
    grelha().permite_apagar = true;
    tecla(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(vista().model()->rowCount(), 3);
    EXPECT_EQ(grelha().texto(0, "Artigo"), "A1");
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
