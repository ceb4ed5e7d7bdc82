#include "common/controlos.h"

namespace orvex::common {

bool Controlo::a_vista() const {
    if (!Visible) return false;
    if (dentro_de == nullptr) return true;
    if (const auto* separadores = dynamic_cast<const Separadores*>(dentro_de);
        separadores != nullptr && separadores->Tab != pagina)
        return false;
    return dentro_de->a_vista();
}

} // namespace orvex::common
