#include "platform/diario/factos.h"

#include "base/texto.h"
#include "livro/movimentos.h"

#include <algorithm>
#include <tuple>

namespace orvex::platform::diario {
namespace {

using confirmacao::Desfecho;
using confirmacao::Fluxo;
using startup::ChaveDocumento;
using startup::SessaoBD;

// A number that the call did not ask for is one that the ERP gave, whatever was raised afterwards.
std::optional<ChaveDocumento> chave_dada(const Passos& passos) {
    if (passos.encontrado) return passos.encontrado;
    const Chamada* chamada = criacao(passos);
    if (chamada == nullptr || !chamada->resposta) return std::nullopt;
    const confirmacao::RespostaERP& resposta = *chamada->resposta;
    const bool dada = resposta.chave.NossoNoDocumento != 0 &&
                      (resposta.desfecho == Desfecho::feito || resposta.chave != chamada->pedido.chave);
    return dada ? std::optional(resposta.chave) : std::nullopt;
}

std::string codigo(const std::string& texto) { return base::maiusculas(base::apara(texto)); }

// As the ledger keeps a weight.
base::Moeda peso(base::Moeda quantidade) { return quantidade.arredondada(3); }

using Linhas = std::vector<std::tuple<std::string, base::Moeda>>;

Linhas ordenadas(Linhas linhas) {
    std::sort(linhas.begin(), linhas.end());
    return linhas;
}

Linhas linhas_pedidas(const confirmacao::Intencao& intencao) {
    Linhas linhas;
    for (const confirmacao::ArtigoMovido& artigo : intencao.artigos)
        linhas.emplace_back(codigo(artigo.Artigo), peso(artigo.Quantidade));
    return ordenadas(std::move(linhas));
}

Linhas linhas_do_documento(SessaoBD& BD, const ChaveDocumento& chave) {
    Linhas linhas;
    for (const livro::LinhaERP& linha : livro::linhas_no_erp(BD, livro::documento_de(chave)))
        linhas.emplace_back(codigo(linha.Artigo), peso(linha.Quant));
    return ordenadas(std::move(linhas));
}

bool mesmo_dia(const base::DataHora& a, const base::DataHora& b) { return a.data_iso() == b.data_iso(); }

// Its rows name no document: they are its own only if it came to its commit.
bool transferida(SessaoBD& BD, const Passos& passos) {
    const confirmacao::Intencao& intencao = passos.intencao;
    return passos.a_confirmar &&
           std::all_of(intencao.artigos.begin(), intencao.artigos.end(), [&](const auto& artigo) {
               return livro::transferencia_no_livro(BD, artigo.Artigo, intencao.Cliente, artigo.Quantidade,
                                                    passos.cabecalho.ultimo_registo);
           });
}

bool no_livro(SessaoBD& BD, const Passos& passos, const ChaveDocumento& chave) {
    return passos.intencao.fluxo == Fluxo::transfere_para_orvex ? transferida(BD, passos)
                                                                : livro::no_livro(BD, chave);
}

FactosDocumento factos_de(SessaoBD& BD, const Passos& passos, const ChaveDocumento& chave) {
    return {chave, livro::estado_no_erp(BD, chave), no_livro(BD, passos, chave)};
}

std::vector<ChaveDocumento> candidatos(SessaoBD& BD, const Passos& passos) {
    std::vector<ChaveDocumento> encontrados;
    const Chamada* chamada = criacao(passos);
    // Never asked for, there is none; refused, there may be one all the same.
    if (chamada == nullptr) return encontrados;
    const confirmacao::Intencao& intencao = passos.intencao;
    const bool com_cliente = intencao.fluxo == Fluxo::emite_guia || intencao.fluxo == Fluxo::devolve;
    const Linhas pedidas = linhas_pedidas(intencao);
    ChaveDocumento depois_de = chamada->pedido.chave;
    depois_de.NossoNoDocumento = passos.cabecalho.ultimo_numero;
    for (const livro::DocumentoERP& documento : livro::documentos_depois_de(BD, depois_de))
        if (mesmo_dia(documento.Data, intencao.Data) &&
            (!com_cliente || codigo(documento.Terceiro) == codigo(intencao.Cliente)) &&
            linhas_do_documento(BD, documento.chave) == pedidas && !no_livro(BD, passos, documento.chave))
            encontrados.push_back(documento.chave);
    return encontrados;
}

// By the keys that the ERP was given, which may be spelt otherwise than the intention's.
std::vector<ChaveDocumento> pedidos_para_anular(const Passos& passos) {
    const auto criado = chave_dada(passos);
    std::vector<ChaveDocumento> pedidos;
    for (const Chamada& chamada : passos.chamadas)
        if (const ChaveDocumento& chave = chamada.pedido.chave;
            chamada.pedido.accao == confirmacao::AccaoERP::anula && chave != criado &&
            std::find(pedidos.begin(), pedidos.end(), chave) == pedidos.end())
            pedidos.push_back(chave);
    return pedidos;
}

Factos le(SessaoBD& BD, const Passos& passos) {
    Factos factos;
    if (const auto chave = chave_dada(passos))
        factos.criado = factos_de(BD, passos, *chave);
    else
        factos.candidatos = candidatos(BD, passos);
    for (const ChaveDocumento& anulado : pedidos_para_anular(passos))
        factos.anulados.push_back(factos_de(BD, passos, anulado));
    if (passos.intencao.fluxo == Fluxo::transfere_para_cliente) factos.transferida = transferida(BD, passos);
    return factos;
}

} // namespace

Factos le_factos(SessaoBD& BD, const Passos& passos) {
    BD.IniciaTransaccao();
    try {
        BD.Tranca();
        const Factos factos = le(BD, passos);
        BD.AnulaTransaccao();
        return factos;
    } catch (...) {
        desfaz(BD);
        throw;
    }
}

void desfaz(SessaoBD& BD) {
    try {
        if (BD.EmTransaccao()) BD.AnulaTransaccao();
    } catch (const std::exception&) { // the next transaction's beginning ends it
    }
}

} // namespace orvex::platform::diario
