// What the user sees of waiting, in a real window. What is waited for is a future, or answers when the test
// says so, or is a database.
#include "platform/qt/espera.h"
#include "platform/qt/pecas.h"
#include "tests/qt/na_janela.h"

#include <QLabel>
#include <QWindow>

#include <future>
#include <set>
#include <thread>

namespace orvex::testes {
namespace {

using namespace std::chrono_literals;
using platform::espera::Acabou;
using platform::espera::Motivo;

struct AEspera : testing::Test, JanelaAberta {
    // What the status line showed, as it was painted while the busy cursor was on.
    struct Vistos : QObject {
        int pinturas = 0, largadas = 0;
        std::set<std::string> textos{};
        bool eventFilter(QObject* alvo, QEvent* evento) override {
            largadas += evento->type() == QEvent::MouseButtonRelease ? 1 : 0;
            const auto* const linha = qobject_cast<QLabel*>(alvo);
            if (linha == nullptr || evento->type() != QEvent::Paint) return false;
            ++pinturas;
            if (QGuiApplication::overrideCursor() != nullptr) textos.insert(linha->text().toStdString());
            return false;
        }
        std::string esperas() { // and what the keys are, left out
            std::string todas;
            for (const std::string& texto : std::exchange(textos, {}))
                if (texto.starts_with("À espera") || texto.starts_with("A listar")) todas += texto + "; ";
            return todas;
        }
    } vistos;

    AEspera() {
        em<QLabel>("ajuda").installEventFilter(&vistos);
        qt.windowHandle()->installEventFilter(&vistos);
        ecra.utilizador_foca(ecra.campo[0]);
        QCoreApplication::processEvents();
    }

    std::string linha() { return em<QLabel>("ajuda").text().toStdString(); }

    // A call that takes long; `passos` are what happens meanwhile, one after the other, the last right before
    // its end.
    void espera_com(const std::vector<std::function<void()>>& passos) {
        std::size_t feitos = 0;
        espera(Motivo::erp, [&](std::chrono::milliseconds) {
            if (feitos > 0) passos[feitos - 1]();
            return ++feitos > passos.size();
        });
    }
    // A call that takes so long.
    void espera_por(Motivo motivo, std::chrono::milliseconds quanto) {
        const auto ate = std::chrono::steady_clock::now() + quanto;
        espera(motivo, [&](std::chrono::milliseconds limite) {
            std::this_thread::sleep_until(std::min(ate, std::chrono::steady_clock::now() + limite));
            return std::chrono::steady_clock::now() >= ate;
        });
    }
    // As they come from the window system.
    void no_sistema(QEvent* evento) { QCoreApplication::postEvent(qt.windowHandle(), evento); }
    void rato(QEvent::Type tipo, QPoint onde, Qt::MouseButtons premidos = {}) {
        no_sistema(new QMouseEvent(tipo, onde, qt.mapToGlobal(onde), Qt::LeftButton, premidos, {}));
    }
    void prime(Qt::Key tecla, const char* texto = "", Qt::KeyboardModifiers com = {}) {
        no_sistema(new QKeyEvent(QEvent::KeyPress, tecla, com, texto));
    }
    // A handler runs.
    void ao_confirmar(const std::function<void()>& manipulador) {
        ecra.confirmar.Click = manipulador;
        clica("confirmar");
        ecra.utilizador_foca(ecra.campo[0]);
    }
    void corre_o_que_ha() { QTest::qWait(1); }

