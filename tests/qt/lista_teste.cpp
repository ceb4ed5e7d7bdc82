#include "tests/qt/ecra_teste.h"

#include "platform/qt/modelo_lista.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

#include <gtest/gtest.h>

namespace orvex::testes {
namespace {

class Listas : public ::testing::Test {
  protected:
    void SetUp() override {
        aberta.ecra.tabela.linhas = {
            {"10", "Irmãos São João, Lda"}, {"9", "Açores"}, {"20", "Zinco & Filhos"}};
    }
    // Opens the list with F4, does something in it, and gives what came into the field.
    std::string escolhe(const std::function<void(QWidget&)>& accao) {
        Respostas respostas;
        respostas.faz(accao);
        tecla(*aberta.janela, Qt::Key_F4);
        return aberta.ecra.campo[0].Text;
    }
    static QTableView& registos(QWidget& lista) { return widget<QTableView>(lista, "registos"); }

    JanelaAberta aberta;
};

TEST_F(Listas, EnterEscolheEOFocoSegueParaOCampoSeguinte) {
    EXPECT_EQ(escolhe([](QWidget& lista) {
                  tecla(lista, Qt::Key_Down);
                  tecla(lista, Qt::Key_Return);
              }),
              "9");
    EXPECT_EQ(com_foco(*aberta.janela), "campo(1)");
}

TEST_F(Listas, EscNaoMudaNada) {
    escreve(*aberta.janela, "7");
    EXPECT_EQ(escolhe([](QWidget& lista) { tecla(lista, Qt::Key_Escape); }), "7");
    EXPECT_EQ(com_foco(*aberta.janela), "campo(0)");
}

TEST_F(Listas, ProcuraEmTodasAsColunasSemMaiusculasNemAcentos) {
    struct Caso {
        const char* procurado;
        const char* contagem;
        const char* escolhido;
    };
    for (const Caso& caso : {Caso{"SAO joao", "1 de 3 registos", "10"},
                             {"acor", "1 de 3 registos", "9"},
                             {"20", "1 de 3 registos", "20"},
                             {"i", "2 de 3 registos", "10"}}) {
        SCOPED_TRACE(caso.procurado);
        std::string contagem;
        const std::string escolhido = escolhe([&](QWidget& lista) {
            escreve(lista, caso.procurado);
            contagem = widget<QLabel>(lista, "contagem").text().toStdString();
            tecla(lista, Qt::Key_Return);
        });
        EXPECT_EQ(escolhido, caso.escolhido);
        EXPECT_EQ(contagem, caso.contagem);
        aberta.janela->ecra().utilizador_foca(aberta.ecra.campo[0]);
    }
}

TEST_F(Listas, SemNenhumRegistoEnterNaoEscolhe) {
    EXPECT_EQ(escolhe([](QWidget& lista) {
                  escreve(lista, "nada disto");
                  tecla(lista, Qt::Key_Return);
                  EXPECT_TRUE(lista.isVisible());
                  tecla(lista, Qt::Key_Escape);
              }),
              "");
}

TEST_F(Listas, OrdenamPeloTecladoEPelosTitulos) {
    const std::string escolhido = escolhe([](QWidget& lista) {
        tecla(lista, Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(registos(lista).model()->index(0, 1).data().toString(), "Açores");
        const QHeaderView& titulos = *registos(lista).horizontalHeader();
        const QPoint nome(titulos.sectionViewportPosition(1) + 10, titulos.height() / 2);
        QTest::mouseClick(titulos.viewport(), Qt::LeftButton, {}, nome);
        const QPoint primeira = celula(lista, "registos", 0, 1);
        QTest::mouseClick(registos(lista).viewport(), Qt::LeftButton, {}, primeira);
        QTest::mouseDClick(registos(lista).viewport(), Qt::LeftButton, {}, primeira);
    });
    EXPECT_EQ(escolhido, "20") << "descending at the second time";
}

TEST_F(Listas, NumerosEDatasOrdenamSePeloValorEMostramSeNoFormatoRegional) {
    TabelaFixa tabela;
    tabela.linhas = {
        {10.5, base::DataHora{2024, 2, 1}}, {9, base::DataHora{2023, 12, 31}}, {base::Variante(), "x"}};
    platform::qt::ModeloLista modelo(*tabela.Consulta(""), {',', '.'}, {});
    const auto mostrado = [&](int linha, int coluna) {
        return modelo.data(modelo.index(linha, coluna), Qt::DisplayRole).toString().toStdString();
    };
    modelo.ordena(0, Qt::AscendingOrder);
    EXPECT_EQ(mostrado(0, 0) + "|" + mostrado(1, 0) + "|" + mostrado(2, 0), "|9|10,5");
    modelo.ordena(1, Qt::AscendingOrder);
    EXPECT_EQ(mostrado(0, 1) + "|" + mostrado(1, 1), "31-12-2023|01-02-2024");
    modelo.filtra("01-02");
    EXPECT_EQ(modelo.rowCount(), 1);
    EXPECT_EQ(modelo.escolha(0), "10.5") << "as it was read";
}

TEST_F(Listas, ColunasEscondidasNaoSeVeemNemSeProcuram) {
    TabelaFixa tabela;
    tabela.linhas = {{"chave", "um"}, {"um", "chave"}};
    platform::qt::ModeloLista modelo(*tabela.Consulta(""), {}, {true});
    modelo.filtra("chave");
    ASSERT_EQ(modelo.rowCount(), 1);
    EXPECT_EQ(modelo.escolha(0), "um");
}

TEST_F(Listas, UmaConsultaQueFalhaMostraAFalhaENaoEscolheNada) {
    aberta.ecra.tabela.falha = true;
    Respostas respostas;
    respostas.carrega(Qt::Key_Return);
    tecla(*aberta.janela, Qt::Key_F4);
    EXPECT_EQ(respostas.textos, std::vector<std::string>{"A tabela não existe."});
    EXPECT_EQ(com_foco(*aberta.janela), "campo(0)");
}

} // namespace
} // namespace orvex::testes
