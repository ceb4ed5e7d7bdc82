#include "common/ecra.h"

#include "tests/apoio/empresa_teste.h"

#include <gmock/gmock.h>

using namespace orvex;
using namespace orvex::testes;
using namespace orvex::common;
using testing::ElementsAre;

namespace {

// Three fields, a button and a grid, in this order of the focus; what they do is told by each test.
class EcraSimples : public Ecra {
  public:
    explicit EcraSimples(ServicosEcra servicos) : Ecra(std::move(servicos), "Simples") {
        for (const int i : {0, 1, 2}) {
            campo(i).Index = i;
            regista(campo(i), "campo(" + std::to_string(i) + ")");
        }
        foco().define_ordem({&campo(0), &campo(1), &campo(2), &botao, &grelha});
        botao.Click = [this] { ++premidas; };
    }

    Vector<Campo> campo;
    Botao botao;
    Grelha grelha;
    std::vector<int> validados;
    std::function<void(int Index, bool& Cancel)> ao_validar;
    int premidas = 0;

    void Form_Load() override {}
    using Ecra::Avisa;
    using Ecra::bDigitado;
    using Ecra::MostraMensagem;
    using Ecra::PrecoMovimento;
    using Ecra::SetFocus;
    using Ecra::xelSendkeys;

  private:
    void campo_Validate(int Index, bool& Cancel) override {
        validados.push_back(Index);
        if (ao_validar) ao_validar(Index, Cancel);
        bDigitado = false;
    }
    void btFx_Click(int Index) override {
        preenche_da_lista(campo(Index),
                          {BD.Ligacao(), "", "SELECT Codigo, NOME From Vendedor order by Codigo", 8000, {}});
    }
    const Campo* campo_de_fecho() const override { return &campo(0); }
    Campo& primeiro_campo() override { return campo(0); }
    void limparform() override {}
};

struct EcraBase : testing::Test, Bancada<EcraSimples> {
    EcraBase() { abre(); }
    void com(std::function<void(int, bool&)> validacao) { ecra.ao_validar = std::move(validacao); }
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
    EXPECT_EQ(diario.linhas.front(),
              "ABRE SELECT VLREXIST , STDISP , ULTPRCOM  From Artigos WHERE     (CODIGO = 'D''A')");
}

TEST_F(EcraBase, a_field_that_is_left_is_validated_once_however_it_is_left) {
    const std::function<void()> maneiras[] = {
        [&] { op.sai(); }, [&] { ecra.utilizador_tecla(ecra.campo(0), tecla_enter); },
        [&] { ecra.utilizador_foca(ecra.campo(1)); }, [&] { op.prime(ecra.botao); }};
    for (const auto& sai : maneiras) {
        op.escreve(ecra.campo(0), "x");
        ecra.validados.clear();
        sai();
        EXPECT_THAT(ecra.validados, ElementsAre(0));
        EXPECT_NE(foco(), &ecra.campo(0));
    }
    EXPECT_EQ(ecra.premidas, 1);
}

TEST_F(EcraBase, a_refused_validation_keeps_the_focus_and_swallows_the_click_and_the_keys) {
    com([](int Index, bool& Cancel) { Cancel = Index == 1; });
    op.escreve(ecra.campo(1), "x");
    ecra.validados.clear();
    op.prime(ecra.botao);
    EXPECT_EQ(ecra.premidas, 0);
    ecra.utilizador_avanca(+2);
    EXPECT_EQ(foco(), &ecra.campo(1));
    EXPECT_EQ(janela.foco, &ecra.campo(1));
    EXPECT_THAT(ecra.validados, ElementsAre(1, 1)) << "once for the click, once for the key";
}

TEST_F(EcraBase, an_explicit_focus_beats_a_key_sent_before_it_and_a_disabled_control_is_passed_over) {
    ecra.botao.Click = [&] {
        ecra.xelSendkeys("{TAB}");
        ecra.SetFocus(ecra.campo(1));
    };
    op.prime(ecra.botao);
    EXPECT_EQ(foco(), &ecra.campo(1));

    ecra.campo(2).Enabled = false;
    op.sai();
    EXPECT_EQ(foco(), &ecra.botao);
    ecra.botao.Click = [&] { ecra.SetFocus(ecra.campo(2)); };
    op.prime(ecra.botao);
    EXPECT_EQ(foco(), &ecra.botao);
    ecra.utilizador_avanca(-1);
    EXPECT_EQ(foco(), &ecra.campo(1));

    com([&](int, bool&) { ecra.SetFocus(ecra.campo(0)); }); // an accepting validation may choose the way
    op.sai();
    EXPECT_EQ(foco(), &ecra.campo(0));
    ecra.campo(0).Visible = false; // hidden under the keyboard
    op.prime(ecra.botao);
    EXPECT_TRUE(foco()->recebe_foco());
}

TEST_F(EcraBase, esc_goes_back_without_validation_and_closes_the_screen_in_the_closing_field) {
    op.escreve(ecra.campo(1), "x");
    op.tecla(ecra.campo(1), tecla_esc);
    EXPECT_EQ(foco(), &ecra.campo(0));
    EXPECT_FALSE(ecra.bDigitado);
    EXPECT_FALSE(janela.descarregada);
    op.tecla(ecra.campo(0), tecla_esc);
    EXPECT_TRUE(janela.descarregada);
}

TEST_F(EcraBase, a_choice_from_the_list_fills_the_field_and_validates_it_as_if_typed) {
    bool digitado = false;
    com([&](int, bool&) { digitado = ecra.bDigitado; });
    janela.escolhe_a_primeira_com("NOME", "Ana");
    ecra.utilizador_foca(ecra.campo(1));
    ecra.validados.clear();
    ecra.utilizador_lista(ecra.campo(1));
    EXPECT_EQ(ecra.campo(1).Text, "V'2");
    EXPECT_EQ(ecra.campo(1).SelLength, 3);
    EXPECT_THAT(ecra.validados, ElementsAre(1));
    EXPECT_TRUE(digitado);
    EXPECT_EQ(foco(), &ecra.campo(2));
    ecra.utilizador_lista(ecra.campo(2)); // nothing chosen
    EXPECT_EQ(ecra.campo(2).Text, "");
    EXPECT_EQ(foco(), &ecra.campo(2));
}

TEST_F(EcraBase, a_failure_no_handler_traps_is_shown_and_the_cursor_stays) {
    com([](int, bool&) { throw base::Falha("A ligação caiu."); });
    op.preenche(ecra.campo(0), "x");
    EXPECT_THAT(janela.caixas, ElementsAre(Caixa{"A ligação caiu.", startup::descricao_programa,
                                                 Icone::critico, Botoes::ok}));
    EXPECT_EQ(foco(), &ecra.campo(0));
    EXPECT_FALSE(janela.ocupada);
    com(nullptr);
    op.sai();
    EXPECT_EQ(foco(), &ecra.campo(1)) << "the screen goes on";
}

TEST_F(EcraBase, a_button_ignores_a_second_press_while_the_first_runs) {
    ecra.botao.Click = [&] {
        ++ecra.premidas;
        op.prime(ecra.botao);
    };
    op.prime(ecra.botao);
    EXPECT_EQ(ecra.premidas, 1);
}
