// The table of an enquiry, its card and its charts.
#include "platform/qt/consulta/ficha.h"
#include "platform/qt/consulta/grafico.h"
#include "platform/qt/teclas.h"
#include "tests/qt/apoio_qt.h"

namespace orvex::testes {
namespace {

using namespace livro::consultas;
using namespace platform::qt::consulta;
using base::DataHora;
using base::Moeda;
using ::testing::ElementsAre;

Linha bobina(const char* codigo, const char* cliente, base::Variante peso = {}, base::Variante data = {},
             base::Variante dias = {}) {
    return {codigo, "Bobine de aço", cliente, std::move(peso), std::move(data), std::move(dias), {}};
}
void pausa() { QTest::qWait(platform::qt::pausa_de_leitor_ms + 50); } // as a person makes
Moeda t(const char* peso) { return *Moeda::le(peso); }

struct QuadroNoEcra : ::testing::Test {
    VistaQuadro vista{"cliente",
                      {"artigos",
                       "Artigos",
                       {{"artigo", "Artigo", Tipo::codigo, Ligacao::artigo},
                        {"designacao", "Designação"},
                        {"cliente", "Cliente", Tipo::codigo, Ligacao::cliente},
                        {"peso", "Peso (t)", Tipo::peso},
                        {"data", "Data", Tipo::data},
                        {"dias", "Dias", Tipo::inteiro},
                        {"ressalvas", "Ressalvas"}}}};
    QTableView& tabela = vista.tabela();
    QLineEdit& filtro = widget<QLineEdit>(vista, "filtro");
    std::vector<std::string> abertos, lidos;

