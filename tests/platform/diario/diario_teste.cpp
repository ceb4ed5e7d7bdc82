#include "platform/diario/diario.h"
#include "platform/diario/recuperacao.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/morte/disco_contado.h"

#include <zlib.h>

namespace fs = std::filesystem;
using namespace orvex;
using namespace orvex::platform::diario;
using DiarioDaMaquina = platform::diario::Diario;
using confirmacao::AccaoERP;

namespace {

struct NoDiario : testing::Test {
    testes::PastaTemporaria pasta;
    Gaveta gaveta{pasta.pasta() / "diários" / "empresa"};
    testes::EmpresaTeste empresa;
    fs::path outra_sessao = empresa.pasta();
    int resolvidos = 0;
    bool resolve = false;
    std::unique_ptr<DiarioDaMaquina> diario = novo();

    std::unique_ptr<DiarioDaMaquina> novo() {
        DiarioDaMaquina::Meios meios;
        meios.identidade = {"ORVEX", "ana", "PC'1"};
        meios.abre_sessao = [this] { return testes::abre_empresa(outra_sessao); };
        meios.resolve = [this](FicheiroDiario&) {
            ++resolvidos;
            return Tratamento{resolve, false};
        };
        meios.engole = [](const std::string&) {};
        return std::make_unique<DiarioDaMaquina>(gaveta, meios);
    }
    static confirmacao::Intencao intencao() {
        return {.fluxo = confirmacao::Fluxo::substitui_ajuste,
                .cria = {2019, "FA", 1},
                .anula = {{2019, "SB", 1, 3}},
                .Cliente = "CL'1 \"ção\"",
                .Data = {2019, 3, 15},
                .artigos = {{"BOB'1", testes::m("1.2345"), "OR"}, {"BOB2", testes::m("3"), "or"}}};
    }
    void chama_e_responde() {
        const confirmacao::PedidoERP pedido{AccaoERP::cria, {2019, "FA", 1}};
        diario->antes_do_erp(pedido);
        diario->depois_do_erp(pedido, {confirmacao::Desfecho::feito, {2019, "FA", 1, 900}, "Olá\r\n"});
    }
    fs::path unico() const { return gaveta.por_acabar().at(0); }
    std::size_t acabados() const {
        return static_cast<std::size_t>(
            std::count_if(fs::directory_iterator(gaveta.pasta()), fs::directory_iterator(),
                          [](const auto& entrada) { return entrada.path().extension() == ".fim"; }));
    }
};

// Its first line of that version, and summed anew.
std::string com_versao(char versao, std::string diario) {
    diario[diario.find("\"versao\":") + 9] = versao;
    const std::string passo = diario.substr(9, diario.find('\n') - 9);
    char soma[9];
    std::snprintf(soma, sizeof soma, "%08lx",
                  crc32_z(0, reinterpret_cast<const Bytef*>(passo.data()), passo.size()));
    return diario.replace(0, 8, soma);
}

} // namespace

TEST_F(NoDiario, OQueUmaConfirmacaoDizSerLeSeTalComoFoiDito) {
    testes::insere(empresa.outra(), "DocGcCab", {"Ano", "TpDoc", "Serie", "NNumDoc"},
                   {{2019, "FA", 1, 127}, {2019, "FA", 1, 41}, {2018, "FA", 1, 900}});
    diario->intencao(intencao());
    chama_e_responde();
    diario->antes_de_confirmar();
    const Passos lidos = gaveta.le(unico());
    EXPECT_NE(linha_da_intencao({}, {.Cliente = "\xff"}), ""); // as another program may have left it
    EXPECT_EQ(lidos.cabecalho.maquina, "PC'1");
    EXPECT_EQ(lidos.cabecalho.ultimo_numero, 127); // of the invoices there are
    EXPECT_EQ(lidos.intencao.fluxo, intencao().fluxo);
    EXPECT_EQ(lidos.intencao.Cliente, intencao().Cliente);
    EXPECT_EQ(lidos.intencao.Data, intencao().Data);
    EXPECT_EQ(lidos.intencao.anula, intencao().anula);
    ASSERT_EQ(lidos.intencao.artigos.size(), 2);
    EXPECT_EQ(lidos.intencao.artigos[0].Quantidade, testes::m("1.2345"));
    EXPECT_EQ(lidos.intencao.artigos[1].Armazem, "or");
    ASSERT_EQ(lidos.chamadas.size(), 1);
    EXPECT_EQ(lidos.chamadas[0].resposta->chave.NossoNoDocumento, 900);
    EXPECT_TRUE(lidos.a_confirmar);
    EXPECT_FALSE(lidos.fim);
}

