// The card of a view: label and value, on one grid, with codes that open their own view.
#pragma once

#include "platform/qt/consulta/vista_quadro.h"

namespace orvex::platform::qt::consulta {

class Ficha : public QWidget {
  public:
    // A value that there is none of is a dash; notes and reservations are left out then.
    Ficha(const livro::consultas::Quadro& quadro, const livro::consultas::Linha& valores, AoAbrir abre);
};

} // namespace orvex::platform::qt::consulta
