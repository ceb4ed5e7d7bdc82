#include "exame.h"

#include "base/descricao.h"

namespace orvex::auditoria {
namespace {

template <typename Parte>
void tenta(Contexto& contexto, const std::string& verificacoes, const std::string& fase, Parte parte) {
    contexto.progresso.fase(fase);
    try {
        parte();
    } catch (const std::exception& falha) {
        contexto.exame.nao_vistos.push_back({verificacoes, base::descricao(falha)});
    }
}

} // namespace

std::int64_t dia(const base::DataHora& data) { return (data.ano * 100LL + data.mes) * 100 + data.dia; }

// What a new check reads belongs here, as a part of its own.
Exame examina(const Casa& casa, const base::DataHora& hoje, const platform::diario::Gaveta* gaveta,
              Sessoes& sessoes, Progresso& progresso) {
    Contexto contexto{casa, hoje, sessoes, progresso};
    tenta(contexto, "L4, L6, L7 dos detentores, E4 do stock e E5", "detentores", [&] {
        examina_historias(contexto);
        contexto.com_historia = true;
    });
    tenta(contexto, "L1, L2, L5 e L7 dos movimentos", "movimentos", [&] { examina_linhas(contexto); });
    for (const Numeracao* qual : {&casa.guias, &casa.devolucoes})
        tenta(contexto, "L3, E1, E2, E3, E4 e E6 de " + qual->texto(), "documentos " + qual->texto(),
              [&] { examina_guias(contexto, *qual); });
    for (const Numeracao& qual : casa.facturas)
        tenta(contexto, "E1, E2, E3 e E6 de " + qual.texto(), "documentos " + qual.texto(),
              [&] { examina_facturas(contexto, qual); });
    for (const Numeracao* qual : {&casa.sobras, &casa.quebras, &casa.consumos}) {
        if (qual == &casa.consumos && casa.quebras.e(qual->TpDoc, qual->Serie)) continue; // both take out
        tenta(contexto, "E1, E2, E3, E4 e E6 de " + qual->texto(), "documentos " + qual->texto(),
              [&] { examina_ajustes(contexto, *qual); });
    }
    const std::string transferencias = casa.transferencias.texto();
    tenta(contexto, "E1, E2, E3 e E6 de " + transferencias, "documentos " + transferencias,
          [&] { examina_transferencias(contexto); });
    if (gaveta != nullptr) tenta(contexto, "J1", "diários", [&] { examina_diarios(contexto, *gaveta); });
    return std::move(contexto.exame);
}

} // namespace orvex::auditoria
