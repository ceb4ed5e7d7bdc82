// Tells a barcode reader's code from what a person types: its characters follow one another at once, and an
// Enter ends them.
#pragma once

#include <QElapsedTimer>
#include <QString>

class QKeyEvent;

namespace orvex::platform::qt::consulta {

class Leitor {
  public:
    enum class Que {
        nada,     // of its
        comeca,   // a character after which others may come
        continua, // another one
        acaba,    // the Enter behind a code, or a second Enter
    };
    Que ve(const QKeyEvent& tecla);
    // What came since `comeca`; empty at a second Enter.
    const QString& codigo() const { return codigo_; }

  private:
    QElapsedTimer desde_a_ultima_; // since a character, or the Enter that ended a code
    QString codigo_;
    bool lido_ = false; // the last key was that Enter
};

} // namespace orvex::platform::qt::consulta
