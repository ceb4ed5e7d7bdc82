// Keys as the rules count them: the codes of the character or, for keys without one, of the key.
#pragma once

#include <QKeyEvent>

namespace orvex::platform::qt {

bool so_modificador(const QKeyEvent& evento); // Shift, Ctrl, Alt ... by themselves
int codigo_tecla(const QKeyEvent& evento);    // never 0, which means a key already used up
int estado_shift(const QKeyEvent& evento);    // Shift 1, Ctrl 2, Alt 4

} // namespace orvex::platform::qt
