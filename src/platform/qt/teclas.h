// Keys as the rules count them: the codes of the character or, for keys without one, of the key.
#pragma once

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QObject>

namespace orvex::platform::qt {

bool so_modificador(const QKeyEvent& evento); // Shift, Ctrl, Alt ... by themselves
int codigo_tecla(const QKeyEvent& evento);    // never 0, which means a key already used up
int estado_shift(const QKeyEvent& evento);    // Shift 1, Ctrl 2, Alt 4

bool e_enter(const QKeyEvent& evento);
QString escrito(const QKeyEvent& evento); // what the key writes; empty for one that does something else

// A barcode reader's keys follow one another sooner, a person's mostly later.
inline constexpr int pausa_de_leitor_ms = 150;

// While it lives, what a reader sends answers nothing: letters would press buttons of a box that nobody has
// read, and so would the Enter behind them, and the second one of a reader that sends two. Access keys with
// Alt are a person's.
class SoTeclasDePessoa : public QObject {
  public:
    explicit SoTeclasDePessoa(bool depois_de_um_codigo = false);
    bool eventFilter(QObject* alvo, QEvent* evento) override;

  private:
    QElapsedTimer desde_a_ultima_; // since a character, or the code itself
};

} // namespace orvex::platform::qt
