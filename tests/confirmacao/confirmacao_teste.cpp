#include "confirmacao/confirmacao.h"

#include "tests/adjust/ecra_ajuste.h"

#include <set>

using namespace orvex;
using namespace orvex::testes;
using confirmacao::Confirmacao;

namespace {

class Rasto : public confirmacao::Observador {
  public:
    std::string passos;
    std::set<std::string> falha_em; // "intencao", "anula", "confirma"
    std::function<void()> ao_confirmar;

    void intencao(const confirmacao::Intencao& i) override {
        if (falha_em.contains("intencao")) throw confirmacao::Recusada("O registo não abre.");
        passos += std::string(nome(i.fluxo)) + " " + i.artigos.at(0).Artigo + "\n";
    }
    void antes_do_erp(const confirmacao::PedidoERP& pedido) override {
        const std::string accao = pedido.accao == confirmacao::AccaoERP::cria ? "cria" : "anula";
        if (falha_em.contains(accao)) throw base::Falha("O registo falhou.");
        passos += accao + " " + pedido.chave.texto() + "\n";
    }
    void depois_do_erp(const confirmacao::PedidoERP&, const confirmacao::RespostaERP& resposta) override {
        constexpr const char* desfechos[] = {"feito", "recusado", "sem resposta"};
        passos += std::string(desfechos[static_cast<int>(resposta.desfecho)]) + " " + resposta.chave.texto() +
                  " " + resposta.mensagem + "\n";
    }
    void antes_de_confirmar() override {
        passos += "confirma\n";
        if (ao_confirmar) ao_confirmar();
        if (falha_em.contains("confirma")) throw base::Falha("O registo está cheio.");
    }
    void feita() noexcept override { passos += "feita\n"; }
    void compensada(const confirmacao::Compensacao& fim) noexcept override {
        passos += "compensada " + std::to_string(fim.anulados.size()) + "/" +
                  std::to_string(fim.por_anular.size()) + "/" + std::to_string(fim.por_verificar.size()) +
                  " " + fim.erro + "\n";
    }
    void engolida(const std::string& texto) noexcept override { passos += "engolida " + texto + "\n"; }
};

// A surplus of 0.1 t, ready to be confirmed on its screen; and a confirmation without one.
struct Confirmacoes : testing::Test, EcraAjuste {
    Rasto rasto;
    base::FormatoRegional formato;
    Confirmacao sem_ecra{
        {BD, ERP, rasto, formato, [this](const auto& texto) { rasto.passos += texto + "\n"; }}};

    Confirmacoes() : EcraAjuste(1) {
        observadores.junta(rasto);
        item("REEL'1");
        quantidade("5,1");
    }
    bool executa(const std::function<void()>& trabalho) {
        return sem_ecra.executa(trabalho, [](const std::exception& falha) { return falha.what(); }) ==
               Confirmacao::Fim::acabou;
    }
    void inicia() { sem_ecra.Inicia({.artigos = {{"REEL'1", m("3.5"), "OR"}}}); }
    std::string em_vigor() { return empresa.linhas("select TpDoc, NNumDoc from DocGcCab where NVias<>-1"); }
};

} // namespace

TEST_F(Confirmacoes, ContamCadaPassoPelaSuaOrdem) {
    confirma();
    EXPECT_EQ(rasto.passos, "ajusta REEL'1\ncria SB/1/0/2019\nfeito SB/1/1/2019 \nconfirma\nfeita\n");
}

TEST_F(Confirmacoes, ORegistoQueNaoSeAbreRecusaAntesDeComecarENadaSePerde) {
    rasto.falha_em = {"intencao"};
    diario.recomeca();
    confirma();
    EXPECT_THAT(caixas(), testing::EndsWith("|O registo não abre."));
    EXPECT_THAT(diario.linhas, testing::Each(testing::StartsWith("CONSULTA "))); // what the screen checks
    EXPECT_EQ(ecra.campo(3).Text, "5,1");
}

TEST_F(Confirmacoes, UmSubstituidoQueFicouEmVigorENomeadoAntesDeEstarFeita) {
    EXPECT_TRUE(executa([&] {
        inicia();
        EXPECT_FALSE(sem_ecra.AnulaSubstituido({2019, "SB", 1, 99}));
        sem_ecra.Confirma();
        sem_ecra.AvisaPorAnular();
    }));
    EXPECT_THAT(rasto.passos, testing::EndsWith("confirma\nOs documentos seguintes devem ser anulados "
                                                "manualmente - \n\r'SB/1/99/2019 '\nfeita\n"));
}

TEST_F(Confirmacoes, OQueORegistoRecusaNaoSeFazENuncaDeixaUmDocumentoEmVigor) {
    rasto.falha_em = {"confirma", "anula"};
    confirma();
    EXPECT_FALSE(BD.EmTransaccao());
    EXPECT_EQ(em_vigor(), "");
    EXPECT_THAT(rasto.passos, testing::EndsWith("engolida O registo falhou.\nfeito SB/1/1/2019 \ncompensada "
                                                "1/0/0 O registo está cheio.\n"));
}

TEST_F(Confirmacoes, UmaCaixaQueNaoAbreNaoDeixaUmDocumentoEmVigor) {
    rasto.falha_em = {"confirma"};
    rasto.ao_confirmar = [&] { janela.falha_em = "caixa"; };
    EXPECT_THROW(confirma(), base::Falha);
    EXPECT_EQ(em_vigor(), "");
    EXPECT_THAT(rasto.passos, testing::EndsWith("compensada 1/0/0 O registo está cheio.\n"));
}

TEST_F(Confirmacoes, OTrabalhoQueAcabaSemTerGravadoFalhou) {
    EXPECT_TRUE(executa([] {})); // nothing began
    EXPECT_FALSE(executa([&] { inicia(); }));
    EXPECT_FALSE(BD.EmTransaccao());
    EXPECT_THAT(rasto.passos, testing::HasSubstr("Erro: A operação não chegou a ser gravada.\n"));
}

TEST_F(Confirmacoes, UmDocumentoQueTalvezExistaDizSePeloNumeroPedidoOuPeloQueTem) {
    EXPECT_FALSE(executa([&] {
        inicia();
        // Created, but its number stays unknown.
        sem_ecra.Cria({2019, "GR", 1}, {.conteudo = "BOB'1 1,5 t", .pede = [](const auto&) { return true; }});
        sem_ecra.Cria({2019, "GR", 1, 7}, {.conteudo = "BOB'1 2 t", .pede = [](const auto&) -> bool {
                                               throw base::Falha("Sem resposta.");
                                           }});
    }));
    for (const char* nome : {"GR/1 de 2019 (BOB'1 1,5 t)", "GR/1/7/2019 (BOB'1 2 t)"})
        EXPECT_THAT(rasto.passos, testing::HasSubstr(std::string("Não se sabe se o ERP criou o documento ") +
                                                     nome + ". Procure-o no ERP e, se existir, anule-o.\n"));
}
