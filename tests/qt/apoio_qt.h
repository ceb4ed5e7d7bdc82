// Driving real windows, offscreen: the application object, keys and clicks, and answers to modal windows.
#pragma once

#include "platform/qt/janela_qt.h"

#include <QPointer>
#include <QTest>
#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvex::testes {

// The widget of a control, by the control's name; the test fails when there is none of that kind.
template <typename Tipo>
Tipo& widget(const QWidget& janela, const char* nome) {
    auto* encontrado = janela.findChild<Tipo*>(nome);
    if (encontrado == nullptr) throw std::runtime_error(std::string("Não há widget ") + nome);
    return *encontrado;
}

// Both where the keyboard is.
void tecla(QWidget& janela, Qt::Key codigo, Qt::KeyboardModifiers modificadores = {});
void escreve(QWidget& janela, const char* texto);

// The middle of a cell of a table, in its viewport.
QPoint celula(const QWidget& janela, const char* grelha, int linha, int coluna);

// Answers the modal windows that come up while it lives, in order, and keeps what the boxes said. One that
// nobody expected fails the test and is dismissed; so does an answer that was never asked for.
class Respostas {
  public:
    Respostas();
    ~Respostas();

    Respostas& carrega(std::vector<Qt::Key> teclas); // where the modal window has the keyboard
    Respostas& faz(std::function<void(QWidget&)> accao);

    std::vector<std::string> textos;

  private:
    void responde();

    std::deque<std::function<void(QWidget&)>> respostas_;
    QTimer relogio_;
    QPointer<QWidget> respondida_;
    int espera_ = 0;
    bool a_responder_ = false;
};

} // namespace orvex::testes
