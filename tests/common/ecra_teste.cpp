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

TEST_F(EcraBase, the_price_of_a_movement_is_the_average_cost_or_the_last_purchase) {
    insere(empresa.outra(), "Artigos", {"CODIGO", "VLREXIST", "STDISP", "ULTPRCOM"},
           {{"D'A", m("150"), m("3"), m("12.5")}, {"SEM", m("0"), m("0"), m("12.5")}});
    EXPECT_DOUBLE_EQ(ecra.PrecoMovimento("D'A"), 50);
    EXPECT_DOUBLE_EQ(ecra.PrecoMovimento("SEM"), 12.5);
    EXPECT_DOUBLE_EQ(ecra.PrecoMovimento("?"), 0);
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

TEST_F(EcraBase, a_failure_no_handler_traps_is_shown_and_the_cursor_stays) {
    const Caixa falha{"A ligação caiu.", startup::descricao_programa, Icone::critico, Botoes::ok};
    ecra.aceita = [](int) -> bool { throw base::Falha("A ligação caiu."); };
    op.preenche(ecra.campo[0], "x");
    EXPECT_THAT(janela.caixas, ElementsAre(falha));
    EXPECT_EQ(foco(), &ecra.campo[0]);
    EXPECT_FALSE(janela.ocupada);
    ecra.aceita = [](int) { return true; };
    ecra.confirmar.Click = [&] {
        ecra.xelSendkeys("{TAB}");
        throw base::Falha("A ligação caiu.");
    };
    op.prime(ecra.confirmar);
    EXPECT_THAT(janela.caixas, ElementsAre(falha, falha));
    EXPECT_EQ(foco(), &ecra.confirmar) << "the key sent before the failure goes with it";
}

TEST_F(EcraBase, a_button_ignores_a_second_press_while_the_first_runs) {
    int premidas = 0;
    ecra.confirmar.Click = [&] {
        ++premidas;
        op.prime(ecra.confirmar);
    };
    op.prime(ecra.confirmar);
    EXPECT_EQ(premidas, 1);
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
