// What a recovery takes for the document of a journal, and how it makes sure before it acts.
#include "platform/diario/recuperacao.h"
#include "tests/ordem/programas.h"

#include <gmock/gmock.h>

using namespace orvex;
using namespace orvex::testes;
using confirmacao::AccaoERP;
using confirmacao::Fluxo;
using testing::HasSubstr;

namespace {

const startup::ChaveDocumento guia{2019, "GR", 1, 1}, nova{2019, "GR", 1};
constexpr int ultimo_numero = 20;

struct Recuperacoes : testing::Test, platform::diario::Atendimento {
    EmpresaTeste empresa{empresa_disputada(Linha::aberta)};
    platform::diario::Gaveta gaveta{empresa.pasta() / "diario"};
    Diario passos;
    SessaoDeTeste BD{passos};
    platform::erp::SessaoERPEmbebida gERP;
    base::FormatoRegional formato;
    std::chrono::sys_seconds agora{};
    std::string ditos;
    bool aceite = false;
    std::function<void()> enquanto_pensa = [] {};

    Recuperacoes() {
        BD.Abre(ligacao(empresa.pasta()));
        liga(gERP, empresa);
    }
    bool diz(const std::string& texto) override {
        ditos += texto + "\n";
        return true;
    }
    bool aceita(const std::string& texto, const char*, const char*) override {
        diz(texto);
        enquanto_pensa();
        return aceite;
    }

    // Of a program that died after it asked the ERP for this, or before.
    void morreu(const confirmacao::Intencao& intencao, std::optional<confirmacao::PedidoERP> pedido,
                bool a_confirmar = false) {
        const auto ficheiro = gaveta.cria(platform::diario::linha_da_intencao(
            {.ultimo_numero = ultimo_numero, .ultimo_registo = ultimo_registo()}, intencao));
        if (pedido)
            ficheiro->escreve(platform::diario::linha_da_chamada(*pedido), platform::diario::Descarga::sim);
        if (a_confirmar)
            ficheiro->escreve(platform::diario::linha_de_confirmar(), platform::diario::Descarga::sim);
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

    // Gives what the user was told.
    std::string recupera() {
        ditos.clear();
        platform::diario::Recuperacao(gaveta, {.BD = BD,
                                               .gERP = gERP,
                                               .atendimento = *this,
                                               .formato = formato,
                                               .empresa = "",
                                               .guias =
                                                   [] {
                                                       return platform::diario::DocumentosDeGuias{"1", "GV"};
                                                   },
                                               .observador = confirmacao::sem_observador(),
                                               .agora = [this] { return agora; }})
            .trata_tudo();
        return ditos;
    }
    bool assente() { return gaveta.por_acabar().empty(); }
};

} // namespace

TEST_F(Recuperacoes, SoUmDocumentoIgualAoPedidoMaisNovoEForaDoLivroPodeSerODele) {
    morreu_a_emitir();
    no_erp(ultimo_numero);
    no_erp(21, "CL'1", "1.5", 14);
    no_erp(22, "CL2");
    no_erp(23, "CL'1", "1.6");
    no_erp(24);
    no_livro(24);
    no_erp(26);
    EXPECT_THAT(recupera(), HasSubstr("em vigor o documento GR/1/26/2019,"));
    EXPECT_EQ(estado(26), "0"); // nobody said that it should go
    aceite = true;
    EXPECT_THAT(recupera(), HasSubstr("O documento GR/1/26/2019 ficou anulado no ERP."));
    EXPECT_EQ(estado(26), "-1");
    EXPECT_TRUE(assente()); // its key is known by now: there is nothing to wait for
}

TEST_F(Recuperacoes, OQueMudaEnquantoOUtilizadorPensaNaoSeAnula) {
    morreu_a_emitir();
    no_erp(26);
    aceite = true;
    enquanto_pensa = [this] { no_livro(26); };
    recupera();
    EXPECT_EQ(estado(26), "0");
}

TEST_F(Recuperacoes, SemNadaFechaSeASegundaVistaDezMinutosDepois) {
    morreu_a_emitir();
    using std::chrono::minutes;
    for (const auto& [hora, fechado] : {std::pair{0, false}, {9, false}, {10, true}}) {
        agora = std::chrono::sys_seconds(minutes(hora));
        EXPECT_EQ(recupera(), "");
        EXPECT_EQ(assente(), fechado) << hora;
    }
}

TEST_F(Recuperacoes, UmaAnulacaoSoEDaOperacaoQueAPediuECompletaSeComATranca) {
    const confirmacao::Intencao intencao{.fluxo = Fluxo::anula_guia,
                                         .anula = {guia},
                                         .Cliente = "CL'1",
                                         .artigos = {{"REEL'1", m("2.5"), "CL"}}};
    ASSERT_TRUE(gERP.AnulaDocumento(1, guia).sucesso);
    morreu(intencao, {});
    EXPECT_EQ(recupera(), "");
    morreu(intencao, {{AccaoERP::anula, guia}});
    aceite = true;
    enquanto_pensa = [this] { poe_em_vigor(0); };
    recupera();
    EXPECT_EQ(empresa.linhas("select Qtd from xel_ORVEX_MOV where TpDoc='FA'"), "1.5");
    poe_em_vigor(startup::documento_anulado);
    enquanto_pensa = [] {};
    EXPECT_THAT(recupera(), HasSubstr("continua nos movimentos da ORVEX"));
    EXPECT_EQ(empresa.linhas("select Qtd from xel_ORVEX_MOV where TpDoc='FA'"), "4");
    // What is read to be acted on is read with the lock.
    for (std::size_t n = 0; n < passos.linhas.size(); ++n)
        EXPECT_TRUE(passos.linhas[n] != "INICIA" || passos.linhas.at(n + 1) == "TRANCA") << n;
}

// Its rows carry no number: those that an earlier one left look the same.
TEST_F(Recuperacoes, UmaTransferenciaSaoAsDuasLinhasASeguirAoQueHaviaSeChegouAoCommit) {
    const auto linhas = [this](const char* saida, const char* destino, const char* entrada) {
        no_livro(0, "CL'1", saida);
        no_livro(0, destino, entrada);
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
    EXPECT_EQ(recupera(), "");
    EXPECT_EQ(gaveta.por_acabar().size(), 3);
    morreu_a_transferir(true);
    linhas("-6.5", "CL2", "6.5");
    EXPECT_THAT(recupera(), HasSubstr("ficou gravada por inteiro"));
    EXPECT_EQ(gaveta.por_acabar().size(), 3);
}
