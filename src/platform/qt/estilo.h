// The look of every window: the toolkit's own, and a ring around the button, the choice or the tab that has
// the keyboard, however it came there.
#pragma once

#include <QProxyStyle>

namespace orvex::platform::qt {

class Estilo : public QProxyStyle {
  public:
    Estilo() : QProxyStyle("fusion") {}

    void drawControl(ControlElement elemento, const QStyleOption* opcao, QPainter* pintor,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl controlo, const QStyleOptionComplex* opcao, QPainter* pintor,
                            const QWidget* widget) const override;
};

} // namespace orvex::platform::qt
