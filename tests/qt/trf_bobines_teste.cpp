// The transfer window over a real company: both modes by keyboard.
#include "platform/qt/janela_trf_bobines.h"
#include "tests/qt/apoio_qt.h"
#include "tests/transfer/ecra_trf.h"

#include <QLabel>

#include <gmock/gmock.h>

namespace orvex::testes {
namespace {

struct Aberta : EcraTrf {
    explicit Aberta(int modo) : EcraTrf(modo), qt(ecra, {"Bobines, Lda.", "SQLite", "demo", true}) {
        qt.abre();
        activa();
    }
    ~Aberta() { qt.close(); }
    void activa() { // no window manager gives the keyboard back after a box
        qt.activateWindow();
        if (!QTest::qWaitForWindowActive(&qt)) throw std::runtime_error("A janela não ficou activa.");
    }
    void escreve_e_entra(const char* texto) {
        escreve(qt, texto);
        tecla(qt, Qt::Key_Return);
    }
    QRect lugar(const char* controlo) {
        QCoreApplication::processEvents();
        const auto& w = widget<QWidget>(qt, controlo);
        return {w.mapTo(&qt, QPoint()), w.size()};
    }

    platform::qt::JanelaTrfBobines qt;
};

TEST(JanelaTrfBobines, AposUmaRecusaUmArtigoPassaParaOutroCliente) {
    Aberta aberta(2);
    const QRect antes = aberta.lugar("campo(4)");
    {
        Respostas respostas;
        respostas.carrega(Qt::Key_Return);
        aberta.escreve_e_entra("CASA");
        EXPECT_THAT(respostas.textos, testing::ElementsAre("Este Artigo/Num.Série pertence à ORVEX!"));
    }
    aberta.activa();
    EXPECT_EQ(com_foco(aberta.qt), "campo(0)");
    aberta.escreve_e_entra("REEL'1"); // what was refused is selected, and replaced
    EXPECT_EQ(com_foco(aberta.qt), "campo(2)");
    aberta.escreve_e_entra("CL2");
    EXPECT_EQ(widget<QLabel>(aberta.qt, "Label2(4)").text(), "Ibérica SL");
    EXPECT_EQ(aberta.lugar("campo(4)"), antes);
    tecla(aberta.qt, Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(aberta.rasto(), "CL'1|CL2|-2.5; CL2|CL2|2.5");
}

TEST(JanelaTrfBobines, SemClienteDestinoNaoHaLugarParaEleEOArtigoVoltaAORVEX) {
    Aberta aberta(1);
    EXPECT_LT(aberta.lugar("DTPicker1").top() - aberta.lugar("campo(1)").bottom(), 20);
    const QSize minimo = aberta.qt.minimumSizeHint();
    EXPECT_LE(minimo.width(), 504); // 1024 x 768 at 200 %, within the desktop's frame
    EXPECT_LE(minimo.height(), 350);
    aberta.escreve_e_entra("REEL'1");
    EXPECT_EQ(com_foco(aberta.qt), "campo(1)");
    tecla(aberta.qt, Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(aberta.rasto(), "CL'1|ORVEX|-2.5; ORVEX|ORVEX|2.5");
    tecla(aberta.qt, Qt::Key_Tab);
    EXPECT_EQ(com_foco(aberta.qt), "campo(1)");
    tecla(aberta.qt, Qt::Key_Escape);
    QTRY_VERIFY(!aberta.qt.isVisible());
}

} // namespace
} // namespace orvex::testes
