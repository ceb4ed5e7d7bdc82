// What the settings of an installation name, opened to be read and nothing else.
#pragma once

#include "auditoria.h"
#include "startup/instalacao.h"

namespace orvex::auditoria {

// Of the company that the settings name: how it is opened, and how its files look. Throws Falha when the
// settings cannot be used.
void abre_instalacao(const startup::PastasInstalacao& pastas, Pedido& pedido, std::string& empresa);

} // namespace orvex::auditoria
