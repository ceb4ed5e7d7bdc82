#include "platform/qt/estilo.h"

#include <QPainter>
#include <QStyleOption>

namespace orvex::platform::qt {
namespace {

constexpr qreal grossura = 2;
constexpr qreal raio = 3;

void anel(const QStyleOption& opcao, QPainter& pintor) {
    if (!opcao.state.testFlag(QStyle::State_HasFocus)) return;
    pintor.save();
    pintor.setRenderHint(QPainter::Antialiasing);
    pintor.setPen(QPen(opcao.palette.color(QPalette::Active, QPalette::Highlight), grossura));
    pintor.setBrush(Qt::NoBrush);
    pintor.drawRoundedRect(QRectF(opcao.rect).adjusted(1.5, 1.5, -1.5, -1.5), raio, raio);
    pintor.restore();
}

} // namespace

void Estilo::drawControl(ControlElement elemento, const QStyleOption* opcao, QPainter* pintor,
                         const QWidget* widget) const {
    QProxyStyle::drawControl(elemento, opcao, pintor, widget);
    if (elemento == CE_PushButton || elemento == CE_TabBarTab) anel(*opcao, *pintor);
}

void Estilo::drawComplexControl(ComplexControl controlo, const QStyleOptionComplex* opcao, QPainter* pintor,
                                const QWidget* widget) const {
    QProxyStyle::drawComplexControl(controlo, opcao, pintor, widget);
    if (controlo == CC_ComboBox) anel(*opcao, *pintor);
}

} // namespace orvex::platform::qt
