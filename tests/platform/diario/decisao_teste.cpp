#include "platform/diario/decisao.h"
#include "tests/apoio/tabela.h"

#include <gtest/gtest.h>

namespace orvex::testes {
namespace {

using namespace platform::diario;
using confirmacao::AccaoERP;
using livro::EstadoERP;
using startup::ChaveDocumento;

// The documents are known by their numbers: 3 is to be cancelled, 8 and 9 are of the kind that is created.
ChaveDocumento documento(char numero) { return {2019, numero == '3' ? "SB" : "GR", 1, numero - '0'}; }

// "anula+ cria?": what the ERP was asked for, and whether it did it (+), refused (-) or did not answer (?).
Passos passos(const std::string& chamadas) {
    Passos ditos;
    for (const std::string& uma : partes(chamadas, " ")) {
        const bool cria = uma.starts_with("cria");
        const ChaveDocumento chave = documento(cria ? '8' : '3');
        Chamada chamada{.pedido = {cria ? AccaoERP::cria : AccaoERP::anula, chave}};
        if (cria) ditos.intencao.cria = chave;
        if (cria) chamada.pedido.chave.NossoNoDocumento = 0;
        if (uma.back() == '+') chamada.resposta = {confirmacao::Desfecho::feito, chave, ""};
        if (uma.back() == '-') chamada.resposta = {confirmacao::Desfecho::recusado, chave, ""};
        ditos.chamadas.push_back(chamada);
    }
    return ditos;
}

// "8V-": in force (V) or cancelled (A), with rows (+) or without; "~9": may be the one; "T": a transfer's
// rows.
Factos factos(const std::string& vistos) {
    Factos lidos;
    for (const std::string& um : partes(vistos, " ")) {
        if (um == "T") {
            lidos.transferida = true;
        } else if (um[0] == '~') {
            lidos.candidatos.push_back(documento(um[1]));
        } else {
            const auto estado = um[1] == 'V' ? EstadoERP::em_vigor : EstadoERP::anulado;
            const FactosDocumento este{documento(um[0]), estado, um[2] == '+'};
            um[0] == '3' ? lidos.anulados.push_back(este) : void(lidos.criado = este);
        }
    }
    return lidos;
}

std::string texto(const Decisao& decisao) {
    constexpr const char* desfechos[] = {"feita", "desfeita", "nada", "por decidir"};
    std::string tudo = desfechos[static_cast<int>(decisao.desfecho)];
    for (const auto& [nome, documentos] : {std::pair{", feito ", decisao.feitos},
                                           {", anula ", decisao.a_anular},
                                           {", completa ", decisao.a_completar},
                                           {", procura ", decisao.a_procurar},
                                           {", ver ", decisao.a_ver}})
        for (const ChaveDocumento& um : documentos)
            tudo += nome + std::to_string(um.NossoNoDocumento);
    return tudo;
}

TEST(Decisao, CadaJanelaTemASuaResposta) {
    for (
        const auto& caso : tabela(
            {"before any call =>  =>  => nada",
             "while the ERP worked, and nothing came of it => cria? =>  => nada",
             "the ERP refused => cria- =>  => desfeita",
             "created, its answer lost => cria? => ~8 => por decidir, anula 8",
             "created twice, it seems => cria? => ~8 ~9 => por decidir, procura 8, procura 9",
             "answered, not committed => cria+ => 8V- => por decidir, anula 8",
             "answered and committed => cria+ => 8V+ => feita, feito 8",
             "created, and cancelled again => cria+ => 8A- => desfeita",
             "committed, and cancelled in the ERP since => cria+ => 8A+ => por decidir, completa 8",
             "cancelling, and it did not happen => anula? => 3V+ => nada",
             "cancelling was refused => anula- => 3V+ => desfeita",
             "cancelled, its rows still there => anula? => 3A+ => por decidir, completa 3",
             "cancelled whole => anula+ => 3A- => feita, feito 3",
             "the ERP said it cancelled, and did not; the rows went => anula+ => 3V- => por decidir, anula 3",
             "a replacement, half done => anula+ cria+ => 8V- 3A+ => por decidir, anula 8, completa 3",
             "a replacement, the new document asked for and not there => anula- cria? => 3V+ => nada",
             "a replacement, only the old document withdrawn => anula+ cria+ => 8A- 3A- => desfeita, feito 3",
             "a replacement, committed => anula+ cria+ => 8V+ 3A- => feita, feito 8, feito 3",
             "a transfer to a client, committed =>  => T => feita"}))
        EXPECT_EQ(texto(decide(passos(caso[1]), factos(caso[2]))), caso[3]) << caso[0];
}

} // namespace
} // namespace orvex::testes
