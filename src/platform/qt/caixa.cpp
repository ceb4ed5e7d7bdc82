#include "platform/qt/caixa.h"

#include "platform/qt/teclas.h"
#include "platform/qt/textos.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QGridLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>

#include <algorithm>
#include <limits>

namespace orvex::platform::qt {
namespace {

constexpr int largura_minima = 330; // in pixels at 100 %
constexpr int folga = 4;
constexpr int barra_de_titulo = 34; // of a box, or so

// Where a widget shows what a box may be about: of a grid, its current cell.
QRect lugar_de(const QWidget& w) {
    const auto* grelha = qobject_cast<const QAbstractItemView*>(&w);
    const QWidget& tela = grelha != nullptr ? *grelha->viewport() : w;
    const QRect dentro = grelha != nullptr ? grelha->visualRect(grelha->currentIndex()) : w.rect();
    return {tela.mapToGlobal(dentro.topLeft()), dentro.size()};
}

QRect a_deixar_a_vista(const QWidget& janela) {
    QRect tudo;
    for (const QLineEdit* campo : janela.findChildren<QLineEdit*>())
        if (campo->property(marca_de_quantidade).toBool() && campo->isVisible() && !campo->text().isEmpty())
            tudo |= lugar_de(*campo);
    const QWidget* com_foco = janela.focusWidget();
    if (com_foco == nullptr || qobject_cast<const QAbstractButton*>(com_foco) != nullptr) return tudo;
    return tudo | lugar_de(*com_foco);
}

// The nearest place that covers nothing of it; where there is none, the one that covers least.
QPoint ao_lado(const QRect& caixa, const QRect& a_vista, const QRect& ecra) {
    const auto no_ecra = [&](QPoint p) {
        return QPoint(std::clamp(p.x(), ecra.left(), std::max(ecra.left(), ecra.right() - caixa.width())),
                      std::clamp(p.y(), ecra.top(), std::max(ecra.top(), ecra.bottom() - caixa.height())));
    };
    QPoint melhor = caixa.topLeft();
    qint64 tapado = std::numeric_limits<qint64>::max();
    for (const QPoint& p : {caixa.topLeft(), QPoint(caixa.x(), a_vista.bottom() + folga),
                            QPoint(caixa.x(), a_vista.top() - folga - caixa.height()),
                            QPoint(a_vista.right() + folga, caixa.y()),
                            QPoint(a_vista.left() - folga - caixa.width(), caixa.y())}) {
        const QRect comum = QRect(no_ecra(p), caixa.size()) & a_vista;
        const qint64 deste = qint64{comum.width()} * comum.height();
        if (deste < tapado) {
            tapado = deste;
            melhor = no_ecra(p);
        }
    }
    return melhor;
}

class Caixa : public QMessageBox {
  public:
    using QMessageBox::QMessageBox;

  protected:
    // Its size is known now, and nothing of it is on the screen yet.
    void showEvent(QShowEvent* evento) override {
        QMessageBox::showEvent(evento);
        if (parentWidget() == nullptr) return;
        const QRect a_vista = a_deixar_a_vista(*parentWidget()->window());
        // Whether the place is that of the frame or of what is in it, the desktop says later.
        const QPoint titulo(0, barra_de_titulo);
        const QRect com_titulo(pos() - titulo, size() + QSize(0, 2 * barra_de_titulo));
        if (a_vista.intersects(com_titulo))
            move(ao_lado(com_titulo, a_vista, screen()->availableGeometry()) + titulo);
    }
};

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
    const SoTeclasDePessoa so_de_pessoa;
    return caixa.exec();
}

} // namespace

int mostra_caixa(QWidget* pai, const std::string& texto, const std::string& titulo, common::Icone icone,
                 common::Botoes botoes) {
    Caixa caixa(pai);
    poe_botoes(caixa, botoes);
    return resposta(abre(caixa, texto, titulo, icone), botoes);
}

bool mostra_escolha(QWidget* pai, const std::string& texto, const std::string& titulo, const char* sim,
                    const char* nao) {
    Caixa caixa(pai);
    const QPushButton* primeiro = caixa.addButton(qs(sim), QMessageBox::AcceptRole);
    QPushButton* segundo = caixa.addButton(qs(nao), QMessageBox::RejectRole);
    caixa.setDefaultButton(segundo);
    caixa.setEscapeButton(segundo);
    abre(caixa, texto, titulo, common::Icone::exclamacao);
    return caixa.clickedButton() == primeiro;
}

} // namespace orvex::platform::qt
