// What nobody died for: the journal that cannot be written, two who recover at once, a user who mends by
// hand, a commit of which the living program does not know; and what a recovery takes for the document of a
// journal.
#include "platform/diario/factos.h"
#include "tests/morte/perito.h"
#include "tests/ordem/erp_teimoso.h"
#include "tools/ensaio/base_ensaio.h"

using namespace orvex;
using namespace orvex::testes;
using confirmacao::AccaoERP;
using confirmacao::Fluxo;

namespace {

namespace diario = platform::diario;
using DeCadaFluxo = testing::TestWithParam<Fluxo>;

// Alive, its COMMIT done and not answered.
struct SemSaber : Vida {
    explicit SemSaber(Fluxo fluxo) : Vida(fluxo) {
        gravacao.do_commit = Diario::Maneira::faz_e_lanca;
        programa->prime();
        EXPECT_THAT(programa->janela.retira_caixas(), HasSubstr("Não se sabe"));
        gravacao.recomeca();
    }
};

const startup::ChaveDocumento guia{2019, "GR", 1, 1}, nova{2019, "GR", 1};
constexpr int ultimo_numero = 20;

struct Recuperacoes : testing::Test {
    EmpresaTeste empresa{empresa_disputada(Linha::aberta)};
    diario::Gaveta gaveta{empresa.pasta() / "diario"};
    Arranque arranque{empresa.pasta(), gaveta, false};

    // Of a program that died after it asked the ERP for this, or before.
    void morreu(const confirmacao::Intencao& intencao, std::optional<confirmacao::PedidoERP> pedido,
                bool a_confirmar = false, const char* da_empresa = "E") {
        const auto ficheiro = gaveta.cria(diario::linha_da_intencao(
            {.empresa = da_empresa, .ultimo_numero = ultimo_numero, .ultimo_registo = ultimo_registo()},
            intencao));
        if (pedido) ficheiro->escreve(diario::linha_da_chamada(*pedido), diario::Descarga::sim);
        if (a_confirmar) ficheiro->escreve(diario::linha_de_confirmar(), diario::Descarga::sim);
    }
    void morreu_a_emitir() {
        morreu({.fluxo = Fluxo::emite_guia,
                .cria = nova,
                .Cliente = "CL'1",
                .Data = {2019, 3, 15},
                .artigos = {{"REEL'1", m("1.5"), "CL"}}},
               {{AccaoERP::cria, nova}});
    }
    std::int64_t ultimo_registo() {
        return std::stoll(empresa.linhas("select top 1 Registo from xel_ORVEX order by Registo desc"));
    }
    void no_erp(int numero, const char* cliente = "CL'1", const char* quantidade = "1.5", int dia = 15) {
        insere(empresa.outra(), "DocGcCab", {"Ano", "TpDoc", "Serie", "NNumDoc", "Terceiro", "Data", "NVias"},
               {{2019, "GR", 1, numero, cliente, base::DataHora{2019, 3, dia}, 0}});
        insere(empresa.outra(), "DocGcLin",
               {"Ano", "TpDocum", "Serie", "NNumDoc", "NumLinha", "Artigo", "Quant", "Armazem"},
               {{2019, "GR", 1, numero, 1, "REEL'1", m(quantidade), "CL"}});
    }
    void no_livro(int numero, const char* cliente = "CL'1", const char* quantidade = "-1.5") {
        insere(empresa.outra(), "xel_ORVEX",
               {"NumSerie", "Cliente", "CliFinal", "Quantidade", "Ano", "TpDoc", "Serie", "NNumDoc"},
               {{"REEL'1", cliente, cliente, m(quantidade), 2019, "GR", 1, numero}});
    }
    // In the ERP, by hand.
    void poe_em_vigor(int NVias) {
        const auto cabecalho =
            empresa.outra().AbreActualizavel("Select * from DocGcCab where TpDoc='GR' and NNumDoc=1");
        cabecalho->define("NVias", NVias);
        cabecalho->actualiza();
    }
    std::string estado(int numero) {
        return empresa.linhas("select NVias from DocGcCab where TpDoc='GR' and NNumDoc=" +
                              std::to_string(numero));
    }
    std::size_t por_acabar() { return gaveta.por_acabar().size(); }
};

std::string nome_do_fluxo(const testing::TestParamInfo<Fluxo>& fluxo) { return nome(fluxo.param); }

} // namespace

