// The stock-adjustment window over a real company: its layout, and an adjustment's way through it by
// keyboard: made, replaced, cancelled.
#include "platform/qt/janela_mov_stocks.h"
#include "tests/qt/janela_na_empresa.h"

#include <QLabel>
#include <QLineEdit>

#include <gmock/gmock.h>

namespace orvex::testes {
namespace {

class JanelaDosAjustes : public JanelaNaEmpresa<adjust::MovStocks, platform::qt::JanelaMovStocks> {
  protected:
    JanelaDosAjustes() : JanelaNaEmpresa(std::int16_t{1}) {}

    std::string texto(const char* campo) { return widget<QLineEdit>(*janela, campo).text().toStdString(); }
    // Of the ledger's rows of surpluses of today: number and weight.
    std::string livro() {
        std::string linhas;
        const auto registos =
            BD.Consulta("Select NNumDoc, Quantidade from xel_ORVEX where TpDoc='SB' and Obs='Excesso "
                        "de Peso' and NNumDoc>1 and NNumDoc<37");
        for (; !registos->fim(); registos->move_seguinte())
            linhas += registos->valor(0).texto() + " " + registos->valor(1).texto() + ";";
        return linhas;
    }
};

TEST_F(JanelaDosAjustes, TemTodosOsControlosECabeInteiraNumEcraPequenoA200PorCento) {
    const QSize minimo = janela->minimumSizeHint();
    EXPECT_LE(minimo.width(), 504); // 1024 x 768, less the frame and the bar of the desktop
    EXPECT_LE(minimo.height(), 350);
    ecra->btAnular.Visible = true;
    ecra->Label2(1).Caption = std::string(300, 'W');
    janela->mostra();
    janela->resize(minimo);
    for (const common::Controlo* controlo : ecra->controlos()) {
        const auto* w = janela->findChild<QWidget*>(controlo->nome.c_str());
        ASSERT_NE(w, nullptr) << controlo->nome;
        EXPECT_TRUE(janela->rect().contains(QRect(w->mapTo(janela.get(), QPoint()), w->size())))
            << controlo->nome;
    }
}

TEST_F(JanelaDosAjustes, FazSubstituiEAnulaUmaSobraSoComOTeclado) {
    const auto confirma = [](QWidget& caixa) {
        tecla(caixa, Qt::Key_Left); // from Cancelar, the default, to OK
        tecla(caixa, Qt::Key_Return);
    };
    const auto escolhe = [](QWidget& lista) { tecla(lista, Qt::Key_Return); };
    {
        Respostas respostas;
        respostas.faz(escolhe);
        tecla(*janela, Qt::Key_F4);
    }
    activa();
    const std::string artigo = texto("campo(0)");
    EXPECT_FALSE(artigo.empty());
    EXPECT_FALSE(widget<QLabel>(*janela, "Label2(1)").text().isEmpty());
    EXPECT_EQ(com_foco(*janela), "campo(2)");
    tecla(*janela, Qt::Key_Return);
    const auto stock = base::FormatoRegional{}.le(texto("campo(1)")).value();
    escreve(*janela, base::FormatoRegional{}.texto(stock + base::Moeda::de_inteiro(1)).c_str());
    tecla(*janela, Qt::Key_Return);
    {
        Respostas respostas;
        respostas.faz(confirma).faz(confirma).carrega(Qt::Key_Return);
        tecla(*janela, Qt::Key_C, Qt::AltModifier);
        EXPECT_THAT(respostas.textos.at(0), ::testing::StartsWith("A Sobra é supeior ou igual a 150 Kg!"));
        EXPECT_EQ(respostas.textos.at(2), "Foi gerado o Documento   :  2");
    }
    activa();
    EXPECT_EQ(livro(), "2 1;");

    const auto carrega = [&] {
        Respostas respostas;
        respostas.faz(escolhe);
        tecla(*janela, Qt::Key_D, Qt::AltModifier);
    };
    carrega();
    activa();
    EXPECT_EQ(texto("campo(0)") + " " + texto("campo(3)") + " " + texto("campo(5)"), artigo + " 1 2");
    EXPECT_EQ(widget<QLabel>(*janela, "Label2(3)").text(), "Quantidade");
    EXPECT_EQ(widget<QWidget>(*janela, "campo(3)").accessibleName(), "Quantidade");
    EXPECT_TRUE(widget<QWidget>(*janela, "btAnular").isVisible());
    tecla(*janela, Qt::Key_Return);
    escreve(*janela, "0,1");
    {
        Respostas respostas;
        respostas.faz(confirma).carrega(Qt::Key_Return);
        tecla(*janela, Qt::Key_C, Qt::AltModifier);
    }
    activa();
    EXPECT_EQ(livro(), "3 0.1;");

    carrega();
    activa();
    Respostas respostas;
    respostas.faz(confirma);
    tecla(*janela, Qt::Key_A, Qt::AltModifier);
    EXPECT_EQ(livro(), "");
    EXPECT_FALSE(widget<QWidget>(*janela, "btAnular").isVisible());
}

} // namespace
} // namespace orvex::testes
