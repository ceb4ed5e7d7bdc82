// Fields, pickers, buttons and tabs: who has the keyboard, and what is validated when it moves.
#include "tests/qt/janela_aberta.h"

#include <QCalendarWidget>
#include <QClipboard>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QGuiApplication>
#include <QLineEdit>
#include <QTabBar>

#include <gtest/gtest.h>

namespace orvex::testes {
namespace {

void escreve_no_campo_1(JanelaAberta& aberta) {
    aberta.tecla(Qt::Key_Tab);
    aberta.escreve("x");
}

TEST(Campos, SaoValidadosUmaSoVezQualquerQueSejaASaidaEUmaRecusaFicaNoCampoEEngoleOClique) {
    const struct {
        const char* nome;
        std::function<void(JanelaAberta&)> sai;
        const char* destino;
    } saidas[] = {
        {"Tab", [](JanelaAberta& j) { j.tecla(Qt::Key_Tab); }, "data"},
        {"Shift+Tab", [](JanelaAberta& j) { j.tecla(Qt::Key_Backtab, Qt::ShiftModifier); }, "campo(0)"},
        {"Enter", [](JanelaAberta& j) { j.tecla(Qt::Key_Return); }, "data"},
        {"clique noutro campo", [](JanelaAberta& j) { j.clica("campo(2)"); }, "campo(2)"},
        {"clique num botão", [](JanelaAberta& j) { j.clica("confirmar"); }, "confirmar"},
        {"clique numa data", [](JanelaAberta& j) { j.clica("qt_spinbox_lineedit"); }, "data"},
        {"clique na grelha", [](JanelaAberta& j) { j.clica_celula("grelha", 1, 1); }, "grelha"},
        {"letra de acesso", [](JanelaAberta& j) { j.tecla(Qt::Key_C, Qt::AltModifier); }, "confirmar"},
    };
    for (const auto& caso : saidas)
        for (const bool aceite : {true, false}) {
            SCOPED_TRACE(caso.nome + std::string(aceite ? ", aceite" : ", recusada"));
            JanelaAberta aberta;
            escreve_no_campo_1(aberta);
            Respostas respostas;
            if (!aceite) respostas.carrega({Qt::Key_Return});
            aberta.ecra.aceita = [&](int) {
                if (!aceite) aberta.ecra.Avisa("", "Não existe!", 2);
                return aceite;
            };
            caso.sai(aberta);
            EXPECT_EQ(aberta.ecra.validados, std::vector<int>{1});
            EXPECT_EQ(aberta.com_teclado(), aceite ? caso.destino : "campo(1)");
            const bool prime = aceite && caso.destino == std::string("confirmar");
            EXPECT_EQ(aberta.ecra.confirmacoes, prime ? 1 : 0);
            EXPECT_EQ(aberta.ecra.grelha.linha_actual,
                      aceite && caso.destino == std::string("grelha") ? 2 : 1);
        }
}

TEST(Campos, UmCliqueAceiteDepoisDeUmaPerguntaAindaCarregaNoBotao) {
    JanelaAberta aberta;
    escreve_no_campo_1(aberta);
    Respostas respostas;
    respostas.carrega({Qt::Key_Return});
    aberta.ecra.aceita = [&](int) { return aberta.ecra.Avisa("", "Aceita?", 4) == common::resposta_sim; };
    QTest::mousePress(&aberta.em<QWidget>("confirmar"), Qt::LeftButton); // the box takes the release
    EXPECT_EQ(aberta.ecra.confirmacoes, 1);
}

TEST(Campos, SoOQueMudaOTextoContaComoEscritoEOLimiteDeLetrasNaoValeParaOPrograma) {
    JanelaAberta aberta([](EcraEnsaio& ecra) {
        for (common::Campo& campo : ecra.campo)
            campo.MaxLength = 3;
        ecra.campo[0].Text = "programa";
    });
    for (const Qt::Key codigo :
         {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_Shift, Qt::Key_Control, Qt::Key_End})
        aberta.tecla(codigo);
    EXPECT_FALSE(aberta.ecra.bDigitado);
    aberta.escreve("x");
    EXPECT_EQ(aberta.em<QLineEdit>("campo(0)").text(), "programa");
    aberta.tecla(Qt::Key_Backspace);
    EXPECT_EQ(aberta.ecra.campo[0].Text, "program");
    EXPECT_TRUE(aberta.ecra.bDigitado);

    aberta.tecla(Qt::Key_Tab);
    aberta.escreve("12");
    aberta.ecra.bDigitado = false;
    QGuiApplication::clipboard()->setText("3456");
    aberta.tecla(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(aberta.ecra.campo[1].Text, "123") << "what is pasted is cut to fit";
    EXPECT_TRUE(aberta.ecra.bDigitado);
}

TEST(Campos, EscRecuaSemValidarEFechaNoCampoDeFecho) {
    JanelaAberta aberta;
    bool fechada = false;
    aberta.qt.define_ao_fechar([&] { fechada = true; });
    escreve_no_campo_1(aberta);
    aberta.tecla(Qt::Key_Escape);
    EXPECT_EQ(aberta.com_teclado(), "campo(0)");
    EXPECT_TRUE(aberta.ecra.validados.empty());
    EXPECT_TRUE(aberta.qt.isVisible());
    aberta.tecla(Qt::Key_Escape);
    QTRY_VERIFY(!aberta.qt.isVisible());
    EXPECT_TRUE(fechada);
}

TEST(Datas, GuardamAHoraEscondidaEAvancamComEnter) {
    JanelaAberta aberta([](EcraEnsaio& ecra) { ecra.data.Value = {2024, 2, 1, 13, 14, 15}; });
    aberta.clica("qt_spinbox_lineedit");
    auto& data = aberta.em<QDateTimeEdit>("data");
    EXPECT_EQ(data.text(), "01-02-2024");
    data.setSelectedSection(QDateTimeEdit::DaySection);
    aberta.escreve("28");
    aberta.tecla(Qt::Key_Return);
    EXPECT_EQ(aberta.ecra.data.Value, (base::DataHora{2024, 2, 28, 13, 14, 15}));
    EXPECT_EQ(aberta.com_teclado(), "combo");
    EXPECT_EQ(data.calendarWidget()->firstDayOfWeek(), Qt::Monday);
    EXPECT_EQ(data.calendarWidget()->locale().monthName(2), "fevereiro");
    aberta.qt.close(); // keeps the widths of the grids, not of the calendar
}

TEST(Escolhas, ARodaDoRatoEmPassagemNaoMudaNadaEAsSetasMudam) {
    JanelaAberta aberta;
    auto& combo = aberta.em<QComboBox>("combo");
    QWheelEvent roda(QPointF(5, 5), combo.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {},
                     Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&combo, &roda);
    EXPECT_EQ(aberta.ecra.combo.ListIndex, 0);
    combo.setFocus();
    aberta.tecla(Qt::Key_Down);
    EXPECT_EQ(aberta.ecra.combo.ListIndex, 1);
}

TEST(Botoes, EnterEEspacoCarregamESetasMudamDeControlo) {
    JanelaAberta aberta;
    aberta.tecla(Qt::Key_Backtab, Qt::ShiftModifier);
    aberta.tecla(Qt::Key_Return);
    aberta.tecla(Qt::Key_Space);
    EXPECT_EQ(aberta.ecra.confirmacoes, 2);
    aberta.tecla(Qt::Key_Left);
    EXPECT_EQ(aberta.com_teclado(), "campo(2)");
}

TEST(Paginas, SoMudamQuandoOCampoDeixadoOConsente) {
    JanelaAberta aberta;
    auto& separadores = aberta.em<QTabWidget>("paginas");
    const QPoint outros = separadores.tabBar()->tabRect(1).center();
    aberta.escreve("x");
    aberta.ecra.aceita = [](int) { return false; };
    QTest::mouseClick(separadores.tabBar(), Qt::LeftButton, {}, outros);
    EXPECT_EQ(separadores.currentIndex(), 0);
    EXPECT_EQ(aberta.com_teclado(), "campo(0)");

    QTest::mouseClick(separadores.tabBar(), Qt::LeftButton, {}, outros);
    EXPECT_EQ(separadores.currentIndex(), 1);
    aberta.tecla(Qt::Key_Left);
    EXPECT_EQ(separadores.currentIndex(), 0);
    EXPECT_EQ(aberta.ecra.paginas.Tab, 0);
}

} // namespace
} // namespace orvex::testes
