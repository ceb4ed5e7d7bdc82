// Waiting for the ERP, in a real window. The ERP is a future, or answers when the test says so.
#include "platform/qt/espera_erp.h"
#include "platform/qt/pecas.h"
#include "tests/qt/na_janela.h"

#include <QLabel>
#include <QWindow>

#include <future>
#include <thread>

namespace orvex::testes {
namespace {

using namespace std::chrono_literals;

struct EsperaPeloERP : testing::Test, JanelaAberta {
    std::string linha() { return em<QLabel>("ajuda").text().toStdString(); }

    // A call that takes long; `passos` are what happens meanwhile, one after the other, the last right before
    // its end.
    void espera_com(const std::vector<std::function<void()>>& passos) {
        std::size_t feitos = 0;
        espera([&](std::chrono::milliseconds) {
            if (feitos > 0) passos[feitos - 1]();
            return ++feitos > passos.size();
        });
    }
    // As they come from the window system.
    void no_sistema(QEvent* evento) { QCoreApplication::postEvent(qt.windowHandle(), evento); }
    void rato(QEvent::Type tipo, QPoint onde, Qt::MouseButtons premidos = {}) {
        no_sistema(new QMouseEvent(tipo, onde, qt.mapToGlobal(onde), Qt::LeftButton, premidos, {}));
    }

    platform::automacao::Espera espera = platform::qt::espera_nas_janelas();
};

TEST_F(EsperaPeloERP, UmaChamadaLongaMostraSeEPintaEUmaCurtaNao) {
    const std::string antes = linha();
    for (const auto& [dura, avisa] : {std::pair{1ms, false}, {600ms, true}}) {
        std::string vistas;
        auto chamada = std::async(std::launch::async, [dura = dura] { std::this_thread::sleep_for(dura); });
        if (!avisa) chamada.wait();
        espera([&](std::chrono::milliseconds tempo) {
            const bool feita = chamada.wait_for(tempo) == std::future_status::ready;
            if (QGuiApplication::overrideCursor() != nullptr) vistas = linha();
            return feita;
        });
        EXPECT_EQ(chamada.wait_for(0s), std::future_status::ready) << "only when it is done";
        EXPECT_EQ(vistas, avisa ? "À espera do ERP…" : "");
        EXPECT_EQ(linha(), antes);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }
}

TEST_F(EsperaPeloERP, MuitasChamadasCurtasSaoUmaEspera) {
    int vistas = 0;
    for (int i = 0; i < 50 && vistas < 3; ++i) // a busy machine may break a run of them
        espera([&](std::chrono::milliseconds tempo) {
            std::this_thread::sleep_for(std::min(tempo, 40ms));
            vistas += linha() == "À espera do ERP…" ? 1 : 0;
            return tempo >= 40ms || tempo == 20ms;
        });
    EXPECT_EQ(vistas, 3);
}

TEST_F(EsperaPeloERP, AJanelaPintaSeMasNaoAceitaNadaNemDepois) {
    struct Vistos : QObject {
        int pinturas = 0, largadas = 0;
        bool eventFilter(QObject*, QEvent* evento) override {
            pinturas += evento->type() == QEvent::Paint ? 1 : 0;
            largadas += evento->type() == QEvent::MouseButtonRelease ? 1 : 0;
            return false;
        }
    } vistos;
    em<QLabel>("ajuda").installEventFilter(&vistos);
    qt.windowHandle()->installEventFilter(&vistos);
    int relogios = 0, por_fora = 0;
    QTimer repetido, unico;
    unico.setSingleShot(true);
    for (QTimer* um : {&repetido, &unico}) {
        QObject::connect(um, &QTimer::timeout, um, [&] { ++relogios; });
        um->start(0);
    }
    const QPoint botao = em<QWidget>("confirmar").geometry().center();
    ecra.utilizador_foca(ecra.campo[0]);
    const auto tenta = [&] {
        EXPECT_FALSE(qt.close());
        escreve("abc");
        tecla(Qt::Key_C, Qt::AltModifier);
        clica("confirmar");
        QTest::keyClick(qt.windowHandle(), Qt::Key_Tab);
        QTest::mouseClick(qt.windowHandle(), Qt::LeftButton, {}, botao);
        no_sistema(new QKeyEvent(QEvent::KeyPress, Qt::Key_X, {}, "x"));
        rato(QEvent::MouseButtonPress, botao, Qt::LeftButton);
        rato(QEvent::MouseButtonRelease, botao);
    };
    const auto pinta = [&] { EXPECT_GT(std::exchange(vistos.pinturas, 0), 0); };
    const auto estraga = [&] { em<QLabel>("ajuda").update(); };
    espera_com({pinta, tenta, estraga, pinta, [&] { por_fora = relogios; }, tenta});
    EXPECT_EQ(por_fora, 0) << "timers rest";
    QCoreApplication::processEvents();
    EXPECT_EQ(ecra.campo[0].Text, "");
    EXPECT_EQ(com_teclado(), "campo(0)");
    EXPECT_EQ(ecra.confirmacoes, 0);
    EXPECT_TRUE(qt.isVisible());
    EXPECT_EQ(vistos.largadas, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return relogios > 2 && !unico.isActive(); })) << "and go on";
    escreve("d");
    EXPECT_EQ(ecra.campo[0].Text, "d");
}

TEST_F(EsperaPeloERP, OCliqueQueComecouAntesAcabaDepois) {
    const QPoint botao = em<QWidget>("confirmar").geometry().center();
    ecra.aceita = [&](int) { // leaving the field, before the button sees its press
        int olhares = 0;
        rato(QEvent::MouseButtonRelease, botao);
        espera([&](std::chrono::milliseconds) { return ++olhares > 2; });
        return true;
    };
    ecra.utilizador_foca(ecra.campo[1]);
    escreve("1");
    rato(QEvent::MouseButtonPress, botao, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ecra.confirmacoes == 1; }));
    EXPECT_EQ(ecra.validados, std::vector{1});
}

TEST_F(EsperaPeloERP, OEcraQueSeFechaSoSeFechaDepois) {
    std::string passos;
    qt.define_ao_fechar([&] { passos += "fechada"; });
    ecra.confirmar.Click = [&] {
        espera_com({[&] { qt.descarrega(); }, [] {}, [&] { passos += "resposta "; }});
    };
    clica("confirmar");
    EXPECT_TRUE(QTest::qWaitFor([&] { return passos == "resposta fechada"; })) << passos;
}

TEST_F(EsperaPeloERP, ForaDasJanelasSoEspera) {
    int olhares = 0;
    std::thread([&] { espera([&](std::chrono::milliseconds) { return ++olhares > 2; }); }).join();
    EXPECT_EQ(olhares, 3);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

} // namespace
} // namespace orvex::testes