    platform::espera::Espera espera = platform::qt::espera_nas_janelas();
};

TEST_F(AEspera, MostraOCursorAosTresDecimosDeSegundoEAoPrimeiroSegundoPorQuemSeEspera) {
    const std::string antes = linha();
    for (const auto& [dura, cursor, texto] :
         {std::tuple{1ms, false, ""}, {600ms, true, ""}, {1200ms, true, "À espera do ERP…; "}}) {
        bool visto = false;
        auto chamada = std::async(std::launch::async, [dura = dura] { std::this_thread::sleep_for(dura); });
        if (!cursor) chamada.wait();
        espera(Motivo::erp, [&](std::chrono::milliseconds tempo) {
            const bool feita = chamada.wait_for(tempo) == std::future_status::ready;
            visto = visto || QGuiApplication::overrideCursor() != nullptr;
            return feita;
        });
        EXPECT_EQ(chamada.wait_for(0s), std::future_status::ready) << "only when it is done";
        EXPECT_EQ(visto, cursor);
        EXPECT_EQ(vistos.esperas(), texto);
        EXPECT_EQ(linha(), antes);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        QTest::qWait(150); // the next one is another wait
    }
}

TEST_F(AEspera, MuitasChamadasCurtasSaoUmaEspera) {
    std::string vistas;
    for (const auto& [motivo, texto] : {std::pair{Motivo::erp, "À espera do ERP…; "},
                                        {Motivo::posto, "À espera de outro posto…; "},
                                        {Motivo::servidor, "À espera do servidor…; "}})
        for (vistas = ""; vistas != texto; vistas = vistos.esperas())
            espera_por(motivo, 30ms);
}

TEST_F(AEspera, AJanelaPintaSeMasNaoAceitaNadaNemDepois) {
    int relogios = 0, por_fora = 0;
    QTimer repetido, unico;
    unico.setSingleShot(true);
    for (QTimer* um : {&repetido, &unico}) {
        QObject::connect(um, &QTimer::timeout, um, [&] { ++relogios; });
        um->start(0);
    }
    const QPoint botao = em<QWidget>("confirmar").geometry().center();
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
    espera_com({estraga, pinta, tenta, estraga, pinta, [&] { por_fora = relogios; }, tenta});
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

TEST_F(AEspera, OCliqueQueComecouAntesAcabaDepois) {
    const QPoint botao = em<QWidget>("confirmar").geometry().center();
    ecra.aceita = [&](int) { // leaving the field, before the button sees its press
        int olhares = 0;
        rato(QEvent::MouseButtonRelease, botao);
        espera(Motivo::erp, [&](std::chrono::milliseconds) { return ++olhares > 2; });
        return true;
    };
    ecra.utilizador_foca(ecra.campo[1]);
    escreve("1");
    rato(QEvent::MouseButtonPress, botao, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ecra.confirmacoes == 1; }));
    EXPECT_EQ(ecra.validados, std::vector{1});
}

TEST_F(AEspera, OEcraQueSeFechaSoSeFechaDepois) {
    std::string passos;
    const auto manda_premir = [&] { // as what reads the screen to its user does
        QMetaObject::invokeMethod(
            &qt, [&] { ecra.utilizador_prime(ecra.confirmar); }, Qt::QueuedConnection);
    };
    qt.define_ao_fechar([&] { espera_com({manda_premir, [] {}, [&] { passos += "fechada"; }}); });
    ecra.confirmar.Click = [&] {
        espera_com({manda_premir, [&] { qt.descarrega(); }, [] {}, [&] { passos += "resposta "; }});
    };
    clica("confirmar");
    EXPECT_TRUE(QTest::qWaitFor([&] { return passos == "resposta fechada"; })) << passos;
}

TEST_F(AEspera, OQueSeEscreveAntesDeSeVerQueEsperaEstaLaDepoisEOQueSeEscreveAVerNao) {
    const auto escreve_e_espera = [&] {
        prime(Qt::Key_X, "x");
        no_sistema(new QInputMethodEvent); // which writes nothing yet
        prime(Qt::Key_Tab);
        prime(Qt::Key_Y, "y");
        prime(Qt::Key_C, "c", Qt::AltModifier);
        espera_com({[] {}, [&] { prime(Qt::Key_Z, "z"); }, [] {}, [] {}});
        espera_com({[&] { prime(Qt::Key_Z, "z"); }, [] {}, [] {}}); // still the same wait
        EXPECT_EQ(ecra.campo[0].Text + ecra.campo[1].Text, "") << "not inside";
    };
    int vezes = 0;
    ecra.aceita = [&](int) { return true; };
    ao_confirmar([&] {
        if (++vezes == 1) escreve_e_espera();
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return vezes == 2; }));
    EXPECT_EQ(ecra.campo[0].Text + "|" + ecra.campo[1].Text, "x|y");

    Respostas respostas; // what was meant for the screen answers no box
    respostas.faz([&](QWidget& caixa) {
        corre_o_que_ha();
        EXPECT_TRUE(caixa.isVisible());
        testes::tecla(caixa, Qt::Key_Return);
    });
    ao_confirmar([&] {
        prime(Qt::Key_Return);
        espera_com({[] {}, [] {}});
        ecra.MostraMensagem("Falhou.", 0);
    });
}

