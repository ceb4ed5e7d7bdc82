// Driving real windows, offscreen: the application object, keys and clicks, and answers to modal windows.
#pragma once

#include "platform/qt/aplicacao.h"
#include "platform/qt/janelas/janela_qt.h"

#include <QtTest>
#include <QtWidgets>

#include <gmock/gmock.h>

#include <deque>
#include <functional>

namespace orvex::testes {

// One application object for the whole program; what windows remember goes to a folder of its own.
class AmbienteQt : public ::testing::Environment {
  public:
    void SetUp() override {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("XDG_CACHE_HOME", pasta_.path().toUtf8());
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, pasta_.path());
        aplicacao_ = std::make_unique<QApplication>(argc_, argv_);
        for (const char* classe : {static_cast<const char*>(nullptr), "QMenu"})
            QApplication::setPalette(QPalette(Qt::black), classe); // a dark desktop
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

inline const auto* const ambiente = ::testing::AddGlobalTestEnvironment(new AmbienteQt);

// The widget of a control, by the control's name; the test fails when there is none of that kind.
template <typename Tipo>
Tipo& widget(const QWidget& janela, const char* nome) {
    auto* encontrado = janela.findChild<Tipo*>(nome);
    if (encontrado == nullptr) throw std::runtime_error(std::string("Não há widget ") + nome);
    return *encontrado;
}

inline QWidget& com_foco(QWidget& janela) {
    return janela.focusWidget() != nullptr ? *janela.focusWidget() : janela;
}
inline void tecla(QWidget& janela, Qt::Key codigo, Qt::KeyboardModifiers modificadores = {}) {
    QTest::keyClick(&com_foco(janela), codigo, modificadores);
}
// Letter by letter: the first one may open an editor that takes the others.
inline void escreve(QWidget& janela, const char* texto) {
    for (const QChar letra : QString::fromUtf8(texto))
        QTest::keyClicks(&com_foco(janela), letra);
}

// The middle of a cell of a table, in its viewport.
inline QPoint celula(const QWidget& janela, const char* grelha, int linha, int coluna) {
    const auto& vista = widget<QTableView>(janela, grelha);
    return vista.visualRect(vista.model()->index(linha, coluna)).center();
}

// Answers the modal windows that come up while it lives, in order, and keeps what the boxes said. One that
// nobody expected fails the test and is dismissed; so does an answer that was never asked for.
class Respostas {
  public:
    Respostas() {
        QObject::connect(&relogio_, &QTimer::timeout, &relogio_, [this] { responde(); });
        relogio_.start(2);
    }
    ~Respostas() { EXPECT_TRUE(respostas_.empty()) << respostas_.size() << " respostas por dar"; }

    void carrega(const std::vector<Qt::Key>& teclas) { // where the modal window has the keyboard
        faz([teclas](QWidget& janela) {
            for (const Qt::Key codigo : teclas)
                tecla(janela, codigo);
        });
    }
    void faz(std::function<void(QWidget&)> accao) { respostas_.push_back(std::move(accao)); }

    std::vector<std::string> textos;

  private:
    static constexpr int paciencia = 300; // looks at the screen before a window that stays is given up

    void responde() {
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
        if (const auto* caixa = qobject_cast<QMessageBox*>(janela))
            textos.push_back(caixa->text().toStdString());
        respondida_ = janela;
        espera_ = 0;
        const auto accao = std::move(respostas_.front());
        respostas_.pop_front();
        a_responder_ = true; // the action may run an event loop of its own
        accao(*janela);
        a_responder_ = false;
    }

    std::deque<std::function<void(QWidget&)>> respostas_;
    QTimer relogio_;
    QPointer<QWidget> respondida_;
    int espera_ = 0;
    bool a_responder_ = false;
};

} // namespace orvex::testes
