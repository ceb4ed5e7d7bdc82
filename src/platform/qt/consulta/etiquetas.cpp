#include "platform/qt/consulta/etiquetas.h"

#include "platform/qt/consulta/janela_etiquetas.h"

namespace orvex::platform::qt::consulta {

QString imprime_etiquetas(QWidget& janela, const std::vector<Etiqueta>& etiquetas) {
    if (etiquetas.empty()) return {};
    JanelaEtiquetas dialogo(janela, etiquetas);
    dialogo.exec();
    return dialogo.feito();
}

} // namespace orvex::platform::qt::consulta
