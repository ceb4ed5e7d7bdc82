#include "confirmacao/confirmacao.h"

#include "tests/apoio/empresa_teste.h"

#include <gmock/gmock.h>

using namespace orvex;
using namespace orvex::testes;
using confirmacao::Confirmacao;

namespace {

class Rasto : public confirmacao::Observador {
  public:
    std::string passos;
    bool falha_ao_confirmar = false;
    bool falha_a_compensar = false;
    bool recusa = false;

    void intencao(const confirmacao::Intencao& i) override {
        if (recusa) throw confirmacao::Recusada("O registo não abre.");
        passos += std::string(nome(i.fluxo)) + " " + i.artigos.at(0).Artigo + "\n";
    }
    void antes_do_erp(const confirmacao::PedidoERP& pedido) override {
        if (falha_a_compensar && pedido.accao == confirmacao::AccaoERP::anula)
            throw base::Falha("O registo falhou.");
        passos +=
            (pedido.accao == confirmacao::AccaoERP::cria ? "cria " : "anula ") + pedido.chave.texto() + "\n";
    }
    void depois_do_erp(const confirmacao::PedidoERP&, const confirmacao::RespostaERP& resposta) override {
        constexpr const char* desfechos[] = {"feito", "recusado", "sem resposta"};
        passos += std::string(desfechos[static_cast<int>(resposta.desfecho)]) + " " + resposta.chave.texto() +
                  " " + resposta.mensagem + "\n";
    }
    void antes_de_confirmar() override {
        passos += "confirma\n";
        if (falha_ao_confirmar) throw base::Falha("O registo está cheio.");
    }
    void feita() noexcept override { passos += "feita\n"; }
    void compensada(const confirmacao::Compensacao& fim) noexcept override {
        passos += "compensada " + std::to_string(fim.anulados.size()) + "/" +
                  std::to_string(fim.por_anular.size()) + "/" + std::to_string(fim.por_verificar.size()) +
                  " " + fim.erro + "\n";
    }
    void engolida(const std::string& texto) noexcept override { passos += "engolida " + texto + "\n"; }
};

// A surplus of 1.5 t of one item.
struct Confirmacoes : testing::Test {
    EmpresaTeste empresa;
    Diario diario;
    SessaoDeTeste BD{diario};
    SessaoERPGravada ERP{diario};
    Rasto rasto;
    base::FormatoRegional formato;
    std::string caixas;
    bool caixas_falham = false;
    Confirmacao confirmacao{{BD, ERP, rasto, formato, [this](const std::string& texto) {
                                 if (caixas_falham) throw base::Falha("A caixa não abriu.");
                                 caixas += texto + "\n";
                                 rasto.passos += "caixa\n";
                             }}};

    Confirmacoes() {
        empresa.com_ajustes_e_transferencias();
        if (!BD.Abre(ligacao(empresa.pasta())) ||
            !ERP.Liga({"E", "", "ana", "sqlite", empresa.pasta().string()}))
            throw std::runtime_error("the company did not open");
    }
    // The document of the surplus, and what comes after it; whether all of it was done.
    bool ajusta(const std::function<void()>& depois) {
        return executa([&] {
            confirmacao.Inicia({.fluxo = confirmacao::Fluxo::ajusta, .artigos = {{"BOB'1", m("1.5"), "OR"}}});
            confirmacao.CriaDocStock({.tipo_documento = "SB",
                                      .sector = "1",
                                      .serie = 1,
                                      .destino = "1",
                                      .data = "15-03-2019",
                                      .armazem = "OR",
                                      .artigos = {"", "BOB'1"},
                                      .textos_15 = {"", ""},
                                      .quantidades = {0, 1.5},
                                      .precos = {0, 100},
                                      .textos_18 = {"", ""}});
            depois();
        });
    }
    bool executa(const std::function<void()>& trabalho) {
        return confirmacao.executa(trabalho, [](const std::exception& falha) { return falha.what(); }) ==
               Confirmacao::Fim::acabou;
    }
    std::string em_vigor() { return empresa.linhas("select TpDoc, NNumDoc from DocGcCab where NVias<>-1"); }
};

} // namespace

