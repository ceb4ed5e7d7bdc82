// Labels to stick on items: code, designation and the code as Code 128, in the sizes that labels come in.
#pragma once

#include <QString>

#include <vector>

class QWidget;

namespace orvex::platform::qt::consulta {

struct Etiqueta {
    QString codigo;
    QString designacao;
};

// Asks for the size, and prints. Gives what to say of it in the status line; empty where the user gave up.
QString imprime_etiquetas(QWidget& janela, const std::vector<Etiqueta>& etiquetas);

} // namespace orvex::platform::qt::consulta
