#include "anulados.h"

#include "erp.h"
#include "ponto.h"

namespace orvex::auditoria {

Anulados::Anulados(Contexto& contexto) {
    const Casa& casa = contexto.casa;
    for (Leitura l(contexto.sessoes[0], linhas_anuladas(), contexto.progresso); l.ha(); l.seguinte()) {
        const std::string tipo = l.texto(anulada_lida::TpDoc);
        const std::int64_t serie = l.inteiro(anulada_lida::Serie);
        const std::string artigo = l.texto(anulada_lida::Artigo);
        if (artigo.empty()) continue;
        if (casa.guias.e(tipo, serie) || casa.devolucoes.e(tipo, serie)) {
            const std::string armazem = l.texto(anulada_lida::Armazem);
            const bool nos_clientes = mesmo_codigo(armazem, casa.lugares.Armazem);
            todos_.push_back(
                {resumo(artigo), resumo(casa.lugares.detentor(nos_clientes ? casa.lugares.Armazem : armazem,
                                                              l.texto(anulada_lida::Terceiro)))});
        } else if (casa.ajuste(tipo, serie)) {
            todos_.push_back({resumo(artigo), 0});
        }
    }
    std::sort(todos_.begin(), todos_.end());
}

bool Anulados::deu(const std::string& artigo, const std::string& detentor) const {
    return std::binary_search(todos_.begin(), todos_.end(), Anulado{resumo(artigo), resumo(detentor)});
}

bool Anulados::ajuste(const std::string& artigo) const {
    return std::binary_search(todos_.begin(), todos_.end(), Anulado{resumo(artigo), 0});
}

} // namespace orvex::auditoria
