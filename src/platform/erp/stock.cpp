#include "platform/erp/stock.h"

namespace orvex::platform::erp {
namespace {

using base::Moeda;

struct Existencia {
    Moeda quantidade;
    Moeda valor;
    Moeda ultimo_preco;
};

Existencia existencia(BaseErp& base, const std::string& artigo) {
    Comando procura(base, "select STDISP, VLREXIST, ULTPRCOM from Artigos where CODIGO = ?");
    procura.com(artigo);
    if (!procura.linha()) throw Recusa("O artigo «" + artigo + "» não existe.");
    return {procura.moeda(0), procura.moeda(1), procura.moeda(2)};
}

Moeda valor_movido(const Existencia& antes, Moeda quantidade) {
    if (antes.quantidade == Moeda()) return Moeda::de_real(antes.ultimo_preco.real() * quantidade.real());
    // The proportion first: moving the whole stock moves exactly its whole value.
    return Moeda::de_real(antes.valor.real() * (quantidade.real() / antes.quantidade.real()));
}

void grava_existencia(BaseErp& base, const std::string& artigo, Moeda quantidade, Moeda valor) {
    Comando(base, "update Artigos set STDISP = ?, VLREXIST = ? where CODIGO = ?")
        .com(quantidade)
        .com(valor)
        .com(artigo)
        .executa();
}

} // namespace

void move_armazem(BaseErp& base, const std::string& artigo, const std::string& armazem, Moeda quantidade) {
    Moeda actual;
    {
        Comando procura(base, "select Existenc from artarm where Artigo = ? and Armazem = ?");
        procura.com(artigo).com(armazem);
        if (procura.linha()) actual = procura.moeda(0);
    }
    Comando(base, "insert into artarm (Artigo, Armazem, Existenc) values (?, ?, ?)"
                  " on conflict (Artigo, Armazem) do update set Existenc = excluded.Existenc")
        .com(artigo)
        .com(armazem)
        .com(actual + quantidade)
        .executa();
}

Moeda move_artigo(BaseErp& base, const std::string& artigo, Moeda quantidade) {
    const Existencia antes = existencia(base, artigo);
    const Moeda valor = valor_movido(antes, quantidade);
    grava_existencia(base, artigo, antes.quantidade + quantidade, antes.valor + valor);
    return valor;
}

void move_artigo(BaseErp& base, const std::string& artigo, Moeda quantidade, Moeda valor) {
    const Existencia antes = existencia(base, artigo);
    grava_existencia(base, artigo, antes.quantidade + quantidade, antes.valor + valor);
}

} // namespace orvex::platform::erp
