// The message box of every screen: plain text with its line breaks, Portuguese buttons.
#pragma once

#include "common/janela.h"

#include <string>

class QWidget;

namespace orvex::platform::qt {

// The property of the fields that questions may be about. Boxes stay clear of them and of what has the
// keyboard.
inline constexpr const char* marca_de_quantidade = "quantidade";

// Gives resposta_ok, resposta_cancelar, resposta_sim or resposta_nao; Esc and the close box answer what does
// nothing. A box that goes because the program is ending gives resposta_nenhuma, or what does nothing.
int mostra_caixa(QWidget* pai, const std::string& texto, const std::string& titulo, common::Icone icone,
                 common::Botoes botoes);

// A question with buttons of its own. True for the first; the other is the default, and what Esc and the
// close box answer.
bool mostra_escolha(QWidget* pai, const std::string& texto, const std::string& titulo, const char* sim,
                    const char* nao);

} // namespace orvex::platform::qt
