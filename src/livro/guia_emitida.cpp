#include "livro/guia_emitida.h"

#include "base/falha.h"
#include "base/texto.h"
#include "startup/sessao_erp.h"

namespace orvex::livro {
namespace {

std::string cabecalho_e_cliente(const Documento& guia) {
    return "Select g.NVias, c.Nome from DocGcCab g left outer join Clientes c on c.CODIGO=g.Terceiro"
           " where g.Ano=" +
           std::to_string(guia.Ano) + " and g.TpDoc=" + base::entre_plicas(guia.TpDoc) +
           " and g.Serie=" + guia.Serie + " and g.NNumDoc=" + std::to_string(guia.Numero);
}

// The keys of all lines of a note lie between its own with a bar behind it and with the letter after the bar.
std::string devolucoes_de(const Documento& guia, const std::string& TpDocDevolucao) {
    std::string chave = guia.linha("").texto();
    const std::string desde = base::entre_plicas(chave);
    ++chave.back();
    return "Select Ano, TpDoc, SerieDoc, NumDoc, NumLinha, Origem from xel_ORVEX_Mov where TpDoc=" +
           base::entre_plicas(TpDocDevolucao) + " and Origem>=" + desde + " and Origem<" +
           base::entre_plicas(chave);
}

} // namespace

GuiaEmitida guia_emitida(startup::SessaoBD& BD, const Documento& guia, const std::string& TpDocDevolucao) {
    GuiaEmitida emitida;
    const std::string do_cabecalho = cabecalho_e_cliente(guia);
    const std::string das_devolucoes = devolucoes_de(guia, TpDocDevolucao);
    BD.EmPasso({do_cabecalho, das_devolucoes}, [&] {
        {
            const auto cabecalho = BD.Consulta(do_cabecalho);
            if (cabecalho->fim())
                throw base::Falha("O ERP não mostra a guia " + std::to_string(guia.Numero) + ".");
            const base::Variante NVias = cabecalho->valor("NVias");
            emitida.anulada = !NVias.nulo() && NVias.inteiro() == startup::documento_anulado;
            emitida.NomeCliente = cabecalho->valor("Nome").texto();
        }
        const auto linhas = BD.Consulta(das_devolucoes);
        for (; !linhas->fim(); linhas->move_seguinte()) {
            const auto volta = chave_propria(*linhas);
            const auto linha = le_chave(linhas->valor("Origem").texto());
            const auto numero = linha ? base::le_inteiro(linha->NumLinha) : std::nullopt;
            if (volta && numero) emitida.devolvidas[*numero] = volta->documento();
        }
    });
    return emitida;
}

} // namespace orvex::livro
