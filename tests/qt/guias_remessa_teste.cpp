// The delivery-note window over a real company: its layout, and a note's way through it by keyboard.
#include "platform/qt/janela_guias_remessa.h"
#include "tests/qt/janela_na_empresa.h"

#include <QLabel>
#include <QTableView>

#include <gmock/gmock.h>

#include <map>

namespace orvex::testes {
namespace {

class JanelaDasGuias : public JanelaNaEmpresa<delivery::GuiasRemessa, platform::qt::JanelaGuiasRemessa> {
  protected:
    // Where every control in sight lies in the window.
    std::map<std::string, QRect> lugares() {
        QCoreApplication::processEvents();
        std::map<std::string, QRect> todos;
        for (const common::Controlo* controlo : ecra->controlos())
            if (const auto* w = janela->findChild<QWidget*>(controlo->nome.c_str()); w && w->isVisible())
                todos[controlo->nome] = QRect(w->mapTo(janela.get(), QPoint()), w->size());
        return todos;
    }
};

TEST_F(JanelaDasGuias, TemUmWidgetComNomeParaCadaControlo) {
    for (const common::Controlo* controlo : ecra->controlos()) {
        if (controlo->nome == "campo(11)") continue; // kept by the screen, shown nowhere
        const auto* w = janela->findChild<QWidget*>(controlo->nome.c_str());
        ASSERT_NE(w, nullptr) << controlo->nome;
        const bool anonimo = controlo->Legenda.empty() && controlo->ToolTip.empty();
        EXPECT_EQ(w->accessibleName().isEmpty(), anonimo) << controlo->nome;
    }
}

TEST_F(JanelaDasGuias, CabeInteiraNumEcraPequeno) {
    janela->resize(1024, 768);
    const QSize minimo = janela->minimumSizeHint();
    EXPECT_LE(minimo.width(), 683); // 1024 x 768 at 150 %
    EXPECT_LE(minimo.height(), 512);
    for (const auto& [nome, lugar] : lugares())
        EXPECT_TRUE(janela->rect().contains(lugar)) << nome;
}

TEST_F(JanelaDasGuias, NadaSaiDoLugarComNomesCompridosOuComOPainelDaDevolucao) {
    const auto antes = lugares();
    ecra->Label2(1).Caption = std::string(300, 'W');
    ecra->Frame3.Visible = true;
    ecra->btConf(0).Enabled = false;
    ecra->cb1(0).itens = {std::string(60, 'W')};
    janela->mostra();
    const auto depois = lugares();
    EXPECT_GT(depois.size(), antes.size());
    for (const auto& [nome, lugar] : antes)
        EXPECT_EQ(depois.at(nome), lugar) << nome;
}

TEST_F(JanelaDasGuias, DizSempreQueEUmaEmpresaDeDemonstracao) {
    EXPECT_EQ(widget<QLabel>(*janela, "demonstracao").text(), "EMPRESA DE DEMONSTRAÇÃO");
    const QString texto = widget<QLabel>(*janela, "sessao").text();
    for (const char* parte : {"Bobines, Lda.", "SQLite", "demo"})
        EXPECT_TRUE(texto.contains(parte)) << parte;
}

TEST_F(JanelaDasGuias, EmiteEAnulaUmaGuiaSoComOTeclado) {
    const auto da_guia = [this](const char* colunas) {
        std::string texto;
        const auto linhas =
            BD.Consulta(std::string("Select ") + colunas +
                        " from xel_ORVEX_Mov where TpDoc='GR' and NumDoc=12 order by NumLinha");
        for (; !linhas->fim(); linhas->move_seguinte())
            for (std::size_t i = 0; i < linhas->colunas(); ++i)
                texto += linhas->valor(i).texto() + (i + 1 < linhas->colunas() ? "|" : ";");
        return texto;
    };
    escreve(*janela, demo::codigo_cliente(1, opcoes).c_str());
    tecla(*janela, Qt::Key_Return);
    EXPECT_FALSE(widget<QLabel>(*janela, "Label2(1)").text().isEmpty());
    while (com_foco(*janela) != "Detalhe")
        tecla(*janela, Qt::Key_Tab);
    tecla(*janela, Qt::Key_Return);
    EXPECT_EQ(com_foco(*janela), "Gr");
    const QString artigo = widget<QTableView>(*janela, "Detalhe").model()->index(0, 0).data().toString();
    EXPECT_FALSE(artigo.isEmpty());

    escreve(*janela, "0,5"); // the cursor is in the weight of the line picked
    tecla(*janela, Qt::Key_Return);
    tecla(*janela, Qt::Key_Return);
    for (const char* letras : {"Sr.", " ", "D'", "Orey"})
        escreve(*janela, letras);
    tecla(*janela, Qt::Key_Return);
    {
        Respostas respostas;
        respostas.carrega(Qt::Key_Return);
        tecla(*janela, Qt::Key_C, Qt::AltModifier);
        EXPECT_THAT(respostas.textos, ::testing::ElementsAre("Foi criado o documento Nº  12"));
    }
    activa();
    EXPECT_EQ(com_foco(*janela), "campo(0)");
    EXPECT_EQ(da_guia("NumLinha,Artigo,Qtd,PesoBruto"), "3|" + artigo.toStdString() + "|0.5|0.5;");

    tecla(*janela, Qt::Key_Tab);
    escreve(*janela, "0012");
    tecla(*janela, Qt::Key_Tab);
    EXPECT_EQ(ecra->campo(1).Text, "12");
    EXPECT_EQ(widget<QTableView>(*janela, "Gr").model()->index(3, 1).data().toString(), "Sr. D'Orey");
    Respostas respostas;
    respostas.faz([](QWidget& caixa) {
        tecla(caixa, Qt::Key_Left); // from Cancelar, the default, to OK
        tecla(caixa, Qt::Key_Return);
    });
    tecla(*janela, Qt::Key_A, Qt::AltModifier);
    EXPECT_EQ(da_guia("NumLinha"), "");
    EXPECT_TRUE(ecra->campo(1).Text.empty());
}

TEST_F(JanelaDasGuias, DevolveUmaLinhaDeUmaGuiaComOTecladoOuORato) {
    const auto procura = [this](const std::string& sql) {
        const auto linhas = BD.Consulta(sql);
        return linhas->fim() ? std::string() : linhas->valor(0).texto();
    };
    const std::string numero = procura(
        "Select top 1 NNumDoc from DocGcCab where TpDoc='GR' and NVias<>-1 and [Convert]<>-1 and Ano=" +
        std::to_string(opcoes.hoje.ano));
    const auto& final = widget<QTableView>(*janela, "Final");
    const auto marcada = [&] { return ecra->Final.valor(0, "Transf").logico(); };
    const auto na_guia = [&] { return !final.isVisible() && com_foco(*janela) == "btGV(0)"; };

    tecla(*janela, Qt::Key_Tab);
    escreve(*janela, numero.c_str());
    tecla(*janela, Qt::Key_Tab);
    for (int tabs = 0; tabs <= 3; ++tabs) { // from the grid, the date, each of the buttons
        tecla(*janela, Qt::Key_D, Qt::AltModifier);
        EXPECT_TRUE(final.isVisible() && com_foco(*janela) == "Final");
        EXPECT_FALSE(widget<QWidget>(*janela, "campo(0)").isEnabled());
        tecla(*janela, Qt::Key_Space);
        EXPECT_TRUE(marcada());
        for (int i = 0; i < tabs; ++i)
            tecla(*janela, Qt::Key_Tab);
        EXPECT_TRUE(widget<QLabel>(*janela, "ajuda").text().contains("Esc cancela")) << com_foco(*janela);
        tecla(*janela, Qt::Key_Escape);
        EXPECT_TRUE(na_guia()) << tabs;
    }
    tecla(*janela, Qt::Key_Return); // on the button that opened it
    const int transf = ecra->Final.coluna("Transf");
    for (const bool esperada : {true, false, true}) {
        QTest::mouseClick(final.viewport(), Qt::LeftButton, {}, celula(*janela, "Final", 0, transf));
        EXPECT_EQ(marcada(), esperada);
    }
    Respostas respostas;
    respostas.faz([](QWidget& caixa) {
        tecla(caixa, Qt::Key_Left); // from Cancelar, the default, to OK
        tecla(caixa, Qt::Key_Return);
    });
    respostas.carrega(Qt::Key_Return);
    tecla(*janela, Qt::Key_D, Qt::AltModifier);
    EXPECT_THAT(respostas.textos, ::testing::ElementsAre("Vai proceder à Devolução.\nPretende continuar?",
                                                         "Foi criado o documento Nº  1"));
    activa();
    EXPECT_TRUE(!final.isVisible() && com_foco(*janela) == "campo(0)");
    EXPECT_THAT(procura("Select Origem from xel_ORVEX_Mov where TpDoc='GD'"),
                ::testing::HasSubstr("/GR/1/" + numero + "/"));
}

} // namespace
} // namespace orvex::testes
