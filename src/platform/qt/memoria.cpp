#include "platform/qt/memoria.h"

#include <QDir>
#include <QLockFile>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStandardPaths>
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

QString le_escolha(const QString& chave) { return Memoria().value("Escolhas/" + chave).toString(); }

void guarda_escolha(const QString& chave, const QString& valor) {
    Memoria().setValue("Escolhas/" + chave, valor);
}

LugarDaJanela::LugarDaJanela(QString chave) : chave_(std::move(chave)) {}

LugarDaJanela::~LugarDaJanela() = default;

void LugarDaJanela::repoe(QWidget& janela, QSize habitual) {
    constexpr int janelas = 8;
    constexpr int degrau = 32; // a title bar, or so
    // On this computer: the configuration may follow the user to others.
    const QDir pasta(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + "/ORVEX");
    pasta.mkpath(".");
    for (ordem_ = 0; ordem_ < janelas; ++ordem_) {
        tranca_ =
            std::make_unique<QLockFile>(pasta.filePath(QString("%1.%2.aberta").arg(chave_).arg(ordem_)));
        tranca_->setStaleLockTime(0); // it holds for as long as its program runs
        if (tranca_->tryLock() || tranca_->error() != QLockFile::LockFailedError) break;
    }
    // Room is left for the frame that the desktop puts around the window.
    const QSize ecra = janela.screen()->availableSize() - QSize(8, 34);
    if (!janela.restoreGeometry(Memoria().value("Janelas/" + chave_).toByteArray()))
        return janela.resize(habitual.boundedTo(ecra).expandedTo(janela.minimumSizeHint()));
    if (ordem_ == 0) return;
    janela.setWindowState(janela.windowState() & ~Qt::WindowMaximized);
    const QRect livre = janela.screen()->availableGeometry();
    const QPoint fim = livre.bottomRight() - QPoint(janela.width() + 8, janela.height() + 34);
    const QPoint lugar = janela.pos() + ordem_ * QPoint(degrau, degrau);
    // Where there is no room beside it, it goes back to the corner.
    janela.move(lugar.x() > fim.x() || lugar.y() > fim.y() ? livre.topLeft() + ordem_ * QPoint(degrau, 0)
                                                           : lugar);
}

void LugarDaJanela::guarda(const QWidget& janela) const {
    if (ordem_ == 0) Memoria().setValue("Janelas/" + chave_, janela.saveGeometry());
}

void repoe_divisao(QSplitter& divisao, const QString& chave) {
    divisao.restoreState(Memoria().value("Divisoes/" + chave).toByteArray());
}

void guarda_divisao(const QSplitter& divisao, const QString& chave) {
    Memoria().setValue("Divisoes/" + chave, divisao.saveState());
}

} // namespace orvex::platform::qt
