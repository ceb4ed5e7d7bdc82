// The stock-adjustment window: its layout, and an adjustment made, replaced and cancelled by keyboard.
#include "platform/qt/janela_mov_stocks.h"
#include "tests/adjust/ecra_ajuste.h"
#include "tests/qt/na_janela.h"

#include <QLabel>
#include <QLineEdit>

namespace orvex::testes {
namespace {

struct JanelaDosAjustes : testing::Test, NaJanela<EcraAjuste, platform::qt::JanelaMovStocks> {
    JanelaDosAjustes() : NaJanela(1) {}
};

TEST_F(JanelaDosAjustes, TemTodosOsControlosECabeInteiraNumEcraPequenoA200PorCento) {
    const QSize minimo = qt.minimumSizeHint();
    EXPECT_LE(minimo.width(), 504); // 1024 x 768, less the frame and the bar of the desktop
    EXPECT_LE(minimo.height(), 350);
    ecra.btAnular.Visible = true;
    ecra.Label2(1).Caption = std::string(300, 'W');
    qt.mostra();
    qt.resize(minimo);
    for (const common::Controlo* controlo : ecra.controlos())
        EXPECT_TRUE(qt.rect().contains(lugar(em<QWidget>(controlo->nome.c_str())))) << controlo->nome;
}

TEST_F(JanelaDosAjustes, FazSubstituiEAnulaUmaSobraSoComOTeclado) {
    tecla(Qt::Key_F4, {}, {ok}); // the first item of the list
    EXPECT_EQ(em<QLabel>("Label2(1)").text(), "Bobina d'aço");
    EXPECT_EQ(com_teclado(), "campo(2)");
    tecla(Qt::Key_Return);
    escreve_e_entra("6");
    const auto textos = tecla(Qt::Key_C, Qt::AltModifier, {para_ok, para_ok, ok});
    EXPECT_THAT(textos, testing::ElementsAre(testing::StartsWith("A Sobra é supeior ou igual a 150 Kg!\n"),
                                             testing::_, "Foi gerado o Documento   :  1"));
    EXPECT_EQ(documentos(), "SB|1|0 / SB|1");

    tecla(Qt::Key_D, Qt::AltModifier, {ok}); // the first adjustment of the list
    EXPECT_EQ(conteudo(), "CEDIDA|6||1|Excesso de Peso|1||15-03-2019");
    EXPECT_EQ(em<QLineEdit>("campo(3)").text(), "1");
    EXPECT_EQ(em<QLabel>("Label2(3)").text(), "Quantidade");
    EXPECT_EQ(em<QWidget>("campo(3)").accessibleName(), "Quantidade");
    EXPECT_TRUE(em<QWidget>("btAnular").isVisible());
    tecla(Qt::Key_Return);
    escreve("0,1");
    tecla(Qt::Key_C, Qt::AltModifier, {para_ok, ok});
    EXPECT_EQ(documentos(), "SB|1|-1; SB|0.1|0 / SB|0.1");

    tecla(Qt::Key_D, Qt::AltModifier, {ok});
    tecla(Qt::Key_A, Qt::AltModifier, {para_ok});
    EXPECT_EQ(documentos(), "SB|1|-1; SB|0.1|-1 / ");
    EXPECT_FALSE(em<QWidget>("btAnular").isVisible());
}

} // namespace
} // namespace orvex::testes
