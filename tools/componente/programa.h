// A component in a program of its own: registers itself, and serves who was sent to it by the system.
#pragma once

#include "tools/componente/classe.h"

namespace orvex::componente {

// Whole run of such a program: 0 when it did what its command line asks, 1 with a message when it could not.
//     /regserver [...]   registers it; what follows stands in the command that it is started with
//     /unregserver       takes the registration away
//     -Embedding         as the system starts it: serves until nobody uses it any more
int corre_programa(const Classe& classe, const FazSessao& faz);

} // namespace orvex::componente
