#include "tests/delivery/ecra_guias.h"

using namespace orvex;
using namespace orvex::testes;

namespace {

struct RascunhoDasGuias : Guias {
    std::string gr() const { return linhas(ecra.Gr, {"Artigo", "Nome", "Quant", "PesoBruto", "OutroDoc"}); }
    void aberto(const char* quantidade) { // by another workstation, of BOB2's line
        const auto linha = empresa.outra().AbreActualizavel(
            "select * from xel_ORVEX_Mov where TpDoc='FA' and NumDoc=123 and NumLinha=2");
        linha->define("Qtd", m(quantidade));
        linha->actualiza();
    }
};

} // namespace

TEST_F(RascunhoDasGuias, VoltaAoEcraComoEstavaEDizOQueJaNaoEstaEmAberto) {
    cliente("cl'1");
    for (const int linha : {1, 2, 3})
        escolhe(linha);
    edita(1, "Quant", "2");
    edita(2, "PesoBruto", "1,3");
    edita(3, "Nome", "Outra designação");
    edita(4, "Nome", "Nota d'água");
    preenche_com("T", {22, 25});
    ecra.utilizador_data(ecra.DTPicker2(0), {2019, 3, 20, 8, 0, 0});
    const auto rascunho = ecra.rascunho();
    ASSERT_TRUE(rascunho);
    const std::string antes = gr();
    confirma(); // which leaves the screen empty, and less open
    EXPECT_FALSE(ecra.rascunho());
    carrega("1");
    anula(); // and open again
    caixas();

    agora.dia = 18;
    EXPECT_TRUE(ecra.utilizador_repoe(*rascunho));
    EXPECT_EQ(caixas(), "");
    EXPECT_EQ(gr(), antes);
    EXPECT_EQ(*ecra.rascunho(), *rascunho);
    EXPECT_EQ(textos({22, 25, 2}) + ecra.Label2(1).Caption, "T22|T25|V1|José O'Neill, Lda");
    EXPECT_EQ(ecra.DTPicker2(0).Value, (base::DataHora{2019, 3, 20, 8, 0, 0}));
    EXPECT_EQ(ecra.DTPicker1.Value.dia, 18); // nobody gave it
    EXPECT_EQ(ecra.foco().actual(), &ecra.Gr);
    EXPECT_FALSE(ecra.utilizador_repoe(*rascunho)); // not over what is unsaved

    const auto repoe = [&] {
        op.prime(ecra.btCancelar);
        ecra.utilizador_repoe(*rascunho);
        return caixas();
    };
    aberto("0.5");
    EXPECT_THAT(repoe(), EndsWith("falta agora:\r\nBOB2: de 1,15 t restam 0,5 t"));
    EXPECT_THAT(linhas(ecra.Gr, {"Artigo", "Quant", "PesoBruto"}), HasSubstr("BOB2|0.5|0.5"));
    aberto("0");
    EXPECT_THAT(repoe(), EndsWith("falta agora:\r\nBOB2: já não há nada em aberto"));
    auto so_a_ultima = *rascunho;
    so_a_ultima.linhas.erase(so_a_ultima.linhas.begin(), so_a_ultima.linhas.begin() + 2);
    so_a_ultima.linhas[0].Artigo = "OUTRO"; // the line is of another article now
    op.prime(ecra.btCancelar);
    EXPECT_FALSE(ecra.utilizador_repoe(so_a_ultima)); // nothing is left of it
    EXPECT_THAT(caixas(), EndsWith("OUTRO: já não há nada em aberto\r\nTexto «Nota d'água»"));
    EXPECT_EQ(gr(), "");
}

TEST_F(RascunhoDasGuias, OQueNaoSePodeReporDeixaOEcraVazio) {
    cliente("CL'1");
    escolhe(1);
    auto rascunho = *ecra.rascunho();
    op.prime(ecra.btCancelar);
    janela.desiste_em = "A listar"; // Esc
    EXPECT_FALSE(ecra.utilizador_repoe(rascunho));
    EXPECT_TRUE(vazio() && no_campo(0));
    janela.desiste_em.clear();
    rascunho.Cliente = "NINGUÉM";
    EXPECT_FALSE(ecra.utilizador_repoe(rascunho));
    EXPECT_EQ(caixas(), "Cliente não existente!");
    EXPECT_TRUE(vazio() && no_campo(0));
}

TEST_F(RascunhoDasGuias, CtrlZTiraCadaPassoPelaOrdemInversa) {
    std::vector<std::string> passos;
    const auto passo = [&](const std::function<void()>& faz) {
        passos.push_back(gr());
        faz();
        EXPECT_NE(gr(), passos.back());
    };
    cliente("CL'1");
    passo([&] { escolhe(1); });
    passo([&] { escolhe(2); });
    passo([&] { edita(2, "Quant", "1"); });
    passo([&] { edita(3, "Nome", "Nota"); });
    passo([&] { op.apaga(ecra.Gr, 2); }); // its text too
    preenche_com("T", {25});
    passo([&] { op.prime(ecra.btCancelar); });
    EXPECT_TRUE(vazio());
    for (; !passos.empty(); passos.pop_back()) {
        ecra.utilizador_desfaz();
        EXPECT_EQ(gr(), passos.back());
        EXPECT_EQ(ecra.campo(25).Text, "T25"); // what stands beside the lines stays
    }
    EXPECT_FALSE(ecra.Detalhe.pintada(0));
    ecra.utilizador_desfaz(); // nothing is left
    EXPECT_EQ(ecra.campo(0).Text + gr(), "CL'1");
}

TEST_F(RascunhoDasGuias, CtrlZNaoPerdeNadaOndeAListaNaoEstaInteira) {
    cliente("CL'1");
    escolhe(1);
    escolhe(2);
    edita(1, "Quant", "1");
    escolhe(1); // the same line again
    caixas();
    const std::string antes = gr();
    edita(1, "Quant", "2,5"); // more than there is, and told when it is confirmed
    edita(1, "Quant", "2");
    ecra.utilizador_desfaz();
    ecra.utilizador_desfaz();
    EXPECT_EQ(caixas() + gr(), antes);
    janela.desiste_em = "A listar";
    for (const char* codigo : {"CL'1", "CL2"}) { // Esc
        cliente(codigo);
        ecra.utilizador_desfaz(); // and again
        EXPECT_TRUE(vazio());
        janela.desiste_em.clear();
        ecra.utilizador_desfaz();
        EXPECT_EQ(ecra.campo(0).Text + caixas() + gr(), "CL'1" + antes);
        janela.desiste_em = "A listar";
    }
}
