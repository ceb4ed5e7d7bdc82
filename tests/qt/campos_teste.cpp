// Fields, pickers, buttons and tabs: who has the keyboard, and what is validated when it moves.
#include "tests/qt/na_janela.h"

namespace orvex::testes {
namespace {

struct Controlos : testing::Test, JanelaAberta {};

void escreve_no_campo_1(JanelaAberta& aberta) { aberta.joga("Tab, «x»"); }

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

TEST_F(Controlos, UmCliqueAceiteDepoisDeUmaPerguntaAindaCarregaNoBotao) {
    escreve_no_campo_1(*this);
    Respostas respostas;
    respostas.carrega({Qt::Key_Return});
    ecra.aceita = [&](int) { return ecra.Avisa("", "Aceita?", 4) == common::resposta_sim; };
    QTest::mousePress(&em<QWidget>("confirmar"), Qt::LeftButton); // the box takes the release
    EXPECT_EQ(ecra.confirmacoes, 1);
}

TEST_F(Controlos, OBotaoPremidoAconteceTambemQuandoUmaBoaValidacaoLevaOTecladoParaOutroLado) {
    escreve_no_campo_1(*this);
    ecra.aceita = [&](int) {
        ecra.SetFocus(ecra.campo[2]);
        return true;
    };
    clica("confirmar");
    EXPECT_EQ(ecra.confirmacoes, 1);
    EXPECT_EQ(com_teclado(), "confirmar");
}

TEST(Campos, CancelarLargaOQueEEscritoSemOValidar) {
    for (const char* escrito : {"Tab, «x»", "Tab, Tab, «99»", "Tab, Tab, Tab, Tab, Tab, F2, «x»"})
        for (const bool rato : {true, false}) {
            SCOPED_TRACE(escrito);
            JanelaAberta aberta;
            aberta.ecra.confirmar.papel = common::Botao::Papel::cancela;
            aberta.joga(escrito);
            rato ? aberta.clica("confirmar") : aberta.tecla(Qt::Key_C, Qt::AltModifier);
            EXPECT_EQ(aberta.ecra.confirmacoes, 1);
            EXPECT_TRUE(aberta.ecra.validados.empty());
            EXPECT_EQ(aberta.ecra.grelha.texto(0, "Nome"), "");
            aberta.clica("campo(0)");
            EXPECT_EQ(aberta.com_teclado(), "campo(0)");
        }
}

TEST_F(Controlos, VeSeOndeEstaOTeclado) {
    for (const auto& [tabs, nome] :
         {std::pair{2, "data"}, {3, "combo"}, {4, "qt_tabwidget_tabbar"}, {7, "confirmar"}}) {
        auto& controlo = em<QWidget>(nome);
        clica("campo(0)");
        const QImage sem = controlo.grab().toImage();
        for (int i = 0; i < tabs; ++i)
            tecla(Qt::Key_Tab);
        ASSERT_TRUE(controlo.hasFocus()) << nome;
        EXPECT_TRUE(controlo.grab().toImage() != sem) << nome;
    }
}

TEST_F(Controlos, SoOQueMudaOTextoContaComoEscritoEOLimiteDeLetrasNaoValeParaOPrograma) {
    ecra.campo[0].MaxLength = 3;
    ecra.campo[0].Text = "programa";
    qt.mostra();
    for (const Qt::Key codigo :
         {Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_Shift, Qt::Key_Control, Qt::Key_End})
        tecla(codigo);
    EXPECT_FALSE(ecra.bDigitado);
    escreve("x");
    EXPECT_EQ(em<QLineEdit>("campo(0)").text(), "programa");
    tecla(Qt::Key_Backspace);
    EXPECT_EQ(ecra.campo[0].Text, "program");
    EXPECT_TRUE(ecra.bDigitado);
}

TEST_F(Controlos, OQueEColadoOuLargadoFicaNumaLinhaEAparadoEOQueEEscritoFicaComoFoiEscrito) {
    const auto cola = [&](const char* texto) {
        ecra.bDigitado = false;
        QGuiApplication::clipboard()->setText(texto);
        joga("Ctrl+A, Ctrl+V");
        EXPECT_TRUE(ecra.bDigitado);
        return ecra.campo[0].Text;
    };
    ecra.campo[0].MaxLength = ecra.campo[1].MaxLength = 5;
    EXPECT_EQ(cola(" A\r\nB\tC\n"), "A B C");
    EXPECT_EQ(cola("\u00A0CL 123 \n"), "CL 12");
    EXPECT_EQ(cola("\n"), "");
    escreve(" x ");
    EXPECT_EQ(ecra.campo[0].Text, " x ");
    for (int vezes = 0; vezes < 2; ++vezes) // over the same counts as typed too
        EXPECT_EQ(cola("CL1"), "CL1");

    QMimeData dados;
    dados.setText("ab\nc😀");
    QDragEnterEvent entra(QPoint(5, 5), Qt::CopyAction, &dados, Qt::LeftButton, {});
    QDropEvent larga(QPointF(5, 5), Qt::CopyAction, &dados, Qt::LeftButton, {});
    for (QEvent* evento : std::initializer_list<QEvent*>{&entra, &larga})
        QCoreApplication::sendEvent(&em<QLineEdit>("campo(1)"), evento);
    EXPECT_EQ(com_teclado(), "campo(1)");
    EXPECT_EQ(ecra.campo[1].Text, "ab c") << "half a character is none";
    EXPECT_EQ(ecra.validados, std::vector<int>{0});
}

TEST_F(Controlos, EscRecuaSemValidarEFechaNoCampoDeFecho) {
    bool fechada = false;
    qt.define_ao_fechar([&] { fechada = true; });
    escreve_no_campo_1(*this);
    tecla(Qt::Key_Escape);
    EXPECT_EQ(com_teclado(), "campo(0)");
    EXPECT_TRUE(ecra.validados.empty());
    EXPECT_FALSE(fechada);
    tecla(Qt::Key_Escape);
    QTRY_VERIFY(!qt.isVisible());
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

TEST_F(Controlos, AsSetasMudamAParteDoCursorDeUmaDataF4AbreOCalendarioEEscRepoeOValor) {
    const base::DataHora valor{2024, 2, 29, 13, 14, 15};
    ecra.data.Value = valor;
    ecra.data.com_hora = true;
    qt.mostra();
    auto& linha = em<QLineEdit>("data");
    joga("Tab, Tab");
    EXPECT_EQ(linha.selectedText(), "29-02-2024 13:14");
    linha.setCursorPosition(0);
    for (const auto& [cursor, codigo, texto] : std::initializer_list<std::tuple<int, Qt::Key, const char*>>{
             {0, Qt::Key_Up, "01-03-2024 13:14"},
             {0, Qt::Key_Down, "29-02-2024 13:14"},
             {8, Qt::Key_Up, "28-02-2025 13:14"},
             {5, Qt::Key_Down, "28-01-2025 13:14"},
             {12, Qt::Key_Up, "28-01-2025 14:14"},
             {16, Qt::Key_Down, "28-01-2025 14:13"}}) {
        linha.setCursorPosition(cursor);
        tecla(codigo);
        EXPECT_EQ(linha.text(), texto);
    }
    linha.selectAll();
    escreve("1-2-24");
    const auto calendario = [] { return qobject_cast<QCalendarWidget*>(QApplication::activePopupWidget()); };
    tecla(Qt::Key_F4);
    ASSERT_NE(calendario(), nullptr);
    EXPECT_EQ(calendario()->selectedDate(), QDate(2024, 2, 1));
    EXPECT_EQ(calendario()->firstDayOfWeek(), Qt::Monday);
    EXPECT_EQ(calendario()->locale().monthName(2), "fevereiro");
    for (const Qt::Key codigo : {Qt::Key_Right, Qt::Key_Return})
        QTest::keyClick(calendario()->focusWidget(), codigo);
    EXPECT_EQ(calendario(), nullptr);
    EXPECT_EQ(linha.text(), "02-02-2024 14:13");
    tecla(Qt::Key_F4);
    QTest::keyClick(calendario()->focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(calendario(), nullptr);
    EXPECT_EQ(com_teclado(), "data");
    joga("«x», Esc");
    EXPECT_EQ(com_teclado(), "campo(1)");
    EXPECT_EQ(ecra.data.Value, valor);

    escreve("x");
    ecra.aceita = [](int) { return false; };
    linha.actions().front()->trigger(); // the button, pressed with the mouse
    EXPECT_EQ(calendario(), nullptr) << "the field left refused";
}

TEST_F(Controlos, ARodaDoRatoEmPassagemNaoMudaAEscolhaEAsSetasMudam) {
    auto& combo = em<QComboBox>("combo");
    QWheelEvent roda(QPointF(5, 5), combo.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, {}, {},
                     Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&combo, &roda);
    EXPECT_EQ(ecra.combo.ListIndex, 0);
    EXPECT_FALSE(roda.isAccepted()) << "what scrolls around it has it";
    combo.setFocus();
    tecla(Qt::Key_Down);
    EXPECT_EQ(ecra.combo.ListIndex, 1);
}

TEST_F(Controlos, EnterEEspacoCarregamNosBotoesESetasMudamDeControlo) {
    joga("Shift+Backtab, Return, Space");
    EXPECT_EQ(ecra.confirmacoes, 2);
    tecla(Qt::Key_Left);
    EXPECT_EQ(com_teclado(), "campo(2)");
}

TEST_F(Controlos, AsPaginasSoMudamQuandoOCampoDeixadoOConsente) {
    auto& separadores = em<QTabWidget>("paginas");
    const QPoint outros = separadores.tabBar()->tabRect(1).center();
    escreve("x");
    for (const bool aceite : {false, true}) { // what was refused once is not asked again
        ecra.aceita = [](int) { return false; };
        QTest::mouseClick(separadores.tabBar(), Qt::LeftButton, {}, outros);
        EXPECT_EQ(separadores.currentIndex(), aceite ? 1 : 0);
    }
    tecla(Qt::Key_Left);
    EXPECT_EQ(separadores.currentIndex(), 0);
    EXPECT_EQ(ecra.paginas.Tab, 0);
}

} // namespace
} // namespace orvex::testes
