// What the user sees and may do while the server or the ERP works, or a long handler: the windows stay
// painted, say what is done, and take nothing.
#pragma once

#include "platform/espera/espera.h"

namespace orvex::platform::qt {

// The way that sessions wait on the thread of the windows; on any other, and without windows, they just wait.
//
// From 300 ms on there is the busy cursor, from 1 s on the status line says what is waited for. Calls that
// follow one another within a moment count as one wait, so that a document of many short calls shows it too.
// Until it shows nothing is touched, and what is typed meanwhile is there afterwards, as with any handler;
// after that keys, mouse and the close box are dropped. Timers rest, a release whose press came before is
// given back, and the end of the desktop's session is held back. Calls that were queued are made: nobody
// could give them back. What one of them, or a reader of the screen, asks of a screen is ignored there
// (common/eventos.h): the call is a handler's, or the window is closing.
espera::Espera espera_nas_janelas();

// What is waited for from now on is another wait, be it ever so soon: a handler begins.
void comeca_outra_espera();

// The same, for a moment, amid a handler that began then. False when Esc was pressed since: what was typed is
// then gone, as that Esc is.
bool da_um_momento(std::chrono::steady_clock::time_point desde);

} // namespace orvex::platform::qt
