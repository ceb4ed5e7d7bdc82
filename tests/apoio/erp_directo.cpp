// Where there is no automation the ERP is asked directly.
#include "tests/apoio/gravador.h"

namespace orvex::testes {

bool pela_automacao() { return false; }

std::unique_ptr<startup::SessaoERP> pelo_caminho_pedido(std::unique_ptr<startup::SessaoERP> real, Diario&) {
    return real;
}

} // namespace orvex::testes
