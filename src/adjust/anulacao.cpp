#include "adjust/mov_stocks.h"

#include "base/descricao.h"
#include "base/falha.h"
#include "livro/detentores.h"
#include "livro/documentos.h"

#include <optional>
#include <utility>

namespace orvex::adjust {

using base::FalhaGuarda;
using confirmacao::Confirmacao;
using confirmacao::Fluxo;
using startup::ChaveDocumento;

void MovStocks::btAnular_Click() {
    if (Avisa("", "Vai proceder à anulação.\n\rPretende continuar?", aviso_ok_cancelar) !=
        common::resposta_ok)
        return RecomecaEcra();
    Confirmacao confirmacao(meios());
    bool ha_movimento = true;
    const auto fim = confirmacao.executa([&] { ha_movimento = Anula(confirmacao); }, &base::descricao);
    if (ha_movimento && fim != Confirmacao::Fim::recusada) RecomecaEcra();
}

// False, with the screen as it is, when there is nothing to cancel.
bool MovStocks::Anula(Confirmacao& confirmacao) {
    std::optional<livro::LinhaDetentor> registo;
    std::optional<std::string> detentor;
    BD.EmPasso({livro::perguntas::movimento_a_anular(lRegisto),
                livro::perguntas::ultimo_movimento(campo(campos::artigo).Text)},
               [&] {
                   registo = livro::movimento_a_anular(BD, lRegisto);
                   if (registo) detentor = DetentorActual();
               });
    if (!registo) {
        Avisa("", "Impossível a anulação!", aviso_informacao);
        return false;
    }
    if (!AceitaReposicao(registo->Cliente, detentor)) return true;
    const ChaveDocumento& chave = registo->Documento;
    confirmacao.Inicia(
        {.fluxo = Fluxo::anula_ajuste,
         .anula = {chave},
         .Cliente = registo->Cliente,
         .Data = registo->Data,
         .artigos = {{registo->NumSerie, registo->Quantidade.absoluta(), ArmazemDe(registo->Cliente)}}});
    BD.Tranca();
    if (DetentorActual() != detentor)
        throw FalhaGuarda("O Artigo mudou de detentor. Volte a escolher o documento da lista.");
    const auto resultado = confirmacao.Anula(chave, confirmacao::Leitura::resposta);
    if (!resultado.sucesso) throw base::Falha(resultado.mensagem);
    confirmacao.Anota(chave);
    livro::apaga_movimento(BD, lRegisto);
    std::string feito = "Anulado " + livro::documento_de(chave).linha("").documento() + ", " +
                        registo->NumSerie + ", " + formato().peso_inteiro(registo->Quantidade.absoluta()) +
                        " t";
    confirmacao.Confirma();
    define_feito(std::move(feito));
    return true;
}

// The ERP puts the stock back where the document took it from, wherever the item is by now.
bool MovStocks::AceitaReposicao(const std::string& cliente, const std::optional<std::string>& detentor) {
    if (detentor == cliente) return true;
    return Avisa("",
                 "O Artigo mudou de detentor depois deste movimento: é agora de " + detentor.value_or("") +
                     ".\r\nA anulação repõe o stock no armazém " + ArmazemDe(cliente) +
                     ".\r\nPretende continuar?",
                 aviso_ok_cancelar) == common::resposta_ok;
}

} // namespace orvex::adjust