TEST_P(DeCadaFluxo, SemDiarioNadaSeFazOEcraFicaEDepoisConfirmaSe) {
    Vida outra(GetParam());
    outra.programa->prime();
    const PastaTemporaria pasta;
    Vida vida(GetParam(), pasta.escreve("diarios", "")); // a file where the folder should be
    const std::string antes = vida.empresa.livro(), ecra = vida.programa->retrato();
    vida.programa->prime();
    EXPECT_THAT(vida.programa->janela.retira_caixas(), HasSubstr("Nada foi feito"));
    EXPECT_EQ(vida.programa->retrato(), ecra);
    EXPECT_EQ(vida.empresa.livro(), antes);
    EXPECT_FALSE(vida.programa->BD().EmTransaccao());
    std::filesystem::remove(pasta.pasta() / "diarios");
    vida.programa->prime();
    EXPECT_THAT(vida.programa->janela.retira_caixas(), Not(HasSubstr("Situação Anómala")));
    EXPECT_EQ(vida.empresa.livro(), outra.empresa.livro());
}
INSTANTIATE_TEST_SUITE_P(Recuperacao, DeCadaFluxo, testing::ValuesIn(confirmacao::fluxos), nome_do_fluxo);

struct QueCria : DeCadaFluxo {};

TEST_P(QueCria, UmDocumentoAnuladoAMaoDepoisDeGravadoSaiDoLivroOuEListado) {
    Vida limpa(GetParam());
    SemSaber vida(GetParam());
    const auto passos = vida.gaveta.le(vida.gaveta.por_acabar().at(0));
    EXPECT_TRUE(vida.programa->ERP().AnulaDocumento(1, passos.chamadas.back().resposta->chave).sucesso);
    vida.programa.reset();
    const std::string gravado = vida.empresa.livro();
    Arranque arranque(vida.empresa.pasta(), vida.gaveta, true);
    const bool listado = arranque.recupera(0).find("peça a correcção") != std::string::npos;
    EXPECT_EQ(listado, GetParam() == Fluxo::transfere_para_orvex);
    EXPECT_EQ(vida.empresa.livro(), listado ? gravado : limpa.empresa.livro());
    EXPECT_EQ(vida.gaveta.por_acabar().size(), listado ? 1 : 0);
}
INSTANTIATE_TEST_SUITE_P(Recuperacao, QueCria,
                         testing::Values(Fluxo::emite_guia, Fluxo::devolve, Fluxo::ajusta,
                                         Fluxo::transfere_para_orvex),
                         nome_do_fluxo);

TEST(Recuperacao, DoisQueRecuperamNuncaTratamOMesmo) {
    SemSaber vida(Fluxo::emite_guia);
    vida.programa.reset();
    Arranque um(vida.empresa.pasta(), vida.gaveta, true), outro(vida.empresa.pasta(), vida.gaveta, true);
    int vezes = 0;
    um.com_a_caixa_aberta = [&](auto&) {
        ++vezes;
        EXPECT_EQ(outro.recupera(0), "");
    };
    EXPECT_THAT(um.recupera(0), HasSubstr("gravada por inteiro"));
    EXPECT_EQ(vezes, 1);
    EXPECT_EQ(outro.recupera(0), "");
    EXPECT_EQ(vida.gaveta.por_acabar().size(), 0);
}