TEST_F(AEspera, UmaListaLongaDizAteOndeVaiEDesisteSeComEscQueNaoFazMaisNada) {
    const auto lista = [&](const std::function<void(int)>& a_meio) {
        int linhas = 0;
        const auto inicio = std::chrono::steady_clock::now();
        while (std::chrono::steady_clock::now() - inicio < 1300ms) {
            a_meio(linhas += 500);
            if (!qt.prossegue("A listar: " + std::to_string(linhas) + " linhas")) return -1;
        }
        return linhas;
    };
    int listadas = 0;
    ao_confirmar([&] { listadas = lista([](int) { std::this_thread::sleep_for(50ms); }); });
    EXPECT_GT(listadas, 5000);
    const std::string vista = vistos.esperas();
    EXPECT_THAT(vista, testing::AllOf(StartsWith("A listar: "), EndsWith(" linhas (Esc desiste); ")));
    EXPECT_THAT(vista, testing::Not(HasSubstr("A listar: 500 linhas"))) << "the first second shows none";

    const std::vector<std::function<void(int)>> desistencias{
        [&](int linhas) { // at once
            if (linhas == 500) prime(Qt::Key_Escape);
            std::this_thread::sleep_for(50ms);
        },
        [&](int linhas) { // while the server is waited for, and long after it showed
            if (linhas == 1000) espera_com({[] {}, [&] { prime(Qt::Key_Escape); }, [] {}});
            espera_por(Motivo::servidor, 200ms);
        }};
    for (const auto& desiste : desistencias) {
        ecra.utilizador_foca(ecra.campo[1]);
        ao_confirmar([&] { listadas = lista(desiste); });
        EXPECT_EQ(listadas, -1);
        ecra.utilizador_foca(ecra.campo[1]);
        corre_o_que_ha();
        no_sistema(new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, {}, {}, true)); // still held down
        corre_o_que_ha();
        EXPECT_EQ(com_teclado(), "campo(1)");
        EXPECT_TRUE(qt.isVisible());
        tecla(Qt::Key_Escape);
        EXPECT_EQ(com_teclado(), "campo(0)");
    }
    ao_confirmar([&] { EXPECT_TRUE(qt.prossegue("A listar: 500 linhas")) << "another handler's"; });
}

// Another workstation has the ledger's lock until the user has seen that it is waited for.
TEST_F(AEspera, PorOutroPostoVeSeNosDoisMotoresEPeloServidorTambem) {
    std::function<void()> ao_ver;
    const auto a_vista = [&](Motivo motivo, const Acabou& acabou) {
        espera(motivo, [&](std::chrono::milliseconds limite) {
            if (ao_ver && linha().starts_with("À espera")) std::exchange(ao_ver, nullptr)();
            return acabou(limite);
        });
    };
    ServidorTDS servidor(empresa.pasta());
    platform::odbc::SessaoODBC pelo_fio({.a_vista = a_vista});
    platform::sqlite::SessaoSQLite embebida(a_vista);
    ASSERT_TRUE(pelo_fio.Abre(ligacao(servidor)) && embebida.Abre(ligacao(empresa.pasta())));
    for (startup::SessaoBD* sessao : std::initializer_list<startup::SessaoBD*>{&pelo_fio, &embebida}) {
        empresa.outra().IniciaTransaccao();
        empresa.outra().Tranca();
        sessao->IniciaTransaccao();
        ao_ver = [&] {
            escreve("abc");
            corre_o_que_ha();
            empresa.outra().AnulaTransaccao();
        };
        sessao->Tranca();
        EXPECT_FALSE(ao_ver);
        sessao->AnulaTransaccao();
        EXPECT_EQ(vistos.esperas(), "À espera de outro posto…; ");
        EXPECT_EQ(ecra.campo[0].Text, "");
        QTest::qWait(150);
    }
    servidor.avaria_no(1, {.efeito = Avaria::Efeito::demora, .milissegundos = 1'200});
    EXPECT_EQ(pelo_fio.Consulta("select count(*) from xel_ORVEX_Mov")->valor(0).inteiro(), 8);
    EXPECT_EQ(vistos.esperas(), "À espera do servidor…; ");
    std::string longa = "select count(*) from xel_ORVEX_Mov a"; // still the same wait
    for (const char* outra : {"b", "c", "d", "e", "f", "g", "h"})
        longa += std::string(" inner join xel_ORVEX_Mov ") + outra + " on a.Ano=" + outra + ".Ano";
    EXPECT_GT(embebida.Consulta(longa)->valor(0).inteiro(), 1'000'000);
    EXPECT_EQ(vistos.esperas(), "À espera do servidor…; ");
}

TEST_F(AEspera, ForaDasJanelasSoEspera) {
    int olhares = 0;
    std::thread([&] {
        espera(Motivo::erp, [&](std::chrono::milliseconds) { return ++olhares > 2; });
    }).join();
    EXPECT_EQ(olhares, 3);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

} // namespace
} // namespace orvex::testes
