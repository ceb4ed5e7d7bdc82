#include "platform/qt/caixa.h"

#include "tests/qt/apoio_qt.h"

#include <QAbstractButton>
#include <QMessageBox>

#include <gtest/gtest.h>

namespace orvex::testes {
namespace {

using common::Botoes;
using platform::qt::mostra_caixa;

TEST(Caixa, TemBotoesPortuguesesEAsRespostasDoTeclado) {
    const struct {
        Botoes botoes;
        const char* textos;
        Qt::Key tecla;
        Qt::KeyboardModifier com;
        int resposta;
    } casos[] = {{Botoes::ok, "OK|", Qt::Key_Return, Qt::NoModifier, common::resposta_ok},
                 {Botoes::ok, "OK|", Qt::Key_Escape, Qt::NoModifier, common::resposta_ok},
                 {Botoes::ok_cancelar, "OK|Cancelar|", Qt::Key_Return, Qt::NoModifier, 2},
                 {Botoes::ok_cancelar, "OK|Cancelar|", Qt::Key_Escape, Qt::NoModifier, 2},
                 {Botoes::sim_nao, "Sim|Não|", Qt::Key_Return, Qt::NoModifier, 6},
                 {Botoes::sim_nao, "Sim|Não|", Qt::Key_Escape, Qt::NoModifier, 7},
                 {Botoes::sim_nao, "Sim|Não|", Qt::Key_N, Qt::AltModifier, 7}};
    for (const auto& caso : casos) {
        Respostas respostas;
        std::string vistos;
        respostas.faz([&](QWidget& caixa) {
            for (const QAbstractButton* botao : dynamic_cast<QMessageBox&>(caixa).buttons())
                vistos += botao->text().remove('&').toStdString() + "|";
            QTest::keyClick(&caixa, caso.tecla, caso.com);
        });
        // The text comes as it is, with one line break for each pair.
        EXPECT_EQ(mostra_caixa(nullptr, "<b>A</b>\n\rB & C\r\nD?", "", common::Icone::nenhum, caso.botoes),
                  caso.resposta);
        EXPECT_EQ(vistos, caso.textos);
        EXPECT_EQ(respostas.textos, std::vector<std::string>{"<b>A</b>\nB & C\nD?"});
    }
}

} // namespace
} // namespace orvex::testes
