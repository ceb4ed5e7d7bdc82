#include "platform/consola/consola.h"

namespace orvex::platform::consola {

// Terminals take UTF-8.
class Consola::Saida {};

Consola::Consola() = default;
Consola::~Consola() = default;

} // namespace orvex::platform::consola
