// Every window for those who use no mouse, or no eyes: access keys, the help, menus, and what a screen reader
// finds.
#include "platform/qt/acesso.h"
#include "platform/qt/janelas/janela_guias_remessa.h"
#include "platform/qt/janelas/janela_mov_stocks.h"
#include "platform/qt/janelas/janela_trf_bobines.h"
#include "platform/qt/textos.h"
#include "tests/adjust/ecra_ajuste.h"
#include "tests/delivery/ecra_guias.h"
#include "tests/qt/na_janela.h"
#include "tests/transfer/ecra_trf.h"

#include <cmath>
#include <set>

namespace orvex::testes {
namespace {

struct ComGuia : EcraGuias {
    ComGuia() { emite({1}); }
};
using Guias = NaJanela<ComGuia, platform::qt::JanelaGuiasRemessa>;
using Ajuste = NaJanela<EcraAjuste, platform::qt::JanelaMovStocks>;
using Transferencia = NaJanela<EcraTrf, platform::qt::JanelaTrfBobines>;

// Each window as it opens, the note's also with the return panel.
template <typename Accao>
void em_cada_janela(Accao accao) {
    {
        Guias guias;
        accao(guias);
        guias.ecra.utilizador_foca(guias.ecra.campo(1));
        guias.joga("«1», Tab, Alt+D");
        accao(guias);
    }
    for (const int modo : {1, 3}) {
        Ajuste ajuste(modo);
        ajuste.ecra.btAnular.Visible = true;
        ajuste.qt.mostra();
        accao(ajuste);
    }
    for (const int modo : {1, 2}) {
        Transferencia transferencia(modo);
        accao(transferencia);
    }
}

TEST(Acesso, CadaCampoEGrelhaTemLegendaEUmaTeclaQueLevaLaENenhumaServeDuasVezesNumaJanela) {
    em_cada_janela([](auto& aberta) {
        std::multiset<QKeySequence> teclas;
        for (const auto* atalho : aberta.qt.template findChildren<QShortcut*>())
            if (atalho->isEnabled()) teclas.insert(atalho->key());
        for (const auto* botao : aberta.qt.template findChildren<QAbstractButton*>())
            if (botao->isVisible() && botao->isEnabled() && !botao->shortcut().isEmpty())
                teclas.insert(botao->shortcut());
        for (const QKeySequence& tecla : teclas)
            EXPECT_EQ(teclas.count(tecla), 1U) << tecla.toString().toStdString();

        for (common::Controlo* controlo : aberta.ecra.foco().ordem()) {
            const bool botao = dynamic_cast<common::Botao*>(controlo) != nullptr;
            if (botao || controlo->nome == "SSTab1" || !controlo->Enabled || !controlo->Visible) continue;
            if (controlo->dentro_de != nullptr && !controlo->dentro_de->Visible) continue;
            const QChar letra = platform::qt::letra_de_acesso(platform::qt::qs(controlo->Legenda));
            aberta.joga(QString("Alt+%1").arg(letra).toStdString());
            EXPECT_EQ(aberta.com_teclado(), controlo->nome) << letra.toLatin1();
            const auto legendas = aberta.qt.template findChildren<QLabel*>();
            EXPECT_TRUE(std::any_of(legendas.begin(), legendas.end(), [&](const QLabel* uma) {
                return uma->buddy() == aberta.qt.focusWidget();
            })) << controlo->nome;
        }
    });
}

// A table shows its cells under their headings, those in sight alone, wherever one begins.
void confere(const QTableView& vista, QAccessibleInterface& este) {
    const QHeaderView& titulos = *vista.horizontalHeader();
    auto& tabela = *este.tableInterface();
    EXPECT_EQ(tabela.columnCount(), titulos.count() - titulos.hiddenSectionCount());
    std::set<QString> vistos;
    for (int i = 0; i < std::min(este.childCount(), 2 * (titulos.count() + 1)); ++i) {
        const QAccessibleInterface* filho = este.child(i);
        if (filho == nullptr) continue;
        EXPECT_FALSE(filho->rect().isEmpty()) << i;
        EXPECT_EQ(este.indexOfChild(filho), i);
        if (filho->role() == QAccessible::ColumnHeader) vistos.insert(filho->text(QAccessible::Name));
    }
    for (int c = 0; c < tabela.columnCount(); ++c) {
        auto& celula = *tabela.cellAt(0, c)->tableCellInterface();
        EXPECT_EQ(celula.columnIndex(), c);
        EXPECT_TRUE(vistos.contains(celula.columnHeaderCells().front()->text(QAccessible::Name))) << c;
    }
    if (!vista.hasFocus()) return;
    const QModelIndex actual = vista.currentIndex();
    EXPECT_TRUE(este.focusChild()->state().focused);
    EXPECT_EQ(este.focusChild(),
              este.child((actual.row() + 1) * (titulos.count() + 1) + actual.column() + 1));
}

// What a screen reader would walk through, with what it has seen: names of what takes the keyboard.
void percorre(QAccessibleInterface* este, std::multiset<QString>& nomes) {
    if (este == nullptr || este->state().invisible) return;
    const auto* widget = qobject_cast<QWidget*>(este->object());
    if (este->state().focusable && !este->state().disabled && widget != nullptr) {
        const QString nome = este->text(QAccessible::Name);
        nomes.insert(nome);
        EXPECT_FALSE(nome.isEmpty() || nome.contains("...")) << widget->objectName().toStdString();
        EXPECT_NE(este->role(), QAccessible::NoRole) << nome.toStdString();
        EXPECT_FALSE(nome.endsWith('.') && nome == widget->toolTip()) << nome.toStdString();
    }
    const auto* vista = qobject_cast<const QTableView*>(widget);
    if (vista != nullptr) confere(*vista, *este);
    for (int i = 0; vista == nullptr && i < este->childCount(); ++i)
        percorre(este->child(i), nomes);
}

TEST(Acesso, UmLeitorDeEcraEncontraUmNomeProprioEmTudoOQueRecebeOTecladoENenhumaColunaEscondida) {
    em_cada_janela([](auto& aberta) {
        std::multiset<QString> nomes;
        percorre(QAccessible::queryAccessibleInterface(&aberta.qt), nomes);
        EXPECT_GE(nomes.size(), 5U);
        for (const QString& nome : nomes)
            EXPECT_EQ(nomes.count(nome), 1U) << nome.toStdString();
    });
}

struct NasGuias : testing::Test, NaJanela<EcraGuias, platform::qt::JanelaGuiasRemessa> {
    QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    void carrega_na_ultima() {
        for (const Qt::Key codigo : {Qt::Key_Up, Qt::Key_Return})
            QTest::keyClick(menu(), codigo);
    }
    std::string accoes() {
        std::string todas;
        for (const QAction* accao : menu()->actions())
            if (!accao->isSeparator()) todas += accao->text().section(' ', 0, 1).toStdString() + "|";
        return todas;
    }
};

TEST_F(NasGuias, TabPassaDaGrelhaDaGuiaAosCamposDoTransporteCtrlTabViraAPaginaEOQueSeRecusaFica) {
    joga("«CL'1», Return, Alt+G, Tab");
    EXPECT_EQ(com_teclado(), "campo(19)");
    tecla(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(com_teclado(), "Gr");
    joga("Ctrl+Tab");
    EXPECT_EQ(ecra.SSTab1.Tab, 1);
    joga("Alt+1, Alt+L, «nada»");
    EXPECT_FALSE(tecla(Qt::Key_Tab, Qt::ControlModifier, {ok}).empty()) << "an unknown client";
    EXPECT_EQ(com_teclado() + std::to_string(ecra.SSTab1.Tab), "campo(0)0");
}

TEST_F(NasGuias, OMenuDasGrelhasOfereceOQueSePodeECopiaComOsTitulos) {
    joga("«CL'1», Return, Alt+F, Shift+F10");
    ASSERT_NE(menu(), nullptr);
    EXPECT_EQ(accoes(), "&Copiar a|Copiar &todas|Consultar o|Escolher|");
    QTest::keyClicks(menu(), "EA9");
    EXPECT_EQ(com_teclado(), "Detalhe") << "what a reader sends";
    carrega_na_ultima();
    EXPECT_EQ(com_teclado(), "Gr");
    joga("Shift+F10");
    EXPECT_EQ(accoes(), "&Copiar a|Copiar &todas|Consultar o|") << "the first line stays";
    QTest::keyClick(menu(), Qt::Key_T);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString().substr(0, 6), "Artigo");
    EXPECT_EQ(QGuiApplication::clipboard()->text().count('\n'), 2);
    escolhe(3);
    const QPoint segunda = celula(qt, "Gr", 1, 1);
    QTest::mouseClick(em<QTableView>("Gr").viewport(), Qt::RightButton, {}, segunda);
    QContextMenuEvent pedido(QContextMenuEvent::Mouse, segunda,
                             em<QTableView>("Gr").viewport()->mapToGlobal(segunda));
    QCoreApplication::sendEvent(em<QTableView>("Gr").viewport(), &pedido);
    EXPECT_EQ(accoes(), "&Copiar a|Copiar &todas|Consultar o|Apagar a|");
    carrega_na_ultima();
    EXPECT_TRUE(ecra.Gr.texto(1, "Artigo").empty());

    joga("Alt+L, «nada»"); // what refuses to be left lets no menu open either
    tecla(Qt::Key_F, Qt::AltModifier, {ok});
    QContextMenuEvent outro(QContextMenuEvent::Mouse, segunda, {});
    QCoreApplication::sendEvent(em<QTableView>("Gr").viewport(), &outro);
    EXPECT_EQ(menu(), nullptr);
}

TEST_F(NasGuias, F1MostraTeclasESessaoParaCopiarEAbreOGuia) {
    QTemporaryDir dados;
    QDir(dados.path()).mkpath("doc/orvex/manual");
    QFile(dados.filePath("doc/orvex/manual/index.html")).open(QFile::WriteOnly);
    qputenv("XDG_DATA_HOME", dados.path().toUtf8());
    for (const bool pelo_rato : {false, true}) {
        Respostas respostas;
        respostas.faz([&](QWidget& ajuda) {
            EXPECT_EQ(ajuda.findChildren<QPushButton*>().size(), 3);
            QTest::keyClick(&ajuda, Qt::Key_C, Qt::AltModifier);
            QTRY_VERIFY(QGuiApplication::clipboard()->text().contains("Utilizador\tdemo"));
            for (const char* linha : {"Alt+L\tCliente: F4 lista", "Alt+C\tConfirmar", "Alt+Q\tLocal Carga",
                                      "Ctrl+Tab", "Ctrl+I\tAbrir na consulta", "Ctrl+P\tImprimir a guia"})
                EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(linha)) << linha;
            QTest::keyClick(&ajuda, Qt::Key_Escape);
        });
        pelo_rato ? clica("botao_ajuda") : tecla(Qt::Key_F1);
        activa();
    }
}

double contraste(const QColor& uma, const QColor& outra) {
    const auto luz = [](const QColor& cor) {
        const auto linear = [](double c) {
            return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(cor.redF()) + 0.7152 * linear(cor.greenF()) + 0.0722 * linear(cor.blueF()) +
               0.05;
    };
    return std::max(luz(uma), luz(outra)) / std::min(luz(uma), luz(outra));
}

TEST(Cores, SaoTodasDoProgramaETudoOQueSeLeTemContraste) {
    const QPalette cores = platform::qt::cores_do_programa();
    for (const char* classe : {"QWidget", "QMenu"})
        EXPECT_EQ(QApplication::palette(classe), cores) << classe;
    EXPECT_EQ(QToolTip::palette(), cores);
    const std::pair<QPalette::ColorRole, QPalette::ColorRole> pares[] = {
        {QPalette::WindowText, QPalette::Window},        {QPalette::Text, QPalette::Base},
        {QPalette::Text, QPalette::AlternateBase},       {QPalette::ButtonText, QPalette::Button},
        {QPalette::ToolTipText, QPalette::ToolTipBase},  {QPalette::PlaceholderText, QPalette::Base},
        {QPalette::HighlightedText, QPalette::Highlight}};
    for (const auto grupo : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (int papel = 0; papel < QPalette::NoRole; ++papel)
            EXPECT_TRUE(cores.isBrushSet(grupo, QPalette::ColorRole(papel))) << grupo << ", " << papel;
        for (const auto& [letra, fundo] : pares)
            EXPECT_GE(contraste(cores.color(grupo, letra), cores.color(grupo, fundo)), 4.5)
                << grupo << ", " << letra;
        EXPECT_GE(contraste(cores.color(grupo, QPalette::WindowText), platform::qt::cor_etiquetas), 4.5);
    }
}

} // namespace
} // namespace orvex::testes