TEST_F(Confirmacoes, ContamCadaPassoPelaSuaOrdem) {
    EXPECT_TRUE(ajusta([&] { confirmacao.Confirma(); }));
    EXPECT_EQ(rasto.passos, "ajusta BOB'1\ncria SB/1/0/2019\nfeito SB/1/1/2019 \nconfirma\nfeita\n");
}

TEST_F(Confirmacoes, ORegistoQueNaoSeAbreRecusaAntesDeComecar) {
    rasto.recusa = true;
    diario.recomeca();
    EXPECT_FALSE(ajusta([] {}));
    EXPECT_EQ(caixas, "O registo não abre.\n");
    EXPECT_EQ(diario.texto(), "\n"); // neither the database nor the ERP was asked for anything
}

TEST_F(Confirmacoes, UmSubstituidoQueFicouEmVigorENomeadoAntesDeEstarFeita) {
    EXPECT_TRUE(ajusta([&] {
        EXPECT_FALSE(confirmacao.AnulaSubstituido({2019, "SB", 1, 99}));
        confirmacao.Confirma();
        confirmacao.AvisaPorAnular();
    }));
    EXPECT_THAT(caixas, testing::HasSubstr("'SB/1/99/2019 '"));
    EXPECT_THAT(rasto.passos, testing::EndsWith("confirma\ncaixa\nfeita\n"));
}

TEST_F(Confirmacoes, OQueORegistoRecusaNaoSeFazENuncaDeixaUmDocumentoEmVigor) {
    rasto.falha_ao_confirmar = rasto.falha_a_compensar = true;
    EXPECT_FALSE(ajusta([&] { confirmacao.Confirma(); }));
    EXPECT_FALSE(BD.EmTransaccao());
    EXPECT_EQ(em_vigor(), "");
    EXPECT_THAT(rasto.passos, testing::EndsWith("engolida O registo falhou.\nfeito SB/1/1/2019 \ncompensada "
                                                "1/0/0 O registo está cheio.\n"));
}

TEST_F(Confirmacoes, UmaCaixaQueNaoAbreNaoDeixaUmDocumentoEmVigor) {
    caixas_falham = true;
    EXPECT_THROW(ajusta([] { throw base::Falha("Falhou."); }), base::Falha);
    EXPECT_EQ(em_vigor(), "");
    EXPECT_THAT(rasto.passos, testing::EndsWith("compensada 1/0/0 Falhou.\n"));
}

TEST_F(Confirmacoes, OTrabalhoQueAcabaSemTerGravadoFalhou) {
    EXPECT_TRUE(executa([] {})); // nothing began
    EXPECT_FALSE(ajusta([] {}));
    EXPECT_FALSE(BD.EmTransaccao());
    EXPECT_EQ(caixas, "Situação Anómala\n\rErro: A operação não chegou a ser gravada.\n");
}

TEST_F(Confirmacoes, UmDocumentoQueTalvezExistaDizSePeloNumeroPedidoOuPeloQueTem) {
    EXPECT_FALSE(executa([&] {
        confirmacao.Inicia({.fluxo = confirmacao::Fluxo::ajusta, .artigos = {{"BOB'1", m("3.5"), "OR"}}});
        // Created, but its number stays unknown.
        confirmacao.Cria({2019, "GR", 1},
                         {.conteudo = "BOB'1 1,5 t", .pede = [](const auto&) { return true; }});
        confirmacao.Cria({2019, "GR", 1, 7}, {.conteudo = "BOB'1 2 t", .pede = [](const auto&) -> bool {
                                                  throw base::Falha("Sem resposta.");
                                              }});
    }));
    EXPECT_EQ(caixas,
              "Situação Anómala\n\rErro: Sem resposta.\n"
              "Não se sabe se o ERP criou o documento GR/1 de 2019 (BOB'1 1,5 t). Procure-o no ERP e, "
              "se existir, anule-o.\n"
              "Não se sabe se o ERP criou o documento GR/1/7/2019 (BOB'1 2 t). Procure-o no ERP e, se "
              "existir, anule-o.\n");
}
