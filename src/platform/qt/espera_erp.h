// What the user sees and may do while the ERP works: the windows stay painted, say that they wait, and take
// nothing.
#pragma once

#include "platform/automacao/espera.h"

namespace orvex::platform::qt {

// The way that a session's calls wait on the thread of the windows; on any other, and without windows, they
// just wait.
//
// From 300 ms on there are the busy cursor and "À espera do ERP…" in the status line. Calls that follow one
// another within a moment count as one wait, so that a document of many short calls shows it too. Until then
// nothing is touched, and what is typed meanwhile is there afterwards, as with any handler; after that keys,
// mouse and the close box are dropped. Timers and queued work rest, a release whose press came before is
// given back, and the end of the desktop's session is held back.
automacao::Espera espera_nas_janelas();

} // namespace orvex::platform::qt
