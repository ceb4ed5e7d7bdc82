#include "startup/arranque.h"
#include "tests/common/ecra_ensaio.h"

#include <map>

using namespace orvex;
using namespace orvex::testes;
using namespace orvex::common;

namespace {

struct Ecras : testing::Test, Bancada<EcraEnsaio> {
    Ecras() { abre(); }
    std::string foco() { return ecra.foco().actual()->nome; }
};

} // namespace

TEST_F(Ecras, CadaEspecieDeAvisoTemOSeuTextoIconeBotoesEResposta) {
    janela.respostas = {resposta_cancelar, resposta_nao};
    EXPECT_EQ(ecra.Avisa("Artigo", "", 1), 0);
    EXPECT_EQ(ecra.Avisa("", "Dois", 2), 0);
    EXPECT_EQ(ecra.Avisa("", "Três", 3), resposta_cancelar);
    EXPECT_EQ(ecra.Avisa("", "Quatro", 4), resposta_nao);
    EXPECT_EQ(ecra.MostraMensagem("Crítica", 2), resposta_ok);
    const char* informacao = "Informação";
    EXPECT_THAT(janela.caixas,
                ElementsAre(Caixa{"Campo obrigatório [Artigo].", informacao, Icone::exclamacao, Botoes::ok},
                            Caixa{"Dois", informacao, Icone::informacao, Botoes::ok},
                            Caixa{"Três", informacao, Icone::informacao, Botoes::ok_cancelar},
                            Caixa{"Quatro", informacao, Icone::informacao, Botoes::sim_nao},
                            Caixa{"Crítica", startup::descricao_programa, Icone::critico, Botoes::ok}));
}

TEST_F(Ecras, UmFocoExplicitoVenceUmaTeclaEnviadaAntesEUmControloFechadoNaoORecebe) {
    ecra.confirmar.Click = [&] {
        ecra.xelSendkeys("{TAB}");
        ecra.SetFocus(ecra.campo[1]);
    };
    op.prime(ecra.confirmar);
    EXPECT_EQ(foco(), "campo(1)");

    ecra.data.Enabled = false;
    op.sai();
    EXPECT_EQ(foco(), "combo");
    ecra.confirmar.Click = [&] { ecra.SetFocus(ecra.data); };
    op.prime(ecra.confirmar);
    EXPECT_EQ(foco(), "confirmar");

    ecra.aceita = [&](int) { // an accepting validation may choose the way
        ecra.SetFocus(ecra.campo[0]);
        return true;
    };
    op.preenche(ecra.campo[2], "x");
    EXPECT_EQ(foco(), "campo(0)");
    ecra.campo[0].Visible = false; // hidden under the keyboard
    op.prime(ecra.confirmar);
    EXPECT_TRUE(ecra.foco().actual()->recebe_foco());
}

