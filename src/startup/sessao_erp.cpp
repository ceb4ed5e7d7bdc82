#include "startup/sessao_erp.h"

namespace orvex::startup {

std::string ChaveDocumento::texto() const {
    return TipoDocumento + "/" + std::to_string(Serie) + "/" + std::to_string(NossoNoDocumento) + "/" +
           std::to_string(Ano);
}

} // namespace orvex::startup