TEST_F(NoDiario, QuemViveTemOSeuFicheiroEQuemMorreuNao) {
    diario->intencao(intencao());
    EXPECT_EQ(gaveta.tranca(unico()), nullptr);
    EXPECT_TRUE(diario->a_meio());
    diario.reset();
    EXPECT_NE(gaveta.tranca(unico()), nullptr);
    EXPECT_EQ(gaveta.tranca(gaveta.pasta() / "outro.diario"),
              nullptr); // settled by another program meanwhile
}

TEST_F(NoDiario, UmaUltimaLinhaRasgadaEComoSeNaoFosseComecada) {
    diario->intencao(intencao());
    chama_e_responde();
    const fs::path ficheiro = unico();
    diario.reset();
    const auto inteiro = fs::file_size(ficheiro);
    for (auto bytes = inteiro - 1;; --bytes) {
        SCOPED_TRACE(bytes);
        fs::resize_file(ficheiro, bytes);
        const Passos lidos = gaveta.le(ficheiro);
        EXPECT_EQ(lidos.cabecalho.empresa, "ORVEX");
        if (lidos.chamadas.empty()) break;
        EXPECT_FALSE(lidos.chamadas[0].resposta);
    }
    // What is written next stands on its own.
    gaveta.tranca(ficheiro)->escreve(linha_do_encontrado({2019, "FA", 1, 900}), Descarga::nao);
    EXPECT_EQ(gaveta.le(ficheiro).encontrado->NossoNoDocumento, 900);
}

TEST_F(NoDiario, UmFicheiroDanificadoOuMaisRecenteEDitoEFicaComoEsta) {
    diario->intencao(intencao());
    chama_e_responde();
    const fs::path ficheiro = unico();
    diario.reset();
    const std::string inteiro = testes::conteudo_de(ficheiro);
    ASSERT_EQ(com_versao('1', inteiro), inteiro);
    std::vector<std::string> ilegiveis{com_versao('2', inteiro)};
    for (const std::size_t onde : {std::size_t{0}, inteiro.find("ORVEX"), inteiro.find("chamada")})
        ilegiveis.push_back(std::string(inteiro).replace(onde, 3, "zzz"));
    for (const std::string& ilegivel : ilegiveis) {
        std::ofstream(ficheiro, std::ios::binary) << ilegivel;
        EXPECT_THROW(gaveta.tranca(ficheiro)->passos(), base::Falha);
        EXPECT_EQ(testes::conteudo_de(ficheiro), ilegivel);
    }
    EXPECT_EQ(gaveta.por_acabar().size(), 1);
}

TEST_F(NoDiario, UmDiscoCheioNaoDeixaMeioFicheiroNemMeiaLinhaNemOutraDepoisDela) {
    int faltam = 0;
    testes::DiscoContado disco(
        [&] {
            if (faltam-- == 0) throw base::Falha("O disco está cheio.");
        },
        true);
    Gaveta cheia(gaveta.pasta(), {}, disco);
    const std::string primeira = linha_da_intencao({.empresa = "ORVEX"}, intencao());
    std::unique_ptr<FicheiroDiario> ficheiro;
    for (int passo = 0; ficheiro == nullptr; ++passo) {
        faltam = passo;
        try {
            ficheiro = cheia.cria(primeira);
        } catch (const base::Falha&) {
            EXPECT_TRUE(!fs::exists(gaveta.pasta()) || fs::is_empty(gaveta.pasta())) << passo;
        }
    }
    faltam = 1; // in the middle of the line
    EXPECT_THROW(ficheiro->escreve(linha_de_confirmar(), Descarga::nao), base::Falha);
    EXPECT_THROW(ficheiro->escreve(linha_do_fim(Resultado::feita), Descarga::nao), base::Falha);
    ficheiro.reset();
    EXPECT_EQ(testes::conteudo_de(unico()), primeira);
}

