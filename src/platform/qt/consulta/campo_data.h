// A date among the filters of a view: typed in any form that the screens take, picked in the calendar (F4),
// or moved by a day with the arrows. It may be left empty.
#pragma once

#include "base/datahora.h"

#include <QLineEdit>

#include <optional>

namespace orvex::platform::qt::consulta {

class CampoData : public QLineEdit {
  public:
    // `vazio` says what an empty field stands for.
    CampoData(const std::optional<base::DataHora>& valor, const QString& vazio);

    // False where what is written is no date.
    bool le(std::optional<base::DataHora>& qual) const;

  protected:
    void keyPressEvent(QKeyEvent* evento) override;

  private:
    QDate dia() const; // today, where there is none
    void abre_calendario();
    void poe(QDate dia);
};

} // namespace orvex::platform::qt::consulta