TEST(Recuperacao, OQueNaoSeSabiaPeloFioAssentaNaConfirmacaoSeguinteDoMesmoPrograma) {
    setenv(ensaio::variavel_motor, "fio", 1);
    for (const bool ficou : {true, false}) {
        SCOPED_TRACE(ficou);
        Vida vida(Fluxo::anula_guia); // no row tells what became of it
        vida.gravacao.espia = [&](const std::string& linha) {
            using Efeito = Avaria::Efeito;
            if (linha == "CONFIRMA")
                dynamic_cast<SessaoDeTeste&>(vida.programa->BD())
                    .servidor()
                    .avaria_no(1, {.efeito = ficou ? Efeito::corta_depois : Efeito::corta});
        };
        vida.programa->prime();
        EXPECT_THAT(vida.programa->janela.retira_caixas(),
                    HasSubstr("Não se sabe se o que estava a ser gravado ficou"));
        EXPECT_EQ(vida.gaveta.por_acabar().size(), 1);

        Arranque nesta(vida.empresa.pasta(), vida.gaveta, true);
        vida.resolve = [&](auto& ficheiro) { return nesta.recuperacao().trata(ficheiro); };
        const confirmacao::Intencao seguinte{.fluxo = Fluxo::ajusta, .cria = {2019, "QB", 2}};
        EXPECT_THROW(vida.programa->diario().intencao(seguinte), confirmacao::Recusada);
        EXPECT_THAT(nesta.caixas, HasSubstr("gravada por inteiro"));
        EXPECT_EQ(nesta.perguntas, ficou ? 0 : 1); // whether to complete it
        vida.programa->diario().intencao(seguinte);
        vida.programa->diario().feita();
        EXPECT_EQ(vida.gaveta.por_acabar().size(), 0);
    }
    unsetenv(ensaio::variavel_motor);
}

TEST(Recuperacao, UmDocumentoConheceSePelaChaveQueOErpRecebeuOuDeu) {
    EmpresaTeste empresa;
    const confirmacao::PedidoERP pedido{AccaoERP::anula, {2019, "FA", 1, 123}};
    const auto factos = diario::le_factos(
        empresa.outra(), {.intencao = {.fluxo = Fluxo::anula_guia, .anula = {{2019, "fa", 1, 123}}},
                          .chamadas = {{.pedido = pedido}}});
    ASSERT_EQ(factos.anulados.size(), 1);
    EXPECT_TRUE(factos.anulados.at(0).no_livro);
    using confirmacao::Desfecho;
    for (const auto& [desfecho, numero, respondido, dado] : {std::tuple{Desfecho::feito, 7, 7, true},
                                                             {Desfecho::feito, 0, 0, false},
                                                             {Desfecho::recusado, 7, 7, false},
                                                             {Desfecho::sem_resposta, 0, 7, true}}) {
        const diario::Chamada chamada{{AccaoERP::cria, {2019, "GR", 1, numero}},
                                      {{desfecho, {2019, "GR", 1, respondido}, ""}}};
        EXPECT_EQ(diario::le_factos(empresa.outra(), {.chamadas = {chamada}}).criado.has_value(), dado)
            << numero << "/" << respondido;
    }
}

TEST_F(Recuperacoes, SoUmDocumentoIgualAoPedidoMaisNovoEForaDoLivroPodeSerODele) {
    morreu_a_emitir();
    no_erp(ultimo_numero);
    no_erp(21, "CL'1", "1.5", 14);
    no_erp(22, "CL2");
    no_erp(23, "CL'1", "1.6");
    no_erp(24);
    no_livro(24);
    no_erp(25);
    empresa.outra().Executa("update DocGcCab set NVias=-1 where NNumDoc=25");
    no_erp(26, "cl'1 ", "1.5004");
    EXPECT_THAT(arranque.recupera(0), HasSubstr("em vigor o documento GR/1/26/2019,"));
    EXPECT_EQ(estado(26), "0"); // nobody said that it should go
    for (const auto& [manha, dito] :
         {std::pair{Manha::diz_que_anula, "O ERP não anulou o documento GR/1/26/2019."},
          {Manha::recusa_e_anula, "O documento GR/1/26/2019 ficou anulado no ERP."}}) {
        Arranque aceite(empresa.pasta(), gaveta, true, std::make_shared<ErpTeimoso>(manha, empresa.pasta()));
        EXPECT_THAT(aceite.recupera(0), HasSubstr(dito));
        EXPECT_EQ(aceite.perguntas, 1);
    }
    EXPECT_EQ(estado(26), "-1");
    EXPECT_EQ(por_acabar(), 0); // its key is known by now: there is nothing to wait for
}

