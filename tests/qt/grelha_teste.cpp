// Grids: the current cell, edits, tick boxes, and how they end when the keyboard leaves.
#include "tests/qt/ecra_teste.h"

#include <QLineEdit>
#include <QTableView>

#include <gtest/gtest.h>

namespace orvex::testes {
namespace {

constexpr int coluna_nome = 1;
constexpr int coluna_peso = 2;
constexpr int coluna_marca = 4;

class Grelhas : public ::testing::Test {
  protected:
    QWidget& janela() { return *aberta.janela; }
    common::Grelha& grelha() { return aberta.ecra.grelha; }
    QTableView& vista() { return widget<QTableView>(janela(), "grelha"); }
    QLineEdit* editor() { return vista().findChild<QLineEdit*>("editor"); }
    std::string nome(int linha) { return grelha().texto(linha, "Nome"); }
    void recusa_edicoes() {
        grelha().BeforeColUpdate = [](int, int, const base::Variante&, bool& Cancel) { Cancel = true; };
    }

    JanelaAberta aberta;
};

TEST_F(Grelhas, EscreverAbreAEdicaoEEnterGuardaESegue) {
    aberta.clica_celula(1, coluna_nome);
    escreve(janela(), "Bobine");
    ASSERT_NE(editor(), nullptr);
    tecla(janela(), Qt::Key_Return);
    EXPECT_EQ(nome(1), "Bobine");
    EXPECT_EQ(grelha().coluna_actual, coluna_peso);
    escreve(janela(), "1,5");
    tecla(janela(), Qt::Key_Tab);
    EXPECT_EQ(grelha().moeda(1, "Peso").texto(), "1.5");
    EXPECT_EQ(com_foco(janela()), "campo(2)");
}

TEST_F(Grelhas, UmaEdicaoRecusadaVoltaAoTextoAntigoEFicaAberta) {
    recusa_edicoes();
    aberta.clica_celula(0, coluna_peso);
    escreve(janela(), "99");
    tecla(janela(), Qt::Key_Return);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->text(), "1");
    EXPECT_EQ(grelha().moeda(0, "Peso").texto(), "1");
}

TEST_F(Grelhas, SairComORatoOuComALetraDeAcessoGuardaAEdicaoPrimeiro) {
    for (const bool rato : {true, false}) {
        SCOPED_TRACE(rato);
        aberta.clica_celula(rato ? 0 : 1, coluna_nome);
        escreve(janela(), "texto");
        if (rato)
            aberta.clica("confirmar");
        else
            tecla(janela(), Qt::Key_C, Qt::AltModifier);
        EXPECT_EQ(nome(rato ? 0 : 1), "texto");
        EXPECT_EQ(com_foco(janela()), "confirmar");
    }
    EXPECT_EQ(aberta.ecra.confirmacoes, 2);

    recusa_edicoes();
    aberta.clica_celula(0, coluna_nome);
    escreve(janela(), "outro");
    aberta.clica("confirmar");
    EXPECT_EQ(aberta.ecra.confirmacoes, 2) << "the click after a refused edit does nothing";
    EXPECT_NE(editor(), nullptr);
}

TEST_F(Grelhas, EscDesisteDaEdicao) {
    aberta.clica_celula(0, coluna_nome);
    escreve(janela(), "texto");
    tecla(janela(), Qt::Key_Escape);
    EXPECT_EQ(nome(0), "");
    tecla(janela(), Qt::Key_Tab);
    EXPECT_EQ(nome(0), "");
}

TEST_F(Grelhas, OLimiteDaColunaValeSoParaQuemEscreve) {
    grelha().define_valor(0, "Nome", "texto que o programa pôs");
    aberta.clica_celula(0, coluna_nome);
    tecla(janela(), Qt::Key_F2);
    ASSERT_NE(editor(), nullptr);
    EXPECT_EQ(editor()->text(), "texto que o programa pôs");
    editor()->clear();
    escreve(janela(), "0123456789abc");
    tecla(janela(), Qt::Key_Return);
    EXPECT_EQ(nome(0), "0123456789");
}

TEST_F(Grelhas, AsMarcasMudamComORatoEComOEspacoMasNaoEmLinhasVazias) {
    aberta.clica_celula(0, coluna_marca);
    EXPECT_TRUE(grelha().valor(0, "Marca").logico());
    tecla(janela(), Qt::Key_Space);
    EXPECT_FALSE(grelha().valor(0, "Marca").logico());
    aberta.clica_celula(3, coluna_marca);
    EXPECT_TRUE(grelha().valor(3, "Marca").nulo());
}

TEST_F(Grelhas, SemFocoNaColunaVaiParaAVizinha) {
    aberta.clica_celula(1, 0);
    EXPECT_EQ(grelha().linha_actual, 2);
    EXPECT_EQ(grelha().coluna_actual, coluna_nome);
    EXPECT_EQ(vista().currentIndex().column(), coluna_nome);
    tecla(janela(), Qt::Key_Left);
    EXPECT_EQ(grelha().coluna_actual, coluna_nome);
}

TEST_F(Grelhas, EnterEspacoEDuploCliqueEscolhemALinha) {
    int escolhidas = 0;
    grelha().DblClick = [&] { ++escolhidas; };
    aberta.clica_celula(1, coluna_nome);
    tecla(janela(), Qt::Key_Return);
    tecla(janela(), Qt::Key_Space);
    QTest::mouseDClick(vista().viewport(), Qt::LeftButton, {}, celula(janela(), "grelha", 1, coluna_nome));
    EXPECT_EQ(escolhidas, 3);
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(Grelhas, CtrlDeleteApagaALinhaQuandoPodeSer) {
    aberta.clica_celula(0, coluna_nome);
    tecla(janela(), Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(grelha().texto(0, "Artigo"), "A0");
    grelha().permite_apagar = true;
    tecla(janela(), Qt::Key_Delete, Qt::ControlModifier);
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
    janela().close();
    JanelaAberta outra;
    EXPECT_EQ(widget<QTableView>(*outra.janela, "grelha").columnWidth(coluna_peso), 133);
}

TEST_F(Grelhas, SoMostraAsMudancasComORedesenhoLigado) {
    grelha().redesenha = false;
    grelha().garante_linha(9999);
    aberta.janela->mostra();
    EXPECT_EQ(vista().model()->rowCount(), 4);
    grelha().redesenha = true;
    grelha().linha_actual = 10000;
    aberta.janela->mostra();
    EXPECT_EQ(vista().model()->rowCount(), 10000);
    EXPECT_TRUE(vista().viewport()->rect().intersects(vista().visualRect(vista().currentIndex())));
}

} // namespace
} // namespace orvex::testes
