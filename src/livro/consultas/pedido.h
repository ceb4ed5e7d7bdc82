// Any of the enquiries as a value: what a link, a search, a command line or a page gone back to asks for.
#pragma once

#include "livro/consultas/consultas.h"

#include <variant>

namespace orvex::livro::consultas {

struct PedidoArtigo {
    std::string codigo;
    friend bool operator==(const PedidoArtigo&, const PedidoArtigo&) = default;
};
struct PedidoDocumento {
    std::string qual; // as people write one, or as a link has it
    friend bool operator==(const PedidoDocumento&, const PedidoDocumento&) = default;
};
struct PedidoProcura {
    std::string texto;
    friend bool operator==(const PedidoProcura&, const PedidoProcura&) = default;
};
using Pedido = std::variant<PedidoArtigo, PedidoCliente, PedidoDocumento, PedidoParados, PedidoMovimentos,
                            PedidoProcura>;

// False, with nothing told, where there is nothing of the kind: `nada` says so to the user.
bool responde(const Meios& meios, const Pedido& pedido, Destino& destino);
std::string nada(const Pedido& pedido);

} // namespace orvex::livro::consultas
