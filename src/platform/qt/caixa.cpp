#include "platform/qt/caixa.h"

#include "platform/qt/textos.h"

#include <QAbstractButton>
#include <QLabel>
#include <QMessageBox>

namespace orvex::platform::qt {
namespace {

constexpr int largura_minima = 260; // of the text, in pixels at 100 %

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

int resposta(int botao) {
    switch (botao) {
    case QMessageBox::Cancel:
        return common::resposta_cancelar;
    case QMessageBox::Yes:
        return common::resposta_sim;
    case QMessageBox::No:
        return common::resposta_nao;
    default:
        return common::resposta_ok;
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

} // namespace

int mostra_caixa(QWidget* pai, const std::string& texto, const std::string& titulo, common::Icone icone,
                 common::Botoes botoes) {
    QMessageBox caixa(pai);
    caixa.setObjectName("caixa");
    caixa.setWindowTitle(qs(titulo));
    caixa.setTextFormat(Qt::PlainText);
    caixa.setText(com_quebras(texto));
    caixa.setIcon(icone_qt(icone));
    poe_botoes(caixa, botoes);
    for (QAbstractButton* botao : caixa.buttons())
        botao->setIcon({});
    // Wide enough for its title; nothing to minimise or to enlarge.
    if (auto* rotulo = caixa.findChild<QLabel*>("qt_msgbox_label")) rotulo->setMinimumWidth(largura_minima);
    caixa.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                         Qt::WindowCloseButtonHint);
    return resposta(caixa.exec());
}

} // namespace orvex::platform::qt
