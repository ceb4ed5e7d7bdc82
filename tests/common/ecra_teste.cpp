#include "startup/arranque.h"
#include "tests/common/ecra_ensaio.h"

#include <gmock/gmock.h>

using namespace orvex;
using namespace orvex::testes;
using namespace orvex::common;
using testing::ElementsAre;

namespace {

struct EcraBase : testing::Test, Bancada<EcraEnsaio> {
    EcraBase() { abre(); }
    Controlo* foco() { return ecra.foco().actual(); }
};

} // namespace

TEST_F(EcraBase, each_kind_of_notice_has_its_text_icon_buttons_and_result) {
    janela.respostas = {resposta_cancelar, resposta_nao};
    EXPECT_EQ(ecra.Avisa("Artigo", "", 1), 0);
    EXPECT_EQ(ecra.Avisa("", "Dois", 2), 0);
    EXPECT_EQ(ecra.Avisa("", "Três", 3), 2);
    EXPECT_EQ(ecra.Avisa("", "Quatro", 4), 7);
    EXPECT_EQ(ecra.Avisa("Artigo", "Cinco", 5), 0);
    EXPECT_EQ(ecra.MostraMensagem("Crítica", 2), resposta_ok);
    EXPECT_EQ(ecra.MostraMensagem("Nada", 3), 0);
    const char* informacao = "Informação";
    EXPECT_THAT(janela.caixas,
                ElementsAre(Caixa{"Campo obrigatório [Artigo].", informacao, Icone::exclamacao, Botoes::ok},
                            Caixa{"Dois", informacao, Icone::informacao, Botoes::ok},
                            Caixa{"Três", informacao, Icone::informacao, Botoes::ok_cancelar},
                            Caixa{"Quatro", informacao, Icone::informacao, Botoes::sim_nao},
                            Caixa{"Crítica", startup::descricao_programa, Icone::critico, Botoes::ok}));
}

TEST_F(EcraBase, an_explicit_focus_beats_a_key_sent_before_it_and_a_disabled_control_is_passed_over) {
    ecra.confirmar.Click = [&] {
        ecra.xelSendkeys("{TAB}");
        ecra.SetFocus(ecra.campo[1]);
    };
    op.prime(ecra.confirmar);
    EXPECT_EQ(foco(), &ecra.campo[1]);

    ecra.data.Enabled = false;
    op.sai();
    EXPECT_EQ(foco(), &ecra.combo);
    ecra.confirmar.Click = [&] { ecra.SetFocus(ecra.data); };
    op.prime(ecra.confirmar);
    EXPECT_EQ(foco(), &ecra.confirmar);

    ecra.aceita = [&](int) { // an accepting validation may choose the way
        ecra.SetFocus(ecra.campo[0]);
        return true;
    };
    op.preenche(ecra.campo[2], "x");
    EXPECT_EQ(foco(), &ecra.campo[0]);
    ecra.campo[0].Visible = false; // hidden under the keyboard
    op.prime(ecra.confirmar);
    EXPECT_TRUE(foco()->recebe_foco());
}

