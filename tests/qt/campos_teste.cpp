// Fields, pickers, buttons and tabs: who has the keyboard, and what is validated when it moves.
#include "tests/qt/ecra_teste.h"

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

using Saida = std::function<void(JanelaAberta&)>;

struct CasoSaida {
    const char* nome;
    Saida sai;
    const char* destino;
};

const CasoSaida saidas[] = {
    {"Tab", [](JanelaAberta& j) { tecla(*j.janela, Qt::Key_Tab); }, "data"},
    {"Shift+Tab", [](JanelaAberta& j) { tecla(*j.janela, Qt::Key_Backtab, Qt::ShiftModifier); }, "campo(0)"},
    {"Enter", [](JanelaAberta& j) { tecla(*j.janela, Qt::Key_Return); }, "data"},
    {"clique noutro campo", [](JanelaAberta& j) { j.clica("campo(2)"); }, "campo(2)"},
    {"clique num botão", [](JanelaAberta& j) { j.clica("confirmar"); }, "confirmar"},
    {"clique numa data", [](JanelaAberta& j) { j.clica("qt_spinbox_lineedit"); }, "data"},
    {"clique na grelha", [](JanelaAberta& j) { j.clica_celula(0, 1); }, "grelha"},
    {"letra de acesso", [](JanelaAberta& j) { tecla(*j.janela, Qt::Key_C, Qt::AltModifier); }, "confirmar"},
};

void escreve_no_campo_1(JanelaAberta& aberta) {
    tecla(*aberta.janela, Qt::Key_Tab);
    escreve(*aberta.janela, "x");
}

TEST(Campos, SaoValidadosUmaSoVezQualquerQueSejaASaida) {
    for (const CasoSaida& caso : saidas) {
        SCOPED_TRACE(caso.nome);
        JanelaAberta aberta;
        escreve_no_campo_1(aberta);
        caso.sai(aberta);
        EXPECT_EQ(aberta.ecra.validados, std::vector<int>{1});
        EXPECT_EQ(com_foco(*aberta.janela), caso.destino);
    }
}

TEST(Campos, UmaValidacaoRecusadaFicaNoCampoEEngoleOClique) {
    for (const CasoSaida& caso : saidas) {
        SCOPED_TRACE(caso.nome);
        JanelaAberta aberta;
        escreve_no_campo_1(aberta);
        Respostas respostas;
        respostas.carrega(Qt::Key_Return);
        aberta.ecra.aceita = [&](int) {
            aberta.ecra.Avisa("", "Não existe!", 2);
            return false;
        };
        caso.sai(aberta);
        EXPECT_EQ(aberta.ecra.validados, std::vector<int>{1});
        EXPECT_EQ(com_foco(*aberta.janela), "campo(1)");
        EXPECT_EQ(aberta.ecra.confirmacoes, 0);
        EXPECT_EQ(aberta.ecra.grelha.linha_actual, 1);
    }
}

TEST(Campos, UmCliqueAceiteDepoisDeUmaPerguntaAindaCarregaNoBotao) {
    JanelaAberta aberta;
    escreve_no_campo_1(aberta);
    Respostas respostas;
    respostas.carrega(Qt::Key_Return);
    aberta.ecra.aceita = [&](int) { return aberta.ecra.Avisa("", "Aceita?", 4) == common::resposta_sim; };
    aberta.clica("confirmar");
    EXPECT_EQ(aberta.ecra.confirmacoes, 1);
}

