// Adjustments and transfers, which the ERP makes in one call.
#include "verificacao.h"

namespace orvex::conformidade {
namespace {

constexpr double preco = 12.5; // euro a tonne

}

Resposta pede_stock(Ensaio& ensaio, const startup::ParametroDocumento& tipo, const std::string& artigo,
                    base::Moeda quantidade, bool transferencia) {
    const Casa& casa = ensaio.pedido.casa;
    if (!transferencia) ensaio.gERP.PreparaDocStock(true);
    const startup::ChaveDocumento chave =
        ensaio.gERP.CriaDocStock({.tipo_documento = tipo.TpDoc(),
                                  .sector = tipo.Sector(),
                                  .serie = tipo.Serie(),
                                  .destino = transferencia ? casa.armazem_orvex : tipo.Sector(),
                                  .data = ensaio.pedido.agora.data(),
                                  .armazem = casa.armazem,
                                  .artigos = {"", artigo},
                                  .textos_15 = {"", ""},
                                  .quantidades = {0, quantidade.real()},
                                  .precos = {0, preco},
                                  .textos_18 = {"", ""}});
    const startup::ResultadoERP ultimo = ensaio.gERP.ResultadoUltimo();
    if (!ultimo.sucesso) return {.recusa = ultimo.mensagem};
    anota(ensaio, tipo, chave);
    return {.chave = chave};
}

void recusas_do_stock(Ensaio& ensaio) {
    const Casa& casa = ensaio.pedido.casa;
    startup::ParametroDocumento inexistente = casa.sobras;
    inexistente.elementos[0] = "?Z?";
    const auto pede = [&](const startup::ParametroDocumento& tipo, const std::string& artigo) {
        return pede_stock(ensaio, tipo, artigo, quantidade_de_ensaio, false);
    };
    recusado(ensaio, "CriaDocStock de um artigo desconhecido",
             [&] { return pede(casa.sobras, desconhecido); });
    recusado(ensaio, "CriaDocStock de um tipo de documento desconhecido",
             [&] { return pede(inexistente, ensaio.pedido.artigo); });
    recusado(ensaio, "AnulaDocumento de um documento que não existe", [&]() -> Resposta {
        const startup::ChaveDocumento chave{static_cast<std::int16_t>(ensaio.pedido.agora.ano),
                                            casa.sobras.TpDoc(), casa.sobras.Serie(), numero_desconhecido};
        const startup::ResultadoERP resultado = ensaio.gERP.AnulaDocumento(1, chave);
        if (resultado.sucesso) return {.chave = chave};
        return {.recusa = resultado.mensagem};
    });
}

} // namespace orvex::conformidade