TEST(Eventos, whatever_fails_in_one_is_told_once_and_leaves_the_screen_listening_and_not_busy) {
    using Mesa = Bancada<EcraEnsaio>;
    const auto prime = [](Mesa& m) { m.op.prime(m.ecra.confirmar); };
    const auto sai = [](Mesa& m) { m.op.preenche(m.ecra.campo[0], "x"); };
    const auto muda_de_pagina = [](Mesa& m) {
        m.op.escreve(m.ecra.campo[0], "x");
        m.ecra.utilizador_pagina(m.ecra.paginas, 1);
    };
    const auto passa_na_grelha = [](Mesa& m) { m.op.vai(m.ecra.grelha, 2), m.op.sai(); };
    const auto data = [](Mesa& m) { m.op.escreve(m.ecra.data, "31-02"), m.op.sai(); };
    const auto fecha = [](Mesa& m) { m.op.tecla(m.ecra.campo[0], tecla_esc); };
    const std::string caiu = "A ligação caiu.", janela = "A janela falhou.", ambas = caiu + "\r\n" + janela;
    const struct {
        std::string manipulador, da_janela; // what fails
        void (*evento)(Mesa&);
        std::string caixas, lancado; // where it is told
        const char* teclado;
    } pontos[] = {{"Click", "", prime, caiu, "", "confirmar"},
                  {"Click?", "", prime, "Ocorreu um erro inesperado.", "", "confirmar"},
                  {"Validate", "", sai, caiu, "", "campo(0)"},
                  {"Validate?", "", muda_de_pagina, "Ocorreu um erro inesperado.", "", "campo(0)"},
                  {"LostFocus", "", passa_na_grelha, caiu, "", "campo(2)"},
                  {"GotFocus", "", passa_na_grelha, caiu, "", "campo(2)"},
                  {"Click", "caixa", prime, "", ambas, "confirmar"},
                  {"Validate", "caixa", sai, "", ambas, "campo(0)"},
                  {"Validate", "caixa", muda_de_pagina, "", ambas, "campo(0)"},
                  {"LostFocus", "caixa", passa_na_grelha, "", ambas, "campo(2)"},
                  {"", "caixa", data, "", janela + "\r\n" + janela, "data"},
                  {"", "ocupa", prime, "", janela, "campo(0)"},
                  {"", "desocupa", prime, "", janela, "confirmar"},
                  {"", "da_foco", prime, "", janela, "confirmar"},
                  {"", "mostra", prime, "", janela, "confirmar"},
                  {"", "descarrega", fecha, janela, "", "campo(0)"}};
    for (const auto& [manipulador, da_janela, evento, caixas, lancado, teclado] : pontos) {
        SCOPED_TRACE(manipulador + " " + da_janela);
        Mesa mesa;
        mesa.abre();
        bool a_falhar = true;
        const auto passa = [&, onde_falha = manipulador](const std::string& onde) {
            if (a_falhar && onde + "?" == onde_falha) throw 1;
            if (a_falhar && onde == onde_falha) throw base::Falha(caiu);
            return true;
        };
        mesa.ecra.confirmar.Click = [&] {
            mesa.ecra.xelSendkeys("{TAB}"); // goes with the failure
            mesa.ecra.confirmacoes += passa("Click");
        };
        mesa.ecra.aceita = [&](int) { return passa("Validate"); };
        mesa.ecra.grelha.LostFocus = [&] { passa("LostFocus"); };
        mesa.ecra.grelha.GotFocus = [&] { passa("GotFocus"); };
        mesa.janela.falha_em = da_janela;
        std::string foi_lancado;
        try {
            evento(mesa);
        } catch (const std::exception& falha) {
            foi_lancado = falha.what();
        } catch (...) {
            foi_lancado = "?";
        }
        EXPECT_EQ(mesa.caixas() + "/" + foi_lancado, caixas + "/" + lancado);
        EXPECT_EQ(mesa.ecra.foco().actual()->nome, teclado);
        EXPECT_FALSE(mesa.janela.ocupada);
        a_falhar = false;
        mesa.janela.falha_em.clear();
        mesa.ecra.data.Texto.reset();
        mesa.op.prime(mesa.ecra.confirmar);
        EXPECT_EQ(mesa.ecra.confirmacoes, 1);
    }
}

TEST_F(EcraBase, while_an_event_runs_and_shows_a_box_any_other_is_ignored) {
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

TEST(Vector, has_the_members_that_were_registered_and_no_other) {
    Vector<Campo> campo;
    Campo& tres = campo.cria(3);
    campo.cria(1).nome = "campo(1)";
    EXPECT_EQ(&campo(3), &tres);
    const auto pede = [](auto& vector) { vector(7); };
    const auto falta = testing::ThrowsMessage<base::Falha>("O ecrã não tem o controlo campo(7).");
    EXPECT_THAT([&] { pede(campo); }, falta);
    EXPECT_THAT([&] { pede(std::as_const(campo)); }, falta);
}

TEST_F(EcraBase, a_typed_date_is_read_as_its_picker_is_left_and_asked_about_once_when_it_is_far) {
    const base::DataHora hoje{2019, 3, 15, 10, 20, 30}, longe{2017, 10, 15, 10, 20, 30};
    ecra.data.Value = hoje;
    op.escreve(ecra.data, "31-02");
    op.prime(ecra.confirmar);
    EXPECT_EQ(janela.retira_caixas() + ecra.data.texto_mostrado(), "Data inválida!31-02");
    EXPECT_TRUE(foco() == &ecra.data && ecra.confirmacoes == 0 && ecra.data.Value == hoje);
    ecra.utilizador_tecla(ecra.data, tecla_esc, 0);
    EXPECT_TRUE(foco() == &ecra.campo[1] && ecra.data.Value == hoje && !ecra.data.Texto);

    bool aceite = false;
    ecra.confirmar.Click = [&] { aceite = ecra.AceitaDatas({&ecra.data}); };
    const auto pergunta = [&](int resposta) {
        janela.respostas = {resposta};
        op.prime(ecra.confirmar);
        const std::string texto = janela.retira_caixas();
        return texto.empty() ? texto : texto.substr(texto.find('1'), 10) + (aceite ? " sim" : " não");
    };
    op.escreve(ecra.data, "151017");
    EXPECT_EQ(pergunta(resposta_cancelar), "15-10-2017 não");
    EXPECT_TRUE(foco() == &ecra.data && ecra.data.Value == longe);
    ecra.utilizador_data(ecra.data, hoje); // chosen, and put back
    ecra.utilizador_tecla(ecra.data, tecla_esc, 0);
    EXPECT_EQ(pergunta(resposta_ok) + pergunta(resposta_ok), "15-10-2017 sim");
    ecra.data.Value = {2015, 1, 1}; // by the program
    EXPECT_EQ(pergunta(resposta_ok), "");
    op.escreve(ecra.data, "15-03-20");
    EXPECT_EQ(pergunta(resposta_ok), "");
}