TEST(Campos, SoOQueMudaOTextoContaComoEscrito) {
    JanelaAberta aberta([](EcraTeste& ecra) { ecra.campo[0].Text = "abc"; });
    QWidget& janela = *aberta.janela;
    for (const Qt::Key codigo :
         {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_Shift, Qt::Key_Control})
        tecla(janela, codigo);
    EXPECT_FALSE(aberta.ecra.bDigitado);

    QGuiApplication::clipboard()->setText("77");
    tecla(janela, Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(aberta.ecra.bDigitado);
    EXPECT_EQ(aberta.ecra.campo[0].Text, "abc77");

    aberta.ecra.bDigitado = false;
    tecla(janela, Qt::Key_Backspace);
    EXPECT_TRUE(aberta.ecra.bDigitado);
}

TEST(Campos, EntrarNumCampoSeleccionaOTextoTodo) {
    JanelaAberta aberta([](EcraTeste& ecra) { ecra.campo[1].Text = "antigo"; });
    tecla(*aberta.janela, Qt::Key_Tab);
    escreve(*aberta.janela, "novo");
    EXPECT_EQ(aberta.ecra.campo[1].Text, "novo");
}

TEST(Campos, OLimiteDeLetrasValeParaQuemEscreveENaoParaOPrograma) {
    JanelaAberta aberta([](EcraTeste& ecra) {
        for (common::Campo& campo : ecra.campo)
            campo.MaxLength = 3;
        ecra.campo[0].Text = "programa";
    });
    auto& linha = widget<QLineEdit>(*aberta.janela, "campo(0)");
    EXPECT_EQ(linha.text(), "programa");
    tecla(*aberta.janela, Qt::Key_End);
    escreve(*aberta.janela, "x");
    EXPECT_EQ(linha.text(), "programa");
    tecla(*aberta.janela, Qt::Key_Backspace);
    EXPECT_EQ(aberta.ecra.campo[0].Text, "program");

    tecla(*aberta.janela, Qt::Key_Tab);
    escreve(*aberta.janela, "12");
    QGuiApplication::clipboard()->setText("3456");
    tecla(*aberta.janela, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(aberta.ecra.campo[1].Text, "123") << "what is pasted is cut to fit";
}

TEST(Campos, EscRecuaSemValidarEFechaNoCampoDeFecho) {
    JanelaAberta aberta;
    bool fechada = false;
    aberta.janela->define_ao_fechar([&] { fechada = true; });
    escreve_no_campo_1(aberta);
    tecla(*aberta.janela, Qt::Key_Escape);
    EXPECT_EQ(com_foco(*aberta.janela), "campo(0)");
    EXPECT_TRUE(aberta.ecra.validados.empty());
    EXPECT_FALSE(fechada);
    tecla(*aberta.janela, Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_TRUE(fechada);
    EXPECT_FALSE(aberta.janela->isVisible());
}

TEST(Campos, UmaFalhaQueNinguemApanhouMostraSeEOFocoFica) {
    JanelaAberta aberta;
    escreve_no_campo_1(aberta);
    Respostas respostas;
    respostas.carrega(Qt::Key_Return);
    aberta.ecra.aceita = [](int) -> bool { throw base::Falha("Sem ligação."); };
    tecla(*aberta.janela, Qt::Key_Tab);
    EXPECT_EQ(respostas.textos, std::vector<std::string>{"Sem ligação."});
    EXPECT_EQ(com_foco(*aberta.janela), "campo(1)");
}

TEST(Datas, GuardamAHoraEscondidaEAvancamComEnter) {
    JanelaAberta aberta([](EcraTeste& ecra) { ecra.data.Value = {2024, 2, 1, 13, 14, 15}; });
    aberta.clica("qt_spinbox_lineedit");
    auto& data = widget<QDateTimeEdit>(*aberta.janela, "data");
    EXPECT_EQ(data.text(), "01-02-2024");
    data.setSelectedSection(QDateTimeEdit::DaySection);
    escreve(*aberta.janela, "28");
    tecla(*aberta.janela, Qt::Key_Return);
    EXPECT_EQ(aberta.ecra.data.Value, (base::DataHora{2024, 2, 28, 13, 14, 15}));
    EXPECT_EQ(com_foco(*aberta.janela), "combo");
    EXPECT_EQ(data.calendarWidget()->firstDayOfWeek(), Qt::Monday);
    EXPECT_EQ(data.calendarWidget()->locale().monthName(2), "fevereiro");
    aberta.janela->close(); // keeps the widths of the grids, not of the calendar
}

TEST(Escolhas, ARodaDoRatoEmPassagemNaoMudaNada) {
    JanelaAberta aberta;
    auto& combo = widget<QComboBox>(*aberta.janela, "combo");
    QWheelEvent roda(QPointF(5, 5), combo.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {},
                     Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&combo, &roda);
    EXPECT_EQ(aberta.ecra.combo.ListIndex, 0);
    combo.setFocus();
    tecla(*aberta.janela, Qt::Key_Down);
    EXPECT_EQ(aberta.ecra.combo.ListIndex, 1);
}

TEST(Botoes, EnterCarregaESetasMudamDeControlo) {
    JanelaAberta aberta;
    tecla(*aberta.janela, Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_EQ(com_foco(*aberta.janela), "confirmar");
    tecla(*aberta.janela, Qt::Key_Return);
    tecla(*aberta.janela, Qt::Key_Space);
    EXPECT_EQ(aberta.ecra.confirmacoes, 2);
    tecla(*aberta.janela, Qt::Key_Left);
    EXPECT_EQ(com_foco(*aberta.janela), "campo(2)");
}

TEST(Paginas, SoMudamQuandoOCampoDeixadoOConsente) {
    JanelaAberta aberta;
    auto& separadores = widget<QTabWidget>(*aberta.janela, "paginas");
    const QPoint outros = separadores.tabBar()->tabRect(1).center();
    escreve(*aberta.janela, "x");
    aberta.ecra.aceita = [](int) { return false; };
    QTest::mouseClick(separadores.tabBar(), Qt::LeftButton, {}, outros);
    EXPECT_EQ(separadores.currentIndex(), 0);
    EXPECT_EQ(com_foco(*aberta.janela), "campo(0)");

    QTest::mouseClick(separadores.tabBar(), Qt::LeftButton, {}, outros);
    EXPECT_EQ(separadores.currentIndex(), 1);
    tecla(*aberta.janela, Qt::Key_Left);
    EXPECT_EQ(separadores.currentIndex(), 0);
    EXPECT_EQ(aberta.ecra.paginas.Tab, 0);
}

} // namespace
} // namespace orvex::testes
