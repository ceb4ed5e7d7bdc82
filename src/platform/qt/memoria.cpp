#include "platform/qt/memoria.h"

#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QWidget>

namespace orvex::platform::qt {
namespace {

struct Memoria : QSettings {
    Memoria() : QSettings(QSettings::IniFormat, QSettings::UserScope, "ORVEX", "ORVEX") {}
};

} // namespace

int le_largura(const QString& chave, int habitual) {
    const int largura = Memoria().value("Colunas/" + chave, habitual).toInt();
    return largura >= 20 && largura <= 2000 ? largura : habitual;
}

void guarda_largura(const QString& chave, int largura) { Memoria().setValue("Colunas/" + chave, largura); }

void repoe_janela(QWidget& janela, const QString& chave, QSize habitual) {
    if (janela.restoreGeometry(Memoria().value("Janelas/" + chave).toByteArray())) return;
    // Room is left for the frame that the desktop puts around the window.
    const QSize ecra = janela.screen()->availableSize() - QSize(8, 34);
    janela.resize(habitual.boundedTo(ecra).expandedTo(janela.minimumSizeHint()));
}

void guarda_janela(const QWidget& janela, const QString& chave) {
    Memoria().setValue("Janelas/" + chave, janela.saveGeometry());
}

void repoe_divisao(QSplitter& divisao, const QString& chave) {
    divisao.restoreState(Memoria().value("Divisoes/" + chave).toByteArray());
}

void guarda_divisao(const QSplitter& divisao, const QString& chave) {
    Memoria().setValue("Divisoes/" + chave, divisao.saveState());
}

} // namespace orvex::platform::qt
