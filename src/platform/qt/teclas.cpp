#include "platform/qt/teclas.h"

#include <QApplication>

namespace orvex::platform::qt {

bool so_modificador(const QKeyEvent& evento) {
    switch (evento.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return true;
    default:
        return false;
    }
}

int codigo_tecla(const QKeyEvent& evento) {
    struct Codigo {
        int tecla;
        int codigo;
    };
    constexpr Codigo codigos[] = {{Qt::Key_Return, 13},   {Qt::Key_Enter, 13},  {Qt::Key_Escape, 27},
                                  {Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},     {Qt::Key_Left, 37},
                                  {Qt::Key_Up, 38},       {Qt::Key_Right, 39},  {Qt::Key_Down, 40},
                                  {Qt::Key_Insert, 45},   {Qt::Key_Delete, 46}, {Qt::Key_PageUp, 33},
                                  {Qt::Key_PageDown, 34}, {Qt::Key_End, 35},    {Qt::Key_Home, 36}};
    for (const Codigo& codigo : codigos)
        if (codigo.tecla == evento.key()) return codigo.codigo;
    if (evento.key() >= Qt::Key_F1 && evento.key() <= Qt::Key_F12) return 112 + evento.key() - Qt::Key_F1;
    if (evento.key() > 0 && evento.key() <= 0xFF) return evento.key(); // letters come in upper case
    return 255;
}

int estado_shift(const QKeyEvent& evento) {
    const Qt::KeyboardModifiers m = evento.modifiers();
    return (m.testFlag(Qt::ShiftModifier) ? 1 : 0) | (m.testFlag(Qt::ControlModifier) ? 2 : 0) |
           (m.testFlag(Qt::AltModifier) ? 4 : 0);
}

bool e_enter(const QKeyEvent& evento) {
    return evento.key() == Qt::Key_Return || evento.key() == Qt::Key_Enter;
}

QString escrito(const QKeyEvent& evento) {
    const QString texto = evento.text();
    const bool escreve = !texto.isEmpty() && texto.front().isPrint() &&
                         !(evento.modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    return escreve ? texto : QString();
}

SoTeclasDePessoa::SoTeclasDePessoa(bool depois_de_um_codigo) {
    if (depois_de_um_codigo) desde_a_ultima_.start();
    qApp->installEventFilter(this);
}

bool SoTeclasDePessoa::eventFilter(QObject*, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress) return false;
    const auto& tecla = static_cast<const QKeyEvent&>(*evento);
    if (e_enter(tecla) || tecla.key() == Qt::Key_Space) {
        const bool de_leitor = desde_a_ultima_.isValid() && desde_a_ultima_.elapsed() < pausa_de_leitor_ms;
        if (de_leitor) QApplication::beep();
        return de_leitor;
    }
    if (escrito(tecla).isEmpty()) return false;
    desde_a_ultima_.start();
    return true;
}

} // namespace orvex::platform::qt