TEST_F(Recuperacoes, DeVariosQuePodemSerODeleNenhumSeOfereceETodosSeDizem) {
    morreu_a_emitir();
    no_erp(21);
    no_erp(22);
    arranque.aceita_tudo = true;
    for (const int minutos : {0, 11}) {
        EXPECT_THAT(arranque.recupera(minutos), HasSubstr("procure-os no ERP"));
        EXPECT_THAT(arranque.caixas, HasSubstr("GR/1/21/2019"));
        EXPECT_THAT(arranque.caixas, HasSubstr("GR/1/22/2019"));
    }
    EXPECT_EQ(arranque.perguntas, 0);
    EXPECT_EQ(estado(21) + estado(22), "00");
    EXPECT_EQ(por_acabar(), 1);
}

TEST_F(Recuperacoes, OQueNaoSeLeOuEDeOutraEmpresaDizSeEFicaENaoPrendeOsOutros) {
    morreu_a_emitir();
    std::ofstream(gaveta.pasta() / "0.diario") << "x";
    no_erp(26);
    arranque.aceita_tudo = true;
    EXPECT_THAT(arranque.recupera(0), AllOf(HasSubstr("GR/1/26/2019 ficou anulado"), HasSubstr("0.diario")));
    EXPECT_EQ(por_acabar(), 1);
    morreu({.fluxo = Fluxo::emite_guia}, {}, false, "OUTRA");
    EXPECT_THAT(arranque.recupera(11), HasSubstr("é da empresa OUTRA"));
    EXPECT_EQ(por_acabar(), 2);
}

TEST(Recuperacao, OQueNaoFoiLidoPorqueOProgramaAcabaVoltaASerDito) {
    SemSaber vida(Fluxo::emite_guia);
    vida.programa.reset();
    Arranque esta(vida.empresa.pasta(), vida.gaveta, false);
    for (const bool leu : {false, true}) {
        esta.le = leu;
        EXPECT_THAT(esta.recupera(0), HasSubstr("gravada por inteiro"));
        EXPECT_EQ(vida.gaveta.por_acabar().empty(), leu);
    }
}

TEST_F(Recuperacoes, UmaGuiaAnuladaDeQueSeDevolveuSoSeCompletaAMao) {
    const std::string linha = empresa.linhas("select NumLinha from xel_ORVEX_MOV where TpDoc='GR'");
    ASSERT_TRUE(arranque.ERP().AnulaDocumento(1, guia).sucesso);
    morreu({.fluxo = Fluxo::anula_guia, .anula = {guia}}, {{AccaoERP::anula, guia}});
    arranque.aceita_tudo = true;
    arranque.com_a_caixa_aberta = [this](auto&) { // holds up nobody
        empresa.outra().IniciaTransaccao();
        EXPECT_NO_THROW(empresa.outra().Tranca());
        empresa.outra().AnulaTransaccao();
    };
    // Keys repeat the series as it is written; that of a note of another one is its own.
    for (int n = 0; const auto& [escrita, na_chave] : {std::pair{"01", "01"}, {"2", "1"}}) {
        insere(empresa.outra(), "xel_ORVEX_MOV", {"Ano", "TpDoc", "NumDoc", "SerieDoc", "NumLinha", "Origem"},
               {{2019, "GV", 1, 1, ++n, std::string("2019/GR/") + na_chave + "/1/" + linha + "/00000"}});
        arranque.serie_das_guias = escrita;
        EXPECT_THAT(arranque.recupera(0), HasSubstr("já foi devolvido")) << escrita;
    }
    EXPECT_EQ(empresa.linhas("select Qtd from xel_ORVEX_MOV where TpDoc='FA'"), "1.5");
    EXPECT_EQ(por_acabar(), 1);
    morreu_a_emitir(); // read in a transaction of its own
    no_erp(26);
    EXPECT_THAT(arranque.recupera(11), HasSubstr("GR/1/26/2019 ficou anulado"));
}

