// What the user's windows looked like: kept in an INI file of the user's configuration. Nothing here ever
// fails; what cannot be kept or no longer fits is as if it had never been.
#pragma once

#include <QSize>
#include <QString>

class QWidget;
class QSplitter;

namespace orvex::platform::qt {

int le_largura(const QString& chave, int habitual); // pixels
void guarda_largura(const QString& chave, int largura);

// Size and place of a window. When none is kept, or its screen has gone, it gets `habitual` as far as the
// screen allows.
void repoe_janela(QWidget& janela, const QString& chave, QSize habitual);
void guarda_janela(const QWidget& janela, const QString& chave);

void repoe_divisao(QSplitter& divisao, const QString& chave);
void guarda_divisao(const QSplitter& divisao, const QString& chave);

} // namespace orvex::platform::qt
