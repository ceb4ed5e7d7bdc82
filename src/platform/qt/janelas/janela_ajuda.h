// What F1 shows: the keys of a window and what support asks for, ready to be copied, and the way to the
// guide.
#pragma once

#include "platform/qt/pecas.h"

#include <QDialog>

namespace orvex::platform::qt {

class JanelaAjuda : public QDialog {
  public:
    // `teclas` has a line for each: the key, a tab, what it does.
    JanelaAjuda(QWidget& pai, const QString& teclas, const EstadoSessao& sessao);
};

// The first page of the guide that was installed with the program; empty where there is none.
QString guia_instalado();

} // namespace orvex::platform::qt