TEST_F(NoDiario, UmaPastaQueNaoSeAlcancaNaoEUmaPastaVazia) {
    const fs::path longe = pasta.pasta() / "partilha", ficheiro = pasta.escreve("ficheiro", "");
    for (Gaveta esta : {Gaveta(longe / "empresa", longe), Gaveta(""), Gaveta(ficheiro)}) {
        EXPECT_THROW(esta.por_acabar(), base::Falha) << esta.pasta();
        EXPECT_THROW(esta.cria("x"), base::Falha) << esta.pasta();
    }
    EXPECT_FALSE(fs::exists(longe));
}

TEST_F(NoDiario, UmAcabadoQueFicouComONomeAntigoNaoSeVeOutraVez) {
    diario->intencao(intencao());
    diario.reset();
    gaveta.tranca(unico())->escreve(linha_do_fim(Resultado::feita), Descarga::nao);
    EXPECT_EQ(gaveta.tranca(unico()), nullptr);
    EXPECT_EQ(acabados(), 1);
}

TEST_F(NoDiario, UmDiarioQueNaoSePodeEscreverRecusaAConfirmacao) {
    pasta.escreve("diários", ""); // a file where the folder should be
    EXPECT_THROW(diario->intencao(intencao()), confirmacao::Recusada);
    EXPECT_FALSE(diario->a_meio());
    fs::remove(pasta.pasta() / "diários");
    outra_sessao = pasta.pasta(); // where there is no company
    diario = novo();
    EXPECT_THROW(diario->intencao(intencao()), confirmacao::Recusada);
    EXPECT_EQ(gaveta.por_acabar().size(), 0);
}

TEST_F(NoDiario, UmaFalhaAssentaDepoisDeRelidaOuDita) {
    const startup::ChaveDocumento inexistente{2019, "FA", 1, 900};
    const std::pair<confirmacao::Compensacao, bool> fins[] = {
        {{.erro = "Falhou.", .por_anular = {inexistente}}, true},
        {{.erro = "Falhou.", .anulados = {inexistente}}, false}, // the ERP said so, and it is not so
        {{.erro = "Falhou.", .avisado = false}, false},
        {{.erro = "Falhou.", .por_saber = true}, false},
        {{.erro = "Falhou.", .por_verificar = {"Procure-o."}}, false},
    };
    std::size_t esperados = 0;
    for (const auto& [fim, assente] : fins) {
        diario->intencao(intencao());
        diario->compensada(fim);
        EXPECT_FALSE(diario->a_meio());
        EXPECT_EQ(acabados(), esperados += assente ? 1 : 0);
    }
    EXPECT_EQ(gaveta.por_acabar().size(), 4);
    resolvidos = 0;
    resolve = true;
    diario->intencao(intencao());
    EXPECT_EQ(resolvidos, 4);
    diario->feita();
    EXPECT_EQ(acabados(), 2); // the four were for the one who resolves them to finish
}

TEST_F(NoDiario, OQueAssentouGuardaSeNoventaDias) {
    diario->intencao(intencao());
    diario->feita();
    const fs::path acabado = fs::directory_iterator(gaveta.pasta())->path();
    for (const int dias : {89, 91}) {
        fs::last_write_time(acabado, fs::file_time_type::clock::now() - std::chrono::days(dias));
        gaveta.arruma();
        EXPECT_EQ(fs::exists(acabado), dias < 90);
    }
    diario->intencao(intencao()); // what did not is kept for ever
    diario.reset();
    fs::last_write_time(unico(), fs::file_time_type::clock::now() - std::chrono::days(900));
    gaveta.arruma();
    EXPECT_EQ(gaveta.por_acabar().size(), 1);
}
