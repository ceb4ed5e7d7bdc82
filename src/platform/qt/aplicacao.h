// What every window of the program has in common: style, colours, language and regional format.
#pragma once

#include "base/formato_regional.h"

#include <QColor>
#include <QPalette>

class QApplication;
class QWidget;

namespace orvex::platform::qt {

inline const QColor cor_etiquetas{0xD5, 0xDE, 0xF2}; // labels and the tab background
inline const QColor cor_titulo{0x2C, 0x46, 0x7A};
inline const QColor cor_leitura{0xDF, 0xE6, 0xF3}; // what is there to be read, and takes the keyboard
inline const QColor cor_aviso{0xF5, 0xB9, 0x2E};

// Once, right after the application object was made.
void prepara_aplicacao(QApplication& aplicacao);

// The colours of all windows, every role of them.
QPalette cores_do_programa();

// The system's decimal sign; the Portuguese signs when the machine names no country.
base::FormatoRegional formato_do_sistema();

// Fills a widget with a colour of its own, and writes on it in another when one is given.
void pinta_fundo(QWidget& widget, const QColor& fundo, const QColor& texto = {});

} // namespace orvex::platform::qt
