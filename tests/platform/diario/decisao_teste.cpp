#include "platform/diario/decisao.h"

#include <gtest/gtest.h>

using namespace orvex;
using namespace orvex::platform::diario;
using confirmacao::AccaoERP;
using livro::EstadoERP;
using startup::ChaveDocumento;

namespace {

const ChaveDocumento novo{2019, "GR", 1, 8}, outro{2019, "GR", 1, 9}, velho{2019, "SB", 1, 3};

using RespostaDoERP = std::optional<confirmacao::Desfecho>;

Chamada cria(RespostaDoERP desfecho) {
    Chamada chamada{.pedido = {AccaoERP::cria, {2019, "GR", 1}}};
    if (desfecho) chamada.resposta = {*desfecho, novo, ""};
    return chamada;
}

Chamada anula(RespostaDoERP desfecho) {
    Chamada chamada{.pedido = {AccaoERP::anula, velho}};
    if (desfecho) chamada.resposta = {*desfecho, velho, ""};
    return chamada;
}

constexpr RespostaDoERP sem{};
constexpr auto feito = confirmacao::Desfecho::feito, recusado = confirmacao::Desfecho::recusado;
constexpr auto em_vigor = EstadoERP::em_vigor, anulado = EstadoERP::anulado;
using Documentos = std::vector<ChaveDocumento>;

struct Linha {
    const char* morreu;
    std::vector<Chamada> chamadas;
    Factos factos;
    Desfecho desfecho;
    Documentos feitos{}, a_anular{}, a_completar{}, a_procurar{};
};

const Linha linhas[] = {
    {"before any call", {}, {}, Desfecho::nada},
    {"while the ERP worked, and nothing came of it", {cria(sem)}, {}, Desfecho::nada},
    {"the ERP refused", {cria(recusado)}, {}, Desfecho::desfeita},
    {"created, its answer lost", {cria(sem)}, {.candidatos = {novo}}, Desfecho::por_decidir, {}, {novo}},
    {"created twice, it seems",
     {cria(sem)},
     {.candidatos = {novo, outro}},
     Desfecho::por_decidir,
     {},
     {},
     {},
     {novo, outro}},
    {"answered, not committed",
     {cria(feito)},
     {.criado = {{novo, em_vigor, false}}},
     Desfecho::por_decidir,
     {},
     {novo}},
    {"answered and committed", {cria(feito)}, {.criado = {{novo, em_vigor, true}}}, Desfecho::feita, {novo}},
    {"created, and cancelled again", {cria(feito)}, {.criado = {{novo, anulado, false}}}, Desfecho::desfeita},
    {"committed, and cancelled in the ERP since",
     {cria(feito)},
     {.criado = {{novo, anulado, true}}},
     Desfecho::por_decidir,
     {},
     {},
     {novo}},
    {"cancelling, and it did not happen",
     {anula(sem)},
     {.anulados = {{velho, em_vigor, true}}},
     Desfecho::nada},
    {"cancelling was refused",
     {anula(recusado)},
     {.anulados = {{velho, em_vigor, true}}},
     Desfecho::desfeita},
    {"cancelled, its rows still there",
     {anula(sem)},
     {.anulados = {{velho, anulado, true}}},
     Desfecho::por_decidir,
     {},
     {},
     {velho}},
    {"cancelled whole", {anula(feito)}, {.anulados = {{velho, anulado, false}}}, Desfecho::feita, {velho}},
    {"the ERP said it cancelled, and did not, and the rows went",
     {anula(feito)},
     {.anulados = {{velho, em_vigor, false}}},
     Desfecho::por_decidir,
     {},
     {velho}},
    {"a replacement, half done",
     {anula(feito), cria(feito)},
     {.criado = {{novo, em_vigor, false}}, .anulados = {{velho, anulado, true}}},
     Desfecho::por_decidir,
     {},
     {novo},
     {velho}},
    {"a replacement, the new document asked for and not there",
     {anula(recusado), cria(sem)},
     {.anulados = {{velho, em_vigor, true}}},
     Desfecho::nada},
    {"a replacement, before the new document was asked for",
     {anula(recusado)},
     {.anulados = {{velho, em_vigor, true}}},
     Desfecho::desfeita},
    {"a replacement, only the old document withdrawn",
     {anula(feito), cria(feito)},
     {.criado = {{novo, anulado, false}}, .anulados = {{velho, anulado, false}}},
     Desfecho::desfeita,
     {velho}},
    {"a replacement, committed",
     {anula(feito), cria(feito)},
     {.criado = {{novo, em_vigor, true}}, .anulados = {{velho, anulado, false}}},
     Desfecho::feita,
     {novo, velho}},
    {"a transfer to a client, committed", {}, {.transferida = true}, Desfecho::feita},
};

} // namespace

TEST(Decisao, CadaJanelaTemASuaResposta) {
    for (const Linha& linha : linhas) {
        SCOPED_TRACE(linha.morreu);
        const bool cria_documento = criacao({.chamadas = linha.chamadas}) != nullptr;
        const confirmacao::Intencao intencao{.cria = cria_documento ? novo : ChaveDocumento{}};
        const Decisao decisao = decide({.intencao = intencao, .chamadas = linha.chamadas}, linha.factos);
        EXPECT_EQ(decisao.desfecho, linha.desfecho);
        EXPECT_EQ(decisao.feitos, linha.feitos);
        EXPECT_EQ(decisao.a_anular, linha.a_anular);
        EXPECT_EQ(decisao.a_completar, linha.a_completar);
        EXPECT_EQ(decisao.a_procurar, linha.a_procurar);
    }
}
