// Weights as bars: the age of what a client holds, and what he held in the last months.
#pragma once

#include "livro/consultas/quadro.h"

#include <QWidget>

namespace orvex::platform::qt::consulta {

// The chart of a table, of its weights; null for a table that has none. It says what it shows to readers of
// the screen too.
QWidget* novo_grafico(const livro::consultas::Recolhida::Parte& parte);

} // namespace orvex::platform::qt::consulta
