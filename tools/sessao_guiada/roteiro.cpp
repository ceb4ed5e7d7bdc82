#include "roteiro.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "delivery/folha_guia.h"
#include "delivery/guias_remessa.h"
#include "platform/qt/janelas/janela_qt.h"
#include "platform/qt/papel/folha.h"

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

Roteiro& Roteiro::clica(const char* controlo) {
    return faz(
        [this, controlo] { QTest::mouseClick(janela_.findChild<QWidget*>(controlo), Qt::LeftButton); });
}

Roteiro& Roteiro::retrata(const char* nome) {
    return faz([this, nome] { guarda(imagem(), nome); });
}

Roteiro& Roteiro::retrata_papel(const char* nome, NoPapel paginas) {
    return faz([this, nome, paginas = std::move(paginas)] {
        constexpr double pontos_por_polegada = 96, metros_por_polegada = 0.0254;
        constexpr QSize a4(794, 1123);
        constexpr int margem = 50;
        QImage papel(a4, QImage::Format_RGB888);
        papel.setDotsPerMeterX(static_cast<int>(pontos_por_polegada / metros_por_polegada));
        papel.setDotsPerMeterY(papel.dotsPerMeterX());
        papel.fill(Qt::white);
        const auto folha = paginas(papel, a4 - QSize(2 * margem, 2 * margem));
        QPainter pintor(&papel);
        pintor.translate(margem, margem);
        folha->pinta(pintor, 0);
        pintor.end();
        guarda(papel, nome);
    });
}

Roteiro& Roteiro::retrata_folha(const char* nome, const std::string& empresa) {
    return retrata_papel(nome, [this, empresa](QPaintDevice& papel, QSizeF espaco) {
        auto& ecra =
            dynamic_cast<delivery::GuiasRemessa&>(dynamic_cast<platform::qt::JanelaQt&>(janela_).ecra());
        return std::make_unique<platform::qt::Folha>(delivery::folha_da_guia(ecra, empresa), papel, espaco);
    });
}

Roteiro& Roteiro::espera(std::function<bool()> pronto) {
    return faz([this, pronto = std::move(pronto), vezes = 0]() mutable {
        constexpr int maximo = 1000;
        if (pronto()) return;
        if (++vezes == maximo) throw base::Falha("A consulta não respondeu.");
        --seguinte_; // this step comes again
    });
}

void Roteiro::guarda(const QImage& imagem, const char* nome) const {
    const std::string nome_completo = base::texto_de(pasta_ / base::caminho_de(nome + std::string(".png")));
    constexpr int a_mais_pequena = 0; // of the ways to pack the same pixels
    if (!imagem.convertToFormat(QImage::Format_RGB888)
             .save(QString::fromStdString(nome_completo), "PNG", a_mais_pequena))
        throw base::Falha("Não foi possível gravar a imagem «" + nome_completo + "».");
}

// A modal box stays in its own event loop until a later step answers it, so the next step is due before this
// one has returned; a timer does not fire again while it is being handled, hence a new one for each.
void Roteiro::proximo() {
    if (seguinte_ == passos_.size()) return QCoreApplication::quit();
    QTimer::singleShot(pausa_ms, &janela_, [this] { proximo(); });
    // Without a window manager nobody hands the keyboard back when a modal window closes.
    if (QApplication::activeModalWidget() == nullptr && !janela_.isActiveWindow())
        return janela_.activateWindow();
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
    auto* modal = QApplication::activeModalWidget();
    if (modal == nullptr) return janela_.grab().toImage();
    const QRect onde(modal->pos() - janela_.pos(), modal->size() + QSize(1, 1));
    const QRect toda = janela_.rect() | onde;
    QImage imagem(toda.size(), QImage::Format_RGB888);
    imagem.fill(janela_.palette().color(QPalette::Window));
    QPainter pintor(&imagem);
    pintor.translate(-toda.topLeft());
    pintor.drawPixmap(0, 0, janela_.grab());
    pintor.drawPixmap(onde.topLeft(), modal->grab());
    pintor.drawRect(QRect(onde.topLeft(), modal->size()));
    return imagem;
}

} // namespace orvex::demo
