#include "roteiro.h"

#include "base/caminho.h"
#include "base/falha.h"

#include <QApplication>
#include <QPainter>
#include <QTest>
#include <QTimer>
#include <QWidget>

namespace orvex::demo {
namespace {

constexpr int pausa_ms = 20; // lets a window that was just opened take the keyboard

} // namespace

Roteiro::Roteiro(QWidget& janela, std::filesystem::path pasta) : janela_(janela), pasta_(std::move(pasta)) {}

Roteiro& Roteiro::faz(std::function<void()> accao) {
    passos_.push_back(std::move(accao));
    return *this;
}

Roteiro& Roteiro::tecla(Qt::Key codigo, Qt::KeyboardModifiers modificadores, int vezes) {
    for (int i = 0; i < vezes; ++i)
        faz([this, codigo, modificadores] { QTest::keyClick(&com_teclado(), codigo, modificadores); });
    return *this;
}

Roteiro& Roteiro::escreve(const char* texto) {
    return faz([this, texto = QString::fromUtf8(texto)] {
        // Each letter as the text of a key: a keyboard has no key of its own for most accented ones.
        for (const QChar letra : texto)
            QTest::sendKeyEvent(QTest::Click, &com_teclado(), Qt::Key_unknown, QString(letra), {});
    });
}

Roteiro& Roteiro::retrata(const char* nome) {
    return faz([this, nome] {
        const QString ficheiro = QString("%1-%2.png").arg(++retratos_, 2, 10, QChar('0')).arg(nome);
        const std::string nome_completo = base::texto_de(pasta_ / base::caminho_de(ficheiro.toStdString()));
        if (!imagem().save(QString::fromStdString(nome_completo)))
            throw base::Falha("Não foi possível gravar a imagem «" + nome_completo + "».");
    });
}

// A modal box stays in its own event loop until a later step answers it, so the next step is due before this
// one has returned; a timer does not fire again while it is being handled, hence a new one for each.
void Roteiro::proximo() {
    if (seguinte_ == passos_.size()) return QCoreApplication::quit();
    QTimer::singleShot(pausa_ms, &janela_, [this] { proximo(); });
    // Without a window manager nobody hands the keyboard back when a modal window closes.
    if (QApplication::activeModalWidget() == nullptr) janela_.activateWindow();
    passos_[seguinte_++]();
}

void Roteiro::corre() {
    QTimer::singleShot(pausa_ms, &janela_, [this] { proximo(); });
    QCoreApplication::exec();
}

QWidget& Roteiro::com_teclado() const {
    QWidget* janela =
        QApplication::activeModalWidget() != nullptr ? QApplication::activeModalWidget() : &janela_;
    return janela->focusWidget() != nullptr ? *janela->focusWidget() : *janela;
}

QImage Roteiro::imagem() const {
    QImage imagem = janela_.grab().toImage();
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr) return imagem;
    QPainter pintor(&imagem);
    const QImage caixa = const_cast<QWidget*>(modal)->grab().toImage();
    const QPoint onde((janela_.width() - modal->width()) / 2, (janela_.height() - modal->height()) / 2);
    pintor.drawImage(onde, caixa);
    pintor.drawRect(QRect(onde, modal->size()));
    return imagem;
}

} // namespace orvex::demo
