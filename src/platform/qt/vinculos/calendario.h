// The calendar of a date field, a popup beside it.
#pragma once

#include <QCalendarWidget>

#include <functional>

class QIcon;

namespace orvex::platform::qt {

class Calendario : public QCalendarWidget {
  public:
    // Opens beside the field, in sight of the whole of it. Esc and a click elsewhere close it without a
    // choice.
    static void abre(QWidget& campo, QDate dia, std::function<void(QDate)> escolhe);

    static QIcon icone(const QColor& cor);

  protected:
    void paintEvent(QPaintEvent* evento) override; // the border

  private:
    explicit Calendario(QWidget& campo);
};

} // namespace orvex::platform::qt
