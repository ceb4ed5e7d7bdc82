#include "delivery/resumo.h"

#include "base/falha.h"
#include "delivery/guias_remessa.h"
#include "livro/guia_emitida.h"

#include <utility>

namespace orvex::delivery {

const char* texto(Situacao situacao) {
    switch (situacao) {
    case Situacao::devolvida_em_parte:
        return "DEVOLVIDA EM PARTE";
    case Situacao::devolvida:
        return "DEVOLVIDA";
    case Situacao::anulada:
        return "ANULADA";
    case Situacao::emitida:
        break;
    }
    return "EMITIDA";
}

std::string Totais::texto(const base::FormatoRegional& formato) const {
    return std::to_string(linhas) + (linhas == 1 ? " linha" : " linhas") + "   P.Liq. " +
           formato.peso_inteiro(liquido) + " t   Peso Bruto " + formato.peso_inteiro(bruto) + " t";
}

Totais totais(const common::Grelha& grelha, std::string_view liquido, std::string_view bruto,
              const std::function<bool(int linha)>& conta) {
    const int artigo = grelha.coluna("Artigo"), pl = grelha.coluna(liquido), pb = grelha.coluna(bruto);
    Totais soma;
    for (int linha = 0; linha < grelha.linhas(); ++linha) {
        if (grelha.valor(linha, artigo).vazio() || (conta && !conta(linha))) continue;
        ++soma.linhas;
        soma.liquido += grelha.moeda(linha, pl);
        soma.bruto += grelha.moeda(linha, pb);
    }
    return soma;
}

ResumoGuia GuiasRemessa::LeResumo() {
    if (!GuiaCarregada() || !FalhaLeitura.empty()) throw base::Falha("Não há guia lida por inteiro no ecrã.");
    livro::GuiaEmitida emitida = livro::guia_emitida(BD, DocumentoDaGuia(NumGuia), GUIADEVOLUCAO.TpDoc());
    ResumoGuia resumo{.NomeCliente = std::move(emitida.NomeCliente),
                      .devolvidas = std::move(emitida.devolvidas)};
    int com_artigo = 0, de_volta = 0;
    for (int i = 0; i < Gr.linhas(); ++i) {
        if (Gr.valor(i, "Artigo").vazio()) continue;
        ++com_artigo;
        if (resumo.devolvidas.contains(Gr.valor(i, "NumLinha").inteiro())) ++de_volta;
    }
    if (emitida.anulada)
        resumo.situacao = Situacao::anulada;
    else if (de_volta > 0)
        resumo.situacao = de_volta < com_artigo ? Situacao::devolvida_em_parte : Situacao::devolvida;
    return resumo;
}

} // namespace orvex::delivery
