#include "livro/consultas/pedido.h"

namespace orvex::livro::consultas {
namespace {

struct Responde {
    const Meios& meios;
    Destino& destino;

    bool operator()(const PedidoArtigo& p) const { return artigo(meios, p.codigo, destino); }
    bool operator()(const PedidoCliente& p) const { return cliente(meios, p, destino); }
    bool operator()(const PedidoDocumento& p) const { return documento(meios, p.qual, destino); }
    bool operator()(const PedidoParados& p) const { return parados(meios, p, destino); }
    bool operator()(const PedidoMovimentos& p) const { return movimentos(meios, p, destino); }
    bool operator()(const PedidoProcura& p) const { return procura(meios, p.texto, destino); }
};

struct Nada {
    static std::string sem(const char* o_que, const std::string& valor) {
        return std::string("Nem o livro nem o ERP têm o ") + o_que + " «" + valor + "».";
    }
    std::string operator()(const PedidoArtigo& p) const { return sem("artigo", p.codigo); }
    std::string operator()(const PedidoCliente& p) const { return sem("cliente", p.codigo); }
    std::string operator()(const PedidoDocumento& p) const { return sem("documento", p.qual); }
    std::string operator()(const PedidoParados& p) const { return sem("cliente", p.cliente); }
    std::string operator()(const PedidoMovimentos& p) const {
        return "«" + p.documento + "» não é um documento.";
    }
    std::string operator()(const PedidoProcura& p) const {
        return "Nada foi encontrado com «" + p.texto + "».";
    }
};

} // namespace

bool responde(const Meios& meios, const Pedido& pedido, Destino& destino) {
    return std::visit(Responde{meios, destino}, pedido);
}

std::string nada(const Pedido& pedido) { return std::visit(Nada{}, pedido); }

} // namespace orvex::livro::consultas
