#include "common/controlos.h"

#include "base/falha.h"
#include "base/texto.h"

namespace orvex::common {

bool Controlo::a_vista() const {
    if (!Visible) return false;
    if (dentro_de == nullptr) return true;
    if (const auto* separadores = dynamic_cast<const Separadores*>(dentro_de);
        separadores != nullptr && separadores->Tab != pagina)
        return false;
    return dentro_de->a_vista();
}

Botao* Controlo::cancela() const {
    const auto* quadro = dynamic_cast<const Quadro*>(dentro_de);
    return quadro != nullptr ? quadro->Cancela : nullptr;
}

void Campo::selecciona_tudo() {
    SelStart = 0;
    SelLength = static_cast<int>(base::comprimento(Text));
}

void falta_o_controlo(std::string_view nome) {
    throw base::Falha("O ecrã não tem o controlo " + std::string(nome) + ".");
}

} // namespace orvex::common
