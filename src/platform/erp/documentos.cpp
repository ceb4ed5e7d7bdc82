#include "platform/erp/documentos.h"

#include "platform/erp/stock.h"

namespace orvex::platform::erp {
namespace {

using base::Moeda;
using startup::ChaveDocumento;

constexpr const char* chave_cabecalho = " where TpDoc = ? and Serie = ? and Ano = ? and NNumDoc = ?";
constexpr const char* chave_linhas = " where TpDocum = ? and Serie = ? and Ano = ? and NNumDoc = ?";

Comando& com_chave(Comando& comando, const ChaveDocumento& chave) {
    return comando.com(chave.TipoDocumento).com(chave.Serie).com(chave.Ano).com(chave.NossoNoDocumento);
}

std::string colunas(std::span<const Membro> membros) {
    std::string lista;
    for (const Membro& membro : membros)
        lista += (lista.empty() ? "[" : ", [") + std::string(membro.coluna) + "]";
    return lista;
}

std::string parametros(std::size_t quantos) {
    std::string lista;
    for (std::size_t i = 0; i < quantos; ++i)
        lista += lista.empty() ? "?" : ", ?";
    return lista;
}

void com_valores(Comando& comando, const Registo& registo) {
    for (std::size_t i = 0; i < registo.membros().size(); ++i)
        comando.com_este(registo.guardado(i));
}

void le_valores(Comando& comando, Registo& registo) {
    for (std::size_t i = 0; i < registo.membros().size(); ++i)
        registo.poe(registo.membros()[i].nome, comando.valor(static_cast<int>(i)));
}

std::int64_t proximo_numero(BaseErp& base, const ChaveDocumento& chave) {
    Comando numerador(base,
                      "insert into Numeradores (Ano, TpDoc, Serie, Ultimo) values (?, ?, ?, 1)"
                      " on conflict (Ano, TpDoc, Serie) do update set Ultimo = Ultimo + 1 returning Ultimo");
    numerador.com(chave.Ano).com(chave.TipoDocumento).com(chave.Serie).linha();
    return numerador.inteiro(0);
}

// Moves between or out of warehouses what the line says, or, with -1, moves it back.
void move_armazens(BaseErp& base, MovimentoStock movimento, const Registo& linha, int vezes) {
    const Moeda quantidade = vezes < 0 ? -linha.moeda("Quantidade") : linha.moeda("Quantidade");
    const std::string artigo = linha.texto("Artigo");
    const bool entra = movimento == MovimentoStock::entrada;
    move_armazem(base, artigo, linha.texto("Armazem"), entra ? quantidade : -quantidade);
    if (movimento == MovimentoStock::transferencia)
        move_armazem(base, artigo, linha.texto("ArmazemDestino"), quantidade);
}

bool move_stock(MovimentoStock movimento, const Registo& linha) {
    return movimento != MovimentoStock::nenhum && !linha.texto("Artigo").empty();
}

// The article's stock as a whole; a transfer leaves it as it is.
Moeda variacao(MovimentoStock movimento, const Registo& linha) {
    if (movimento == MovimentoStock::transferencia) return {};
    return movimento == MovimentoStock::entrada ? linha.moeda("Quantidade") : -linha.moeda("Quantidade");
}

// Gives the value moved.
Moeda movimenta(BaseErp& base, MovimentoStock movimento, const Registo& linha) {
    if (!move_stock(movimento, linha)) return {};
    move_armazens(base, movimento, linha, 1);
    return move_artigo(base, linha.texto("Artigo"), variacao(movimento, linha));
}

void repoe(BaseErp& base, MovimentoStock movimento, const Registo& linha, Moeda valor) {
    if (!move_stock(movimento, linha)) return;
    move_armazens(base, movimento, linha, -1);
    move_artigo(base, linha.texto("Artigo"), -variacao(movimento, linha), -valor);
}

void grava_cabecalho(BaseErp& base, const Registo& cabecalho) {
    Comando insere(base, "insert into DocGcCab (" + colunas(membros_cabecalho) + ") values (" +
                             parametros(membros_cabecalho.size()) + ")");
    com_valores(insere, cabecalho);
    insere.executa();
}

void grava_linha(BaseErp& base, const ChaveDocumento& chave, const Registo& linha, Moeda valor) {
    static const std::string sql = "insert into DocGcLin (TpDocum, Serie, Ano, NNumDoc, VlrStock, " +
                                   colunas(membros_linha) + ") values (?, ?, ?, ?, ?, " +
                                   parametros(membros_linha.size()) + ")";
    Comando insere(base, sql);
    com_chave(insere, chave).com(valor);
    com_valores(insere, linha);
    insere.executa();
}

} // namespace

std::shared_ptr<Registo> nova_linha() {
    return std::make_shared<Registo>(membros_linha, "da linha do documento");
}

ChaveDocumento Documento::chave() const {
    return {static_cast<std::int16_t>(cabecalho.inteiro("Ano")), cabecalho.texto("TipoDocumento"),
            static_cast<std::int16_t>(cabecalho.inteiro("Serie")),
            static_cast<std::int32_t>(cabecalho.inteiro("NossoNoDocumento"))};
}

void grava(BaseErp& base, Documento& documento) {
    verifica(base, documento);
    completa_do_cliente(base, documento);
    documento.cabecalho.poe("NossoNoDocumento", proximo_numero(base, documento.chave()));
    grava_cabecalho(base, documento.cabecalho);

    const ChaveDocumento chave = documento.chave();
    const MovimentoStock tipo = movimento_do_tipo(base, chave.TipoDocumento);
    std::int64_t numero = 0;
    for (const auto& linha : documento.linhas) {
        linha->poe("NumeroDaLinha", ++numero);
        grava_linha(base, chave, *linha, movimenta(base, tipo, *linha));
    }
}

bool le(BaseErp& base, const ChaveDocumento& chave, Documento& documento) {
    Comando cabecalho(base, "select " + colunas(membros_cabecalho) + " from DocGcCab" + chave_cabecalho);
    if (!com_chave(cabecalho, chave).linha()) return false;
    Documento lido;
    le_valores(cabecalho, lido.cabecalho);

    Comando linhas(base, "select " + colunas(membros_linha) + " from DocGcLin" + chave_linhas +
                             " order by NumLinha");
    com_chave(linhas, chave);
    while (linhas.linha()) {
        lido.linhas.push_back(nova_linha());
        le_valores(linhas, *lido.linhas.back());
    }
    documento = std::move(lido);
    return true;
}

void anula(BaseErp& base, const ChaveDocumento& chave) {
    Documento documento;
    if (!le(base, chave, documento)) throw Recusa("O documento " + chave.texto() + " não existe.");
    if (documento.cabecalho.inteiro("NumeroViasemitidas") == startup::documento_anulado)
        throw Recusa("O documento " + chave.texto() + " já está anulado.");

    const MovimentoStock tipo = movimento_do_tipo(base, chave.TipoDocumento);
    for (const auto& linha : documento.linhas) {
        Comando valor(base,
                      std::string("select VlrStock from DocGcLin") + chave_linhas + " and NumLinha = ?");
        com_chave(valor, chave).com(linha->inteiro("NumeroDaLinha")).linha();
        repoe(base, tipo, *linha, valor.moeda(0));
    }
    Comando marca(base, "update DocGcCab set NVias = " + std::to_string(startup::documento_anulado) +
                            chave_cabecalho);
    com_chave(marca, chave).executa();
}

} // namespace orvex::platform::erp
