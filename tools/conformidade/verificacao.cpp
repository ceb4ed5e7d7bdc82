#include "verificacao.h"

#include "base/descricao.h"
#include "livro/documentos.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orvex::conformidade {

using startup::ChaveDocumento;

namespace {

// The last number of the document's numbering before the trial; where that is not known, no number is the
// trial's.
std::int32_t ultimo_antes(const Ensaio& ensaio, const ChaveDocumento& chave) {
    for (ChaveDocumento ultimo : ensaio.ultimos) {
        const std::int32_t numero = std::exchange(ultimo.NossoNoDocumento, chave.NossoNoDocumento);
        if (ultimo == chave) return numero;
    }
    return std::numeric_limits<std::int32_t>::max();
}

// What was raised is a refusal only of a session that is still there: one that has gone refuses everything.
void levantada(Ensaio& ensaio, const std::string& o_que, const std::exception& falha) {
    const std::string texto = base::descricao(falha);
    ensaio.relatorio.experimenta(o_que, [&] {
        if (ensaio.gERP.Empresa())
            ensaio.relatorio.certo(o_que + ": " + texto);
        else
            ensaio.relatorio.errado(o_que, "recusado, e a sessão continua",
                                    "a sessão já não está ligada: " + texto);
    });
}

} // namespace

void anota(Ensaio& ensaio, const startup::ParametroDocumento& tipo, const ChaveDocumento& chave) {
    const ChaveDocumento esperada{static_cast<std::int16_t>(ensaio.pedido.agora.ano), tipo.TpDoc(),
                                  tipo.Serie(), chave.NossoNoDocumento};
    if (!ensaio.relatorio.compara("chave do documento criado", esperada.texto(), chave.texto())) return;
    const std::int32_t ultimo = ultimo_antes(ensaio, chave);
    if (chave.NossoNoDocumento <= ultimo) {
        ensaio.relatorio.errado("número do documento criado", "maior do que " + std::to_string(ultimo),
                                std::to_string(chave.NossoNoDocumento));
        return;
    }
    ensaio.por_anular.push_back(chave);
}

bool anula(Ensaio& ensaio, const ChaveDocumento& chave) {
    const std::string o_que = chave.texto() + ": AnulaDocumento";
    const startup::ResultadoERP resultado = ensaio.gERP.AnulaDocumento(1, chave),
                                ultimo = ensaio.gERP.ResultadoUltimo();
    if (!resultado.sucesso) {
        ensaio.relatorio.errado(o_que, "verdadeiro", "falso, " + resultado.mensagem);
        return false;
    }
    if (!ultimo.sucesso)
        ensaio.relatorio.errado(o_que + ", ResultadoUltimo", "verdadeiro", "falso, " + ultimo.mensagem);
    if (ensaio.pedido.BD != nullptr &&
        livro::estado_no_erp(*ensaio.pedido.BD, chave) != livro::EstadoERP::anulado) {
        ensaio.relatorio.errado(o_que + ", nas tabelas do ERP", "anulado", "por anular");
        return false;
    }
    ensaio.relatorio.certo(o_que);
    std::erase(ensaio.por_anular, chave);
    return true;
}

void recusado(Ensaio& ensaio, const std::string& o_que, const std::function<Resposta()>& pede) {
    const std::string recusa_de = "recusa de " + o_que;
    try {
        const Resposta resposta = pede();
        if (resposta.chave)
            ensaio.relatorio.errado(recusa_de, "recusado", "aceite, " + resposta.chave->texto());
        else if (resposta.recusa.empty())
            ensaio.relatorio.errado(recusa_de, "um texto que diga porquê", "");
        else
            ensaio.relatorio.certo(recusa_de + ": " + resposta.recusa);
    } catch (const std::exception& falha) {
        levantada(ensaio, recusa_de, falha);
    }
}

void falha(Ensaio& ensaio, const std::string& o_que, const std::function<void()>& pede) {
    try {
        pede();
    } catch (const std::exception& falha) {
        return levantada(ensaio, "falha de " + o_que, falha);
    }
    ensaio.relatorio.errado("falha de " + o_que, "uma falha", "nenhuma");
}

std::string mensagem_da_recusa(Ensaio& ensaio, const char* de) {
    const startup::ResultadoERP ultimo = ensaio.gERP.ResultadoUltimo();
    if (ultimo.sucesso)
        ensaio.relatorio.errado(std::string("ResultadoUltimo depois de uma recusa de ") + de, "falso",
                                "verdadeiro");
    return ultimo.mensagem;
}

} // namespace orvex::conformidade
