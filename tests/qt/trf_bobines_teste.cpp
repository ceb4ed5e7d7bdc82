// The transfer window: both modes by keyboard.
#include "platform/qt/janela_trf_bobines.h"
#include "tests/qt/na_janela.h"
#include "tests/transfer/ecra_trf.h"

#include <QLabel>

#include <gmock/gmock.h>

namespace orvex::testes {
namespace {

using Aberta = NaJanela<EcraTrf, platform::qt::JanelaTrfBobines>;

TEST(JanelaTrfBobines, AposUmaRecusaUmArtigoPassaParaOutroCliente) {
    Aberta aberta(2);
    const QRect antes = aberta.lugar(aberta.em<QWidget>("campo(4)"));
    aberta.escreve("CASA");
    EXPECT_THAT(aberta.tecla(Qt::Key_Return, {}, {ok}),
                testing::ElementsAre("Este Artigo/Num.Série pertence à ORVEX!"));
    EXPECT_EQ(aberta.com_teclado(), "campo(0)");
    aberta.escreve_e_entra("REEL'1"); // what was refused is selected, and replaced
    EXPECT_EQ(aberta.com_teclado(), "campo(2)");
    aberta.tecla(Qt::Key_F4, {}, {{Qt::Key_Down, Qt::Key_Return}}); // the second client of the list
    EXPECT_EQ(aberta.em<QLabel>("Label2(4)").text(), "Ibérica SL");
    EXPECT_EQ(aberta.lugar(aberta.em<QWidget>("campo(4)")), antes);
    aberta.tecla(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(aberta.rasto(), "CL'1|CL2|-2.5; CL2|CL2|2.5");
}

TEST(JanelaTrfBobines, SemClienteDestinoNaoHaLugarParaEleEOArtigoVoltaAORVEX) {
    Aberta aberta(1);
    EXPECT_LT(aberta.lugar(aberta.em<QWidget>("DTPicker1")).top() -
                  aberta.lugar(aberta.em<QWidget>("campo(1)")).bottom(),
              20);
    const QSize minimo = aberta.qt.minimumSizeHint();
    EXPECT_LE(minimo.width(), 504); // 1024 x 768 at 200 %, within the desktop's frame
    EXPECT_LE(minimo.height(), 350);
    aberta.escreve_e_entra("REEL'1");
    EXPECT_EQ(aberta.com_teclado(), "campo(1)");
    aberta.tecla(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(aberta.rasto(), "CL'1|ORVEX|-2.5; ORVEX|ORVEX|2.5");
    aberta.tecla(Qt::Key_Tab);
    EXPECT_EQ(aberta.com_teclado(), "campo(1)");
    aberta.tecla(Qt::Key_Escape);
    QTRY_VERIFY(!aberta.qt.isVisible());
}

} // namespace
} // namespace orvex::testes
