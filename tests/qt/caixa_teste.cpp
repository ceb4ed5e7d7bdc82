#include "platform/qt/caixa.h"

#include "tests/qt/apoio_qt.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QPushButton>

#include <gtest/gtest.h>

namespace orvex::testes {
namespace {

using common::Botoes;
using common::Icone;
using platform::qt::mostra_caixa;

struct CasoCaixa {
    Botoes botoes;
    std::vector<std::string> textos;
    int habitual; // answer of Enter at once
    int esc;
};

std::vector<std::string> textos_dos_botoes(QWidget& caixa) {
    std::vector<std::string> textos;
    for (const QAbstractButton* botao : dynamic_cast<QMessageBox&>(caixa).buttons())
        textos.push_back(botao->text().remove('&').toStdString());
    return textos;
}

TEST(Caixa, TemBotoesPortuguesesEAsRespostasDoTeclado) {
    const CasoCaixa casos[] = {{Botoes::ok, {"OK"}, 1, 1},
                               {Botoes::ok_cancelar, {"OK", "Cancelar"}, 2, 2},
                               {Botoes::sim_nao, {"Sim", "Não"}, 6, 7}};
    for (const CasoCaixa& caso : casos) {
        for (const bool enter : {true, false}) {
            Respostas respostas;
            std::vector<std::string> vistos;
            respostas.faz([&](QWidget& caixa) {
                vistos = textos_dos_botoes(caixa);
                QTest::keyClick(&caixa, enter ? Qt::Key_Return : Qt::Key_Escape);
            });
            EXPECT_EQ(mostra_caixa(nullptr, "Pergunta", "Informação", Icone::informacao, caso.botoes),
                      enter ? caso.habitual : caso.esc);
            EXPECT_EQ(vistos, caso.textos);
        }
    }
}

TEST(Caixa, RespondeACliquesEAsLetrasDeAcesso) {
    Respostas respostas;
    respostas.faz([](QWidget& caixa) { dynamic_cast<QMessageBox&>(caixa).button(QMessageBox::Ok)->click(); });
    EXPECT_EQ(mostra_caixa(nullptr, "?", "", Icone::informacao, Botoes::ok_cancelar), common::resposta_ok);
    respostas.faz([](QWidget& caixa) { QTest::keyClick(&caixa, Qt::Key_N, Qt::AltModifier); });
    EXPECT_EQ(mostra_caixa(nullptr, "?", "", Icone::informacao, Botoes::sim_nao), common::resposta_nao);
}

TEST(Caixa, MostraOTextoTalComoEComUmaMudancaDeLinhaPorPar) {
    Respostas respostas;
    for (int i = 0; i < 2; ++i)
        respostas.carrega(Qt::Key_Return);
    mostra_caixa(nullptr, "Vai anular.\n\rPretende continuar?", "", Icone::nenhum, Botoes::ok);
    mostra_caixa(nullptr, "<b>A</b>\r\nB & C", "", Icone::nenhum, Botoes::ok);
    EXPECT_EQ(respostas.textos,
              (std::vector<std::string>{"Vai anular.\nPretende continuar?", "<b>A</b>\nB & C"}));
}

} // namespace
} // namespace orvex::testes
