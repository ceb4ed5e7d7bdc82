// The access keys of fields and grids: one table for all windows, so that a label has the same key wherever
// it stands. The buttons' keys are in their captions. The labels' texts stay as they are: the key is drawn in
// them.
#pragma once

#include <QLabel>
#include <QString>

namespace orvex::platform::qt {

// The letter that Alt takes to the control with this label; none where it has none.
QChar letra_de_acesso(const QString& legenda);

// The label as a text with a marked letter, behind it in brackets where it is none of its own.
QString com_letra_de_acesso(const QString& legenda);

// A label that shows the access key of its buddy.
class Legenda : public QLabel {
  public:
    explicit Legenda(const QString& texto);

  protected:
    void paintEvent(QPaintEvent* evento) override;
};

} // namespace orvex::platform::qt
