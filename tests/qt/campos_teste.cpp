// Fields, pickers, buttons and tabs: who has the keyboard, and what is validated when it moves.
#include "tests/qt/na_janela.h"

#include <QAction>
#include <QCalendarWidget>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMimeData>
#include <QTabBar>

namespace orvex::testes {
namespace {

void escreve_no_campo_1(JanelaAberta& aberta) {
    aberta.tecla(Qt::Key_Tab);
    aberta.escreve("x");
}

// Each way to leave a control.
const struct {
    const char* nome;
    std::function<void(JanelaAberta&)> sai;
    const char* destino; // from campo(1)
} saidas[] = {
    {"Tab", [](JanelaAberta& j) { j.tecla(Qt::Key_Tab); }, "data"},
    {"Shift+Tab", [](JanelaAberta& j) { j.tecla(Qt::Key_Backtab, Qt::ShiftModifier); }, "campo(0)"},
    {"Enter", [](JanelaAberta& j) { j.tecla(Qt::Key_Return); }, "data"},
    {"clique noutro campo", [](JanelaAberta& j) { j.clica("campo(2)"); }, "campo(2)"},
    {"clique num botão", [](JanelaAberta& j) { j.clica("confirmar"); }, "confirmar"},
    {"clique numa data", [](JanelaAberta& j) { j.clica("data"); }, "data"},
    {"clique na grelha", [](JanelaAberta& j) { j.clica_celula("grelha", 1, 1); }, "grelha"},
    {"letra de acesso", [](JanelaAberta& j) { j.tecla(Qt::Key_C, Qt::AltModifier); }, "confirmar"},
};

TEST(Campos, SaoValidadosUmaSoVezQualquerQueSejaASaidaEUmaRecusaFicaNoCampoEEngoleOClique) {
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

TEST(Campos, OQueEColadoOuLargadoFicaNumaLinhaEAparadoEOQueEEscritoFicaComoFoiEscrito) {
    JanelaAberta aberta([](EcraEnsaio& ecra) { ecra.campo[1].MaxLength = 5; });
    const auto cola = [&](const char* texto) {
        QGuiApplication::clipboard()->setText(texto);
        aberta.tecla(Qt::Key_A, Qt::ControlModifier);
        aberta.tecla(Qt::Key_V, Qt::ControlModifier);
        return aberta.em<QLineEdit>(aberta.com_teclado().c_str()).text().toStdString();
    };
    EXPECT_EQ(cola(" A\r\nB\tC\n"), "A B C");
    EXPECT_EQ(cola("\u00A0CL 1 \n"), "CL 1");
    EXPECT_EQ(cola("\n"), "");
    aberta.escreve(" x ");
    EXPECT_EQ(aberta.ecra.campo[0].Text, " x ");
    for (int vezes = 0; vezes < 2; ++vezes) { // over the same counts as typed too
        aberta.ecra.bDigitado = false;
        EXPECT_EQ(cola("CL1"), "CL1");
        EXPECT_TRUE(aberta.ecra.bDigitado);
    }

    auto& campo_1 = aberta.em<QLineEdit>("campo(1)");
    QMimeData dados;
    dados.setText("ab\nc😀");
    QDragEnterEvent entra(QPoint(5, 5), Qt::CopyAction, &dados, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&campo_1, &entra);
    QDropEvent larga(QPointF(5, 5), Qt::CopyAction, &dados, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&campo_1, &larga);
    EXPECT_EQ(aberta.com_teclado(), "campo(1)");
    EXPECT_EQ(aberta.ecra.campo[1].Text, "ab c") << "half a character is none";
    EXPECT_EQ(aberta.ecra.validados, std::vector<int>{0});
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

TEST(Datas, SaoLidasUmaSoVezQualquerQueSejaASaidaEOQueNaoEDataFicaEscolhidoNoSeuCampo) {
    for (const auto& [nome, sai, destino] : saidas) {
        if (nome == std::string("clique numa data")) continue;
        SCOPED_TRACE(nome);
        JanelaAberta aberta([](EcraEnsaio& ecra) { ecra.data.Value = {2026, 11, 23, 13, 14, 15}; });
        auto& linha = aberta.em<QLineEdit>("data");
        aberta.clica("data");
        linha.selectAll();
        aberta.escreve("31-02-2026");
        Respostas respostas;
        respostas.carrega({Qt::Key_Return});
        sai(aberta);
        EXPECT_EQ(respostas.textos, std::vector<std::string>{"Data inválida!"});
        EXPECT_EQ(aberta.com_teclado() + linha.selectedText().toStdString(), "data31-02-2026");
        EXPECT_EQ(aberta.ecra.confirmacoes, 0);
        aberta.activa();
        aberta.escreve("15102025");
        sai(aberta);
        EXPECT_NE(aberta.com_teclado(), "data");
        EXPECT_EQ(aberta.ecra.data.Value, (base::DataHora{2025, 10, 15, 13, 14, 15}))
            << "the hidden time stays";
        EXPECT_EQ(linha.text(), "15-10-2025");
    }
}

TEST(Datas, AsSetasMudamAParteDoCursorF4AbreOCalendarioEEscRepoeOValor) {
    const base::DataHora valor{2024, 2, 29, 13, 14, 15};
    JanelaAberta aberta([&](EcraEnsaio& ecra) {
        ecra.data.Value = valor;
        ecra.data.com_hora = true;
    });
    auto& linha = aberta.em<QLineEdit>("data");
    aberta.tecla(Qt::Key_Tab);
    aberta.tecla(Qt::Key_Tab);
    EXPECT_EQ(linha.selectedText(), "29-02-2024 13:14");
    for (const auto& [cursor, tecla, texto] : std::initializer_list<std::tuple<int, Qt::Key, const char*>>{
             {-1, Qt::Key_Up, "01-03-2024 13:14"},
             {-1, Qt::Key_Down, "29-02-2024 13:14"},
             {8, Qt::Key_Up, "28-02-2025 13:14"},
             {5, Qt::Key_Down, "28-01-2025 13:14"},
             {12, Qt::Key_Up, "28-01-2025 14:14"},
             {16, Qt::Key_Down, "28-01-2025 14:13"}}) {
        if (cursor >= 0) linha.setCursorPosition(cursor);
        aberta.tecla(tecla);
        EXPECT_EQ(linha.text(), texto);
    }
    linha.selectAll();
    aberta.escreve("1-2-24");
    const auto calendario = [] { return qobject_cast<QCalendarWidget*>(QApplication::activePopupWidget()); };
    aberta.tecla(Qt::Key_F4);
    ASSERT_NE(calendario(), nullptr);
    EXPECT_EQ(calendario()->selectedDate(), QDate(2024, 2, 1));
    EXPECT_EQ(calendario()->firstDayOfWeek(), Qt::Monday);
    EXPECT_EQ(calendario()->locale().monthName(2), "fevereiro");
    QTest::keyClick(calendario()->focusWidget(), Qt::Key_Right);
    QTest::keyClick(calendario()->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(calendario(), nullptr);
    EXPECT_EQ(linha.text(), "02-02-2024 14:13");
    aberta.tecla(Qt::Key_F4);
    QTest::keyClick(calendario()->focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(calendario(), nullptr);
    EXPECT_EQ(aberta.com_teclado(), "data");
    aberta.escreve("x");
    aberta.tecla(Qt::Key_Escape);
    EXPECT_EQ(aberta.com_teclado(), "campo(1)");
    EXPECT_EQ(aberta.ecra.data.Value, valor);

    aberta.escreve("x");
    aberta.ecra.aceita = [](int) { return false; };
    linha.actions().front()->trigger(); // the button, pressed with the mouse
    EXPECT_EQ(calendario(), nullptr) << "the field left refused";
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
