#include "platform/qt/caixa.h"

#include "platform/qt/textos.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>

namespace orvex::platform::qt {
namespace {

constexpr int largura_minima = 330; // in pixels at 100 %

QMessageBox::Icon icone_qt(common::Icone icone) {
    switch (icone) {
    case common::Icone::exclamacao:
        return QMessageBox::Warning;
    case common::Icone::informacao:
        return QMessageBox::Information;
    case common::Icone::critico:
        return QMessageBox::Critical;
    case common::Icone::nenhum:
        break;
    }
    return QMessageBox::NoIcon;
}

int resposta(int botao, common::Botoes botoes) {
    switch (botao) {
    case QMessageBox::Ok:
        return common::resposta_ok;
    case QMessageBox::Cancel:
        return common::resposta_cancelar;
    case QMessageBox::Yes:
        return common::resposta_sim;
    case QMessageBox::No:
        return common::resposta_nao;
    default: // it went without an answer, because the program is ending: nothing was agreed to
        return botoes == common::Botoes::ok_cancelar ? common::resposta_cancelar
               : botoes == common::Botoes::sim_nao   ? common::resposta_nao
                                                     : common::resposta_nenhuma;
    }
}

void poe_botoes(QMessageBox& caixa, common::Botoes botoes) {
    switch (botoes) {
    case common::Botoes::ok:
        caixa.setStandardButtons(QMessageBox::Ok);
        caixa.setEscapeButton(QMessageBox::Ok);
        break;
    case common::Botoes::ok_cancelar:
        caixa.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        caixa.setDefaultButton(QMessageBox::Cancel);
        caixa.setEscapeButton(QMessageBox::Cancel);
        break;
    case common::Botoes::sim_nao:
        caixa.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        caixa.setDefaultButton(QMessageBox::Yes);
        caixa.setEscapeButton(QMessageBox::No);
        break;
    }
}

// By a row of its own: a minimum given to the text would hide from the box how wide the text itself is.
void alarga(QMessageBox& caixa) {
    auto* grelha = qobject_cast<QGridLayout*>(caixa.layout());
    if (grelha != nullptr)
        grelha->addItem(new QSpacerItem(largura_minima, 0), grelha->rowCount(), 0, 1, grelha->columnCount());
}

int abre(QMessageBox& caixa, const std::string& texto, const std::string& titulo, common::Icone icone) {
    caixa.setObjectName("caixa");
    caixa.setWindowTitle(qs(titulo));
    caixa.setTextFormat(Qt::PlainText);
    caixa.setText(com_quebras(texto));
    caixa.setIcon(icone_qt(icone));
    for (QAbstractButton* botao : caixa.buttons())
        botao->setIcon({});
    // Wide enough for its title; nothing to minimise or to enlarge.
    alarga(caixa);
    caixa.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                         Qt::WindowCloseButtonHint);
    return caixa.exec();
}

} // namespace

int mostra_caixa(QWidget* pai, const std::string& texto, const std::string& titulo, common::Icone icone,
                 common::Botoes botoes) {
    QMessageBox caixa(pai);
    poe_botoes(caixa, botoes);
    return resposta(abre(caixa, texto, titulo, icone), botoes);
}

bool mostra_escolha(QWidget* pai, const std::string& texto, const std::string& titulo, const char* sim,
                    const char* nao) {
    QMessageBox caixa(pai);
    const QPushButton* primeiro = caixa.addButton(qs(sim), QMessageBox::AcceptRole);
    QPushButton* segundo = caixa.addButton(qs(nao), QMessageBox::RejectRole);
    caixa.setDefaultButton(segundo);
    caixa.setEscapeButton(segundo);
    abre(caixa, texto, titulo, common::Icone::exclamacao);
    return caixa.clickedButton() == primeiro;
}

} // namespace orvex::platform::qt
