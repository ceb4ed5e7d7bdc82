#include "platform/qt/consulta/leitor.h"

#include "platform/qt/teclas.h"

#include <utility>

namespace orvex::platform::qt::consulta {
namespace {

constexpr int menor_codigo = 4;       // a person types less than that at such a speed
constexpr int pausa_de_letra_ms = 50; // a fast typist's are longer, a reader's much shorter

} // namespace

Leitor::Que Leitor::ve(const QKeyEvent& tecla) {
    if (so_modificador(tecla)) return Que::nada;
    const auto dentro_de = [this](int ms) {
        return desde_a_ultima_.isValid() && desde_a_ultima_.elapsed() < ms;
    };
    const bool logo = dentro_de(pausa_de_letra_ms);
    if (e_enter(tecla)) {
        const bool segundo = lido_ && dentro_de(pausa_de_leitor_ms); // opening a view took of it
        const bool acaba = !lido_ && logo && codigo_.size() >= menor_codigo;
        if (!acaba) codigo_.clear();
        lido_ = acaba || segundo;
        desde_a_ultima_.start();
        return lido_ ? Que::acaba : Que::nada;
    }
    const QString letra = escrito(tecla);
    if (std::exchange(lido_, false) || letra.isEmpty()) codigo_.clear();
    if (letra.isEmpty()) {
        desde_a_ultima_.invalidate();
        return Que::nada;
    }
    const bool continua = logo && !codigo_.isEmpty();
    codigo_ = continua ? codigo_ + letra : letra;
    desde_a_ultima_.start();
    return continua ? Que::continua : Que::comeca;
}

} // namespace orvex::platform::qt::consulta
