#include "platform/diario/decisao.h"

namespace orvex::platform::diario {
namespace {

using livro::EstadoERP;

bool recusada(const Chamada* chamada) {
    return chamada != nullptr && chamada->resposta &&
           chamada->resposta->desfecho == confirmacao::Desfecho::recusado;
}

// Puts a document where it belongs. True when nothing of it is left to wait for.
bool julga(const FactosDocumento& documento, EstadoERP pretendido, bool por_completar, Decisao& decisao) {
    const bool em_vigor = documento.erp == EstadoERP::em_vigor;
    if (em_vigor && !documento.no_livro) {
        decisao.a_anular.push_back(documento.chave);
        return true;
    }
    if (!em_vigor && documento.no_livro) {
        const bool anulado = documento.erp == EstadoERP::anulado;
        (anulado && por_completar ? decisao.a_completar : decisao.a_ver).push_back(documento.chave);
        return true;
    }
    const bool como_pretendido = em_vigor == (pretendido == EstadoERP::em_vigor);
    if (como_pretendido) decisao.feitos.push_back(documento.chave);
    return como_pretendido;
}

// What it was for: the new document, where it was to make one, whatever became of the one that it replaces.
bool cumprida(const Passos& passos, const Factos& factos, const Decisao& decisao) {
    if (factos.transferida) return true;
    if (passos.intencao.cria.TipoDocumento.empty()) return !decisao.feitos.empty();
    return factos.criado && !decisao.feitos.empty() && decisao.feitos.front() == factos.criado->chave;
}

} // namespace

Decisao decide(const Passos& passos, const Factos& factos) {
    Decisao decisao;
    // The rows of a transfer name no document, so none can be taken out as one's.
    const bool por_completar = passos.intencao.fluxo != confirmacao::Fluxo::transfere_para_orvex;
    // A document whose key is known and that is not there any more was cancelled; what was never asked for
    // cannot come.
    const Chamada* pedida = criacao(passos);
    bool certo = !passos.chamadas.empty() && (pedida == nullptr || recusada(pedida) || factos.criado);
    if (factos.criado)
        julga(*factos.criado, EstadoERP::em_vigor, por_completar, decisao);
    else
        (factos.candidatos.size() == 1 ? decisao.a_anular : decisao.a_procurar) = factos.candidatos;
    for (const FactosDocumento& anulado : factos.anulados)
        certo = (julga(anulado, EstadoERP::anulado, por_completar, decisao) ||
                 recusada(anulacao(passos, anulado.chave))) &&
                certo;

    if (!decisao.a_anular.empty() || !decisao.a_completar.empty() || !decisao.a_procurar.empty() ||
        !decisao.a_ver.empty())
        decisao.desfecho = Desfecho::por_decidir;
    else if (cumprida(passos, factos, decisao))
        decisao.desfecho = Desfecho::feita;
    else if (certo)
        decisao.desfecho = Desfecho::desfeita;
    return decisao;
}

} // namespace orvex::platform::diario
