// The message box of every screen: plain text with its line breaks, Portuguese buttons.
#pragma once

#include "common/janela.h"

#include <string>

class QWidget;

namespace orvex::platform::qt {

// Gives resposta_ok, resposta_cancelar, resposta_sim or resposta_nao; Esc and the close box answer what does
// nothing.
int mostra_caixa(QWidget* pai, const std::string& texto, const std::string& titulo, common::Icone icone,
                 common::Botoes botoes);

} // namespace orvex::platform::qt
