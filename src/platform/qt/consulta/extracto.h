// "Extracto de artigos em poder do cliente": what goes to the client himself, of the view of a client,
// without what only we understand.
#pragma once

#include "livro/consultas/quadro.h"

#include <QString>

#include <vector>

namespace orvex::platform::qt::consulta {

struct Extracto {
    QString nome; // "Extracto C0013"
    livro::consultas::Recolhida vista;
    std::vector<QString> fecho;
};

Extracto extracto_de(const livro::consultas::Recolhida& cliente);

} // namespace orvex::platform::qt::consulta