TEST(Eventos, OQueFalhaNumDelesEDitoUmaVezEOEcraContinuaAOuvirEDesocupado) {
    using Mesa = Bancada<EcraEnsaio>;
    const std::map<std::string, void (*)(Mesa&)> eventos{
        {"prime", [](Mesa& m) { m.op.prime(m.ecra.confirmar); }},
        {"sai", [](Mesa& m) { m.op.preenche(m.ecra.campo[0], "x"); }},
        {"pagina",
         [](Mesa& m) {
             m.op.escreve(m.ecra.campo[0], "x");
             m.ecra.utilizador_pagina(m.ecra.paginas, 1);
         }},
        {"grelha",
         [](Mesa& m) {
             m.op.vai(m.ecra.grelha, 2);
             m.op.sai();
         }},
        {"data", [](Mesa& m) { m.op.preenche(m.ecra.data, "31-02"); }},
        {"fecha", [](Mesa& m) { m.op.tecla(m.ecra.campo[0], tecla_esc); }}};
    // The event, the handler and the part of the window that fail => shown / thrown / where the keyboard is.
    for (const auto& caso : tabela(
             {"prime Click - => Um./-/confirmar", "prime Click? - => Ocorreu um erro inesperado./-/confirmar",
              "sai Validate - => Um./-/campo(0)", "pagina Validate - => Um./-/campo(0)",
              "grelha LostFocus - => Um./-/campo(2)", "grelha GotFocus - => Um./-/campo(2)",
              "prime Click caixa => /Um.\r\nA janela falhou./confirmar",
              "pagina Validate caixa => /Um.\r\nA janela falhou./campo(0)",
              "grelha LostFocus caixa => /Um.\r\nA janela falhou./campo(2)",
              "data - caixa => /A janela falhou.\r\nA janela falhou./data",
              "prime - ocupa => /A janela falhou./campo(0)",
              "prime - desocupa => /A janela falhou./confirmar",
              "prime - da_foco => /A janela falhou./confirmar",
              "prime - mostra => /A janela falhou./confirmar",
              "fecha - descarrega => A janela falhou./-/campo(0)"})) {
        SCOPED_TRACE(caso[0]);
        Mesa m;
        m.abre();
        auto onde = partes(caso[0], " ");
        const auto passa = [&](const std::string& manipulador) {
            if (onde[1] == manipulador + "?") throw 1;
            return onde[1] != manipulador ? true : throw base::Falha("Um.");
        };
        m.ecra.confirmar.Click = [&] {
            m.ecra.xelSendkeys("{TAB}"); // goes with the failure
            m.ecra.confirmacoes += passa("Click");
        };
        m.ecra.aceita = [&](int) { return passa("Validate"); };
        m.ecra.grelha.LostFocus = [&] { passa("LostFocus"); };
        m.ecra.grelha.GotFocus = [&] { passa("GotFocus"); };
        m.janela.falha_em = onde[2];
        std::string lancado = "-";
        try {
            eventos.at(onde[0])(m);
        } catch (const std::exception& falha) {
            lancado = falha.what();
        }
        EXPECT_EQ(m.caixas() + "/" + lancado + "/" + m.ecra.foco().actual()->nome, caso[1]);
        EXPECT_FALSE(m.janela.ocupada);
        m.janela.falha_em = onde[1] = "";
        m.ecra.data.Texto.reset();
        m.op.prime(m.ecra.confirmar);
        EXPECT_EQ(m.ecra.confirmacoes, 1);
    }
}

TEST_F(Ecras, EnquantoUmEventoMostraUmaCaixaQualquerOutroEIgnorado) {
    int premidas = 0;
    ecra.data.Texto = "31-02";
    ecra.confirmar.Click = [&] { premidas += ecra.Avisa("", "?", 2) == 0; };
    janela.com_a_caixa_aberta = [&] {
        op.prime(ecra.confirmar);
        op.preenche(ecra.campo[1], "x");
        ecra.utilizador_esc(ecra.data);
        EXPECT_FALSE(ecra.utilizador_foca(ecra.confirmar));
    };
    op.prime(ecra.confirmar);
    EXPECT_EQ(premidas, 1);
    EXPECT_EQ(ecra.campo[1].Text + ecra.data.texto_mostrado(), "31-02");
}

TEST_F(Ecras, UmaDataEscritaELidaASaidaEPerguntadaUmaVezQuandoEstaLonge) {
    const base::DataHora hoje{2019, 3, 15, 10, 20, 30};
    ecra.data.Value = hoje;
    bool aceite = false;
    ecra.confirmar.Click = [&] { aceite = ecra.AceitaDatas({&ecra.data}); };
    const auto pergunta = [&](int resposta) {
        janela.respostas = {resposta};
        op.prime(ecra.confirmar);
        const std::string texto = caixas();
        return texto.empty() ? texto : texto.substr(texto.find('1'), 10) + (aceite ? " sim" : " não");
    };
    op.escreve(ecra.data, "151017");
    EXPECT_EQ(pergunta(resposta_cancelar), "15-10-2017 não");
    EXPECT_EQ(foco() + ecra.data.texto_mostrado(), "data15-10-2017");
    ecra.utilizador_data(ecra.data, hoje); // chosen, and put back
    ecra.utilizador_tecla(ecra.data, tecla_esc, 0);
    EXPECT_EQ(pergunta(resposta_ok) + pergunta(resposta_ok), "15-10-2017 sim");
    ecra.data.Value = {2015, 1, 1}; // by the program
    EXPECT_EQ(pergunta(resposta_ok), "");
    op.escreve(ecra.data, "15-03-20");
    EXPECT_EQ(pergunta(resposta_ok), "");
}