TEST_F(Recuperacoes, OQueMudaEnquantoOUtilizadorPensaNaoSeAnula) {
    morreu_a_emitir();
    no_erp(26);
    arranque.aceita_tudo = true;
    arranque.com_a_caixa_aberta = [this](auto&) { no_livro(26); };
    arranque.recupera(0);
    EXPECT_EQ(estado(26), "0");
}

TEST_F(Recuperacoes, SemNadaFechaSeASegundaVistaDezMinutosDepois) {
    morreu_a_emitir();
    for (const auto& [minutos, fechado] : {std::pair{0, false}, {9, false}, {10, true}}) {
        EXPECT_EQ(arranque.recupera(minutos), "");
        EXPECT_EQ(por_acabar() == 0, fechado) << minutos;
    }
}

TEST_F(Recuperacoes, UmaAnulacaoSoEDaOperacaoQueAPediuECompletaSeComATranca) {
    const confirmacao::Intencao intencao{.fluxo = Fluxo::anula_guia,
                                         .anula = {guia},
                                         .Cliente = "CL'1",
                                         .artigos = {{"REEL'1", m("2.5"), "CL"}}};
    ASSERT_TRUE(arranque.ERP().AnulaDocumento(1, guia).sucesso);
    morreu(intencao, {});
    EXPECT_EQ(arranque.recupera(0), "");
    morreu(intencao, {{AccaoERP::anula, guia}});
    arranque.aceita_tudo = true;
    arranque.com_a_caixa_aberta = [this](auto&) { poe_em_vigor(0); };
    arranque.recupera(0);
    EXPECT_EQ(empresa.linhas("select Qtd from xel_ORVEX_MOV where TpDoc='FA'"), "1.5");
    poe_em_vigor(startup::documento_anulado);
    arranque.com_a_caixa_aberta = [](auto&) {};
    EXPECT_THAT(arranque.recupera(0), HasSubstr("continua nos movimentos da ORVEX"));
    EXPECT_EQ(empresa.linhas("select Qtd from xel_ORVEX_MOV where TpDoc='FA'"), "4");
    // What is read to be acted on is read with the lock.
    const auto& passos = arranque.gravacao.linhas;
    for (std::size_t n = 0; n < passos.size(); ++n)
        EXPECT_TRUE(passos[n] != "INICIA" || passos.at(n + 1) == "TRANCA") << n;
}

// Its rows carry no number: those that an earlier one left look the same.
TEST_F(Recuperacoes, UmaTransferenciaSaoAsDuasLinhasASeguirAoQueHaviaSeChegouAoCommit) {
    const auto linhas = [this](const char* saida, const char* destino, const char* entrada, int numero = 0) {
        no_livro(numero, "CL'1", saida);
        no_livro(numero, destino, entrada);
    };
    const auto morreu_a_transferir = [this](bool a_confirmar) {
        morreu({.fluxo = Fluxo::transfere_para_cliente,
                .Cliente = "CL2",
                .artigos = {{"REEL'1", m("6.5"), "CL"}}},
               {}, a_confirmar);
    };
    linhas("-6.5", "CL2", "6.5"); // of before
    morreu_a_transferir(true);
    linhas("-6", "CL2", "6");
    linhas("-6.5", "CL2", "6.5"); // repeated since
    morreu_a_transferir(true);
    linhas("-6.5", "CL3", "6.5");
    morreu_a_transferir(false); // by another one
    linhas("-6.5", "CL2", "6.5");
    morreu_a_transferir(true);
    linhas("-6.5", "CL2", "6.5", 7); // of a document
    EXPECT_EQ(arranque.recupera(0), "");
    EXPECT_EQ(por_acabar(), 4);
    morreu_a_transferir(true);
    linhas("-6.5", "CL2", "6.5");
    EXPECT_THAT(arranque.recupera(0), HasSubstr("ficou gravada por inteiro"));
    EXPECT_EQ(por_acabar(), 4);
}
