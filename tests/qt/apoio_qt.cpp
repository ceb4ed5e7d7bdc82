#include "tests/qt/apoio_qt.h"

#include "platform/qt/aplicacao.h"

#include <QApplication>
#include <QMessageBox>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orvex::testes {
namespace {

// One application object for the whole program; what windows remember goes to a folder of its own.
class AmbienteQt : public ::testing::Environment {
  public:
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, pasta_.path());
        aplicacao_ = std::make_unique<QApplication>(argc_, argv_);
        platform::qt::prepara_aplicacao(*aplicacao_);
    }
    void TearDown() override { aplicacao_.reset(); }

  private:
    QTemporaryDir pasta_;
    int argc_ = 1;
    char nome_[9] = "teste_qt";
    char* argv_[2] = {nome_, nullptr};
    std::unique_ptr<QApplication> aplicacao_;
};

[[maybe_unused]] const auto* const ambiente = ::testing::AddGlobalTestEnvironment(new AmbienteQt);

constexpr int paciencia = 300; // looks at the screen before a window that stays is given up

QWidget& alvo(QWidget& janela) { return janela.focusWidget() != nullptr ? *janela.focusWidget() : janela; }

} // namespace

void tecla(QWidget& janela, Qt::Key codigo, Qt::KeyboardModifiers modificadores) {
    QTest::keyClick(&alvo(janela), codigo, modificadores);
}

// Letter by letter: the first one may open an editor that takes the others.
void escreve(QWidget& janela, const char* texto) {
    for (const QChar letra : QString::fromUtf8(texto))
        QTest::keyClicks(&alvo(janela), letra);
}

QPoint celula(const QWidget& janela, const char* grelha, int linha, int coluna) {
    const auto& vista = widget<QTableView>(janela, grelha);
    return vista.visualRect(vista.model()->index(linha, coluna)).center();
}

Respostas::Respostas() {
    QObject::connect(&relogio_, &QTimer::timeout, &relogio_, [this] { responde(); });
    relogio_.start(2);
}

Respostas::~Respostas() { EXPECT_TRUE(respostas_.empty()) << respostas_.size() << " respostas por dar"; }

Respostas& Respostas::carrega(std::vector<Qt::Key> teclas) {
    return faz([teclas = std::move(teclas)](QWidget& janela) {
        for (const Qt::Key codigo : teclas)
            tecla(janela, codigo);
    });
}

Respostas& Respostas::faz(std::function<void(QWidget&)> accao) {
    respostas_.push_back(std::move(accao));
    return *this;
}

void Respostas::responde() {
    QWidget* janela = QApplication::activeModalWidget();
    if (janela == nullptr || a_responder_) return;
    if (janela == respondida_ || respostas_.empty()) {
        // An access key presses its button a moment later.
        if (++espera_ < paciencia) return;
        ADD_FAILURE() << "janela inesperada: " << janela->windowTitle().toStdString();
        janela->close();
        return;
    }
    if (!janela->isActiveWindow()) return;
    if (const auto* caixa = qobject_cast<QMessageBox*>(janela)) textos.push_back(caixa->text().toStdString());
    respondida_ = janela;
    espera_ = 0;
    const auto accao = std::move(respostas_.front());
    respostas_.pop_front();
    a_responder_ = true; // the action may run an event loop of its own
    accao(*janela);
    a_responder_ = false;
}

} // namespace orvex::testes
