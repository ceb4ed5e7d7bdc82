// What a client asks: the messages of its requests taken apart. Each throws LigacaoPerdida for bytes that are
// no request of the driver's.
#pragma once

#include "platform/registos/tipo_sql.h"
#include "tests/fio/canal.h"

#include <vector>

namespace orvex::testes::tds {

struct Entrada { // what a client logs in with
    std::string utilizador, palavra_passe, programa, base;
};

Entrada le_entrada(std::string_view bytes);

struct Parametro {
    platform::registos::TipoSQL tipo;
    base::Variante valor;
};

struct Pedido {
    std::string procedimento; // none for a batch of statements
    std::string texto;        // the statements; of a procedure that runs none, its name
    std::vector<Parametro> parametros;

    std::string registado() const; // as it reads in the list of what was received
};

Pedido le_pedido(const Mensagem& mensagem);

} // namespace orvex::testes::tds
