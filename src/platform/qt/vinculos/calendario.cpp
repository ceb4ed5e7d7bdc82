#include "platform/qt/vinculos/calendario.h"

#include "base/datahora.h"

#include <QIcon>
#include <QPainter>
#include <QScreen>

#include <algorithm>

namespace orvex::platform::qt {
namespace {

constexpr int borda = 1;

} // namespace

Calendario::Calendario(QWidget& campo) : QCalendarWidget(&campo) {
    setObjectName("calendario");
    setContentsMargins(borda, borda, borda, borda);
    setWindowFlags(Qt::Popup);
    setAttribute(Qt::WA_DeleteOnClose);
    setLocale(QLocale(QLocale::Portuguese, QLocale::Portugal));
    setFirstDayOfWeek(Qt::Monday);
    setVerticalHeaderFormat(NoVerticalHeader);
    setDateEditEnabled(false); // dates are typed in the field
    setMinimumDate(QDate(base::primeiro_ano_do_servidor, 1, 1));
    setMaximumDate(QDate(9999, 12, 31));
}

void Calendario::abre(QWidget& campo, QDate dia, std::function<void(QDate)> escolhe) {
    auto* calendario = new Calendario(campo);
    calendario->setSelectedDate(dia);
    const auto escolhido = [calendario, escolhe = std::move(escolhe)](QDate data) {
        if (calendario->close()) escolhe(data);
    };
    connect(calendario, &QCalendarWidget::clicked, calendario, escolhido);
    connect(calendario, &QCalendarWidget::activated, calendario, escolhido);

    const QSize tamanho = calendario->sizeHint() + QSize(2 * borda, 2 * borda);
    const QRect ecra = campo.screen()->availableGeometry();
    QPoint lugar = campo.mapToGlobal(QPoint(0, campo.height()));
    if (lugar.y() + tamanho.height() > ecra.bottom())
        lugar.setY(campo.mapToGlobal(QPoint()).y() - tamanho.height());
    lugar.setX(std::max(ecra.left(), std::min(lugar.x(), ecra.right() - tamanho.width())));
    lugar.setY(std::max(ecra.top(), lugar.y()));
    calendario->setGeometry({lugar, tamanho});
    calendario->show();
    calendario->setFocus();
}

void Calendario::paintEvent(QPaintEvent*) {
    QPainter pintor(this);
    pintor.setPen(palette().color(QPalette::Highlight));
    pintor.drawRect(rect().adjusted(0, 0, -borda, -borda));
}

QIcon Calendario::icone(const QColor& cor) {
    QIcon icone;
    for (const int escala : {1, 2}) {
        QPixmap desenho(16 * escala, 16 * escala);
        desenho.setDevicePixelRatio(escala);
        desenho.fill(Qt::transparent);
        QPainter pintor(&desenho);
        pintor.setPen(cor);
        pintor.drawRect(2, 3, 11, 10);
        pintor.fillRect(2, 3, 12, 3, cor);
        for (const int x : {4, 7, 10})
            for (const int y : {8, 11})
                pintor.fillRect(x, y, 2, 1, cor);
        pintor.end();
        icone.addPixmap(desenho);
    }
    return icone;
}

} // namespace orvex::platform::qt