    QuadroNoEcra() {
        vista.define_janela({[this](Ligacao, const std::string& texto) { abertos.push_back(texto); },
                             [this](const QString& codigo) { lidos.push_back(codigo.toStdString()); }});
        vista.resize(900, 400);
        vista.show();
        vista.junta({bobina("BA10", "C2", t("10"), DataHora{2026, 1, 31}, 9), bobina("BA9", ""),
                     bobina("XX1", "C10", t("9.5"), DataHora{2025, 12, 1}, 100),
                     bobina("CÂ1", "C1", t("-1.234"), DataHora{2026, 2, 1}, 0)});
        vista.total({"Total", "4 artigos", {}, t("18.266"), {}, {}, {}});
        tabela.setFocus();
    }
    std::vector<std::string> codigos(const Parte& parte) const {
        std::vector<std::string> todos;
        for (const Linha& linha : parte.linhas)
            todos.push_back(linha[0].texto());
        return todos;
    }
    std::string resumo() const { return vista.resumo().toStdString(); }
    std::vector<std::string> codigos() { return codigos(vista.mostrada()); }
    std::string actual() const {
        return tabela.currentIndex().siblingAtColumn(0).data().toString().toStdString();
    }
};

TEST_F(QuadroNoEcra, OrdenaPeloQueOsValoresSaoComOsNulosNoFimEDepoisComoVieram) {
    struct Caso {
        Qt::Key coluna;
        std::vector<std::string> sobe, desce;
    };
    const Caso casos[] = {{Qt::Key_1, {"BA9", "BA10", "CÂ1", "XX1"}, {"XX1", "CÂ1", "BA10", "BA9"}},
                          {Qt::Key_3, {"CÂ1", "BA10", "XX1", "BA9"}, {"XX1", "BA10", "CÂ1", "BA9"}},
                          {Qt::Key_4, {"CÂ1", "XX1", "BA10", "BA9"}, {"BA10", "XX1", "CÂ1", "BA9"}},
                          {Qt::Key_5, {"XX1", "BA10", "CÂ1", "BA9"}, {"CÂ1", "BA10", "XX1", "BA9"}},
                          {Qt::Key_6, {"CÂ1", "BA10", "XX1", "BA9"}, {"XX1", "BA10", "CÂ1", "BA9"}}};
    for (const Caso& caso : casos) {
        tecla(vista, caso.coluna, Qt::ControlModifier);
        EXPECT_EQ(codigos(), caso.sobe);
        tecla(vista, caso.coluna, Qt::ControlModifier);
        EXPECT_EQ(codigos(), caso.desce);
        tecla(vista, caso.coluna, Qt::ControlModifier);
        EXPECT_THAT(codigos(), ElementsAre("BA10", "BA9", "XX1", "CÂ1"));
    }
}

TEST_F(QuadroNoEcra, OQueChegaDepoisTomaOSeuLugarEAsMarcasFicam) {
    EXPECT_TRUE(tabela.isColumnHidden(6));
    tecla(vista, Qt::Key_4, Qt::ControlModifier);
    tecla(vista, Qt::Key_Down);
    tecla(vista, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_THAT(codigos(vista.marcada()), ElementsAre("XX1", "BA10"));
    Linha sem_inicio = bobina("ZZ1", "");
    sem_inicio.back() = "Sem início";
    vista.junta({bobina("BA7", "C1", t("9.7")), bobina("BA6", "C1", t("-2")), sem_inicio});
    EXPECT_THAT(codigos(), ElementsAre("BA6", "CÂ1", "XX1", "BA7", "BA10", "BA9", "ZZ1"));
    EXPECT_THAT(codigos(vista.marcada()), ElementsAre("XX1", "BA10"));
    EXPECT_EQ(actual(), "BA10");
    EXPECT_EQ(resumo(), "7 linhas   2 marcadas: 19,500 t");
    EXPECT_FALSE(tabela.isColumnHidden(6));
}

TEST_F(QuadroNoEcra, FiltraPeloQueSeEscreveNaTabelaESomaOQueSeMarca) {
    escreve(vista, "ACO b");
    pausa();
    EXPECT_EQ(resumo(), "4 linhas");
    escreve(vista, "a");
    pausa();
    EXPECT_EQ(resumo(), "2 de 4 linhas");
    vista.junta({bobina("CC1", "C1"), bobina("BA8", "C1", t("0.25"))});
    EXPECT_THAT(codigos(), ElementsAre("BA10", "BA9", "BA8"));
    tecla(vista, Qt::Key_Down);
    EXPECT_EQ(actual(), "BA9");
    tabela.setFocus();
    tecla(vista, Qt::Key_A, Qt::ControlModifier);
    tecla(vista, Qt::Key_5, Qt::ControlModifier);
    EXPECT_EQ(resumo(), "3 de 6 linhas   3 marcadas: 10,250 t");
    EXPECT_EQ(vista.mostrada().totais.front()[0], base::Variante("Total das mostradas"));
    EXPECT_EQ(vista.mostrada().totais.front()[3], base::Variante(t("10.25")));
    EXPECT_THAT(codigos(vista.toda()), ElementsAre("BA10", "BA9", "XX1", "CÂ1", "CC1", "BA8"));
    EXPECT_EQ(vista.toda().totais.front()[3], base::Variante(t("18.266")));
    filtro.setText("9"); // as many, but not the same
    EXPECT_THAT(codigos(), ElementsAre("XX1", "BA10", "BA9"));
    EXPECT_EQ(resumo(), "3 de 6 linhas   2 marcadas: 10,000 t");
    vista.filtra();
    tecla(vista, Qt::Key_Escape);
    EXPECT_EQ(&com_foco(vista), &tabela);
    EXPECT_EQ(codigos().size(), 6U);
    EXPECT_EQ(vista.mostrada().totais.size(), 1U);
}

TEST_F(QuadroNoEcra, ACadaLigacaoChegaOTecladoEORatoSemLargarAsMarcas) {
    tecla(vista, Qt::Key_Enter);
    tecla(vista, Qt::Key_Down, Qt::ShiftModifier);
    tecla(vista, Qt::Key_Up, Qt::ShiftModifier);
    tecla(vista, Qt::Key_Down, Qt::ShiftModifier);
    for (int i = 0; i < 2; ++i)
        tecla(vista, Qt::Key_Right);
    EXPECT_EQ(codigos(vista.marcada()).size(), 2U);
    tecla(vista, Qt::Key_Return); // its client is nobody
    tecla(vista, Qt::Key_Up);
    tecla(vista, Qt::Key_Return);
    EXPECT_THAT(abertos, ElementsAre("BA10", "BA9", "C2"));

    const auto clique = [&](int linha, int coluna, int x, Qt::KeyboardModifiers com = {}) {
        const QRect celula = tabela.visualRect(tabela.model()->index(linha, coluna));
        QTest::mouseClick(tabela.viewport(), Qt::LeftButton, com, celula.topLeft() + QPoint(x, 5));
        QCoreApplication::processEvents();
    };
    clique(3, 2, 8);
    clique(2, 0, 8, Qt::ControlModifier);
    clique(2, 1, 8);
    clique(2, 0, tabela.columnWidth(0) - 2);
    clique(1, 2, 4);
    EXPECT_THAT(abertos, ElementsAre("BA10", "BA9", "C2", "C1"));

    // The second press of two, the first of which opened this view, and a whole double click.
    const QPoint aqui = tabela.visualRect(tabela.model()->index(2, 1)).center();
    QMouseEvent segunda(QEvent::MouseButtonDblClick, aqui, tabela.viewport()->mapToGlobal(aqui),
                        Qt::LeftButton, Qt::LeftButton, {});
    for (const char* abre : {"", "XX1"}) {
        abertos.clear();
        if (*abre != 0)
            QTest::mouseClick(tabela.viewport(), Qt::LeftButton, {}, aqui);
        else
            tabela.hide(), tabela.show();
        QCoreApplication::sendEvent(tabela.viewport(), &segunda);
        QCoreApplication::processEvents();
        EXPECT_EQ(abertos, *abre != 0 ? std::vector<std::string>{abre} : std::vector<std::string>{});
    }
    QKeyEvent repetida(QEvent::KeyPress, Qt::Key_Return, {}, "\r", true);
    QCoreApplication::sendEvent(&tabela, &repetida);
    EXPECT_EQ(abertos.size(), 1U);
    clique(1, 1, 8);

    QContextMenuEvent pedido(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(&tabela, &pedido);
    auto& menu = widget<QMenu>(vista, "menu");
    ASSERT_EQ(menu.actions().size(), 1);
    EXPECT_EQ(menu.actions().front()->text(), "Abrir artigo BA9");
    menu.close();
}

TEST_F(QuadroNoEcra, OCodigoDeUmLeitorNaoFiltraOndeQuerQueEsteja) {
    escreve(vista, "ba");
    pausa();
    for (QWidget* onde : {static_cast<QWidget*>(&filtro), static_cast<QWidget*>(&tabela)}) {
        onde->setFocus();
        escreve(vista, "XX000001");
        tecla(vista, Qt::Key_Return);
        tecla(vista, Qt::Key_Return); // of a reader that sends two
        EXPECT_EQ(&com_foco(vista), onde);
        EXPECT_EQ(filtro.text(), "ba");
        EXPECT_THAT(codigos(), ElementsAre("BA10", "BA9"));
    }
    EXPECT_THAT(lidos, ElementsAre("XX000001", "XX000001"));
    EXPECT_TRUE(abertos.empty());
    pausa();
    filtro.setFocus();
    filtro.selectAll();
    escreve(vista, "ba9");
    tecla(vista, Qt::Key_Return); // a person's: so few letters are no code
    EXPECT_THAT(abertos, ElementsAre("BA9"));
    filtro.selectAll();
    for (const char* letra : {"b", "a", "1", "0"}) { // a fast typist's
        escreve(vista, letra);
        QTest::qWait(70);
    }
    tecla(vista, Qt::Key_Return);
    EXPECT_THAT(abertos, ElementsAre("BA9", "BA10"));
}

TEST(FichaEGrafico, DizemOQueHaTambemSemRato) {
    std::vector<std::string> abertos;
    Ficha ficha({"ficha",
                 "Artigo",
                 {{"artigo", "Artigo", Tipo::codigo, Ligacao::artigo},
                  {"detentor", "Detentor", Tipo::codigo, Ligacao::cliente},
                  {"peso", "Peso (t)", Tipo::peso},
                  {"ressalvas", "Ressalvas"}}},
                {"BA<1>", "C1", {}, {}},
                [&](Ligacao, const std::string& texto) { abertos.push_back(texto); });
    ficha.show();
    widget<QLabel>(ficha, "artigo").setFocus();
    tecla(ficha, Qt::Key_Return);
    tecla(ficha, Qt::Key_Tab);
    tecla(ficha, Qt::Key_Return);
    EXPECT_THAT(abertos, ElementsAre("BA<1>", "C1"));
    EXPECT_EQ(widget<QLabel>(ficha, "peso").accessibleName(), "Peso (t): nada");
    EXPECT_EQ(ficha.findChild<QLabel*>("ressalvas"), nullptr);

    Parte meses{{"evolucao",
                 "Evolução",
                 {{"data", "Em", Tipo::data},
                  {"artigos", "Artigos", Tipo::inteiro},
                  {"peso", "Peso (t)", Tipo::peso}}},
                {{DataHora{2024, 11, 30}, 1, t("1.5")}, {DataHora{2024, 12, 31}, 0, {}}},
                {}};
    const std::unique_ptr<QWidget> grafico(novo_grafico(meses));
    EXPECT_EQ(grafico->accessibleDescription(),
              "30-11-2024: 1 artigo, 1,500 t; 31-12-2024: 0 artigos, sem peso conhecido");
    meses.quadro.chave = "guias";
    EXPECT_EQ(novo_grafico(meses), nullptr);
}

} // namespace
} // namespace orvex::testes
