// The operation log: what is in it, what is not, and that nothing is lost of it or stopped by it.
#include "platform/operacoes/registo_operacoes.h"
#include "platform/operacoes/sistema.h"
#include "startup/construtor_ligacao.h"
#include "tests/apoio/empresa_teste.h"

#include <regex>
#include <set>
#include <thread>

namespace orvex::testes {
namespace {

using namespace platform::operacoes;
using confirmacao::Desfecho;

struct Registo : testing::Test {
    PastaTemporaria pasta;
    std::vector<std::string> ditos;
    RegistoOperacoes registo = em(pasta.pasta());

    RegistoOperacoes em(const std::filesystem::path& onde) {
        return {onde, [this](const std::string& texto) { ditos.push_back(texto); }};
    }
    // All lines, the oldest first.
    std::string tudo() const {
        std::string texto;
        for (int i = FicheiroRotativo::ficheiros; i >= 0; --i)
            texto += conteudo_de(FicheiroRotativo(pasta.pasta()).caminho(i));
        return texto;
    }
    // Without what differs from run to run.
    std::string linhas() const {
        const std::regex varia(
            R"((\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}[+-]\d\d:\d\d \[\d+\] )|( ms="\d{1,3}"))");
        return "\n" + std::regex_replace(tudo(), varia, "");
    }
};

// Fails with all it knows, and confirms nobody knows what.
struct SessaoIndiscreta : platform::sqlite::SessaoSQLite {
    std::string sabe;
    bool Abre(const std::string& texto) override {
        sabe = texto + startup::ConstrutorLigacao::le(texto)["Pwd"];
        return true;
    }
    void Executa(const std::string&) override { throw base::FalhaGuarda("Não liga: " + sabe + "\nFim", 7); }
    void ConfirmaTransaccao() override { throw startup::ConfirmacaoDesconhecida("Não se sabe."); }
};

// Its writes fail later than they were asked for.
struct SessaoTardia : platform::sqlite::SessaoSQLite {
    using Adiada = startup::FalhaAdiada;
    void Executa(const std::string& sql) override { throw Adiada(base::Falha("Tarde.", 7), adiado, sql); }
    void EmPasso(const std::vector<std::string>&, const std::function<void()>& trabalho) override {
        trabalho();
        throw Adiada(base::Falha("Tarde.", 7), adiado, "t");
    }
    Adiada::Genero adiado = Adiada::Genero::linha;
};

TEST_F(Registo, UmaFalhaTardiaEDitaUmaVezEDoQueFalhou) {
    auto propria = std::make_unique<SessaoTardia>();
    auto& genero = propria->adiado;
    SessaoBDOuvida BD(std::move(propria), registo);
    EXPECT_THROW(BD.EmPasso({}, [] {}), startup::FalhaAdiada);
    genero = startup::FalhaAdiada::Genero::pergunta;
    const auto em_dois = [&] { BD.EmPasso({}, [&] { BD.EmPasso({}, [&] { BD.Executa("u"); }); }); };
    EXPECT_THROW(em_dois(), startup::FalhaAdiada);
    EXPECT_THROW(BD.EmPasso({}, [] { throw base::FalhaGuarda("Da regra."); }), base::FalhaGuarda);
    EXPECT_EQ(linhas(), "\noperacao_falhou operacao=\"ALTERA t\" numero=\"7\" erro=\"Tarde.\"\n"
                        "operacao_falhou operacao=\"CONSULTA u\" numero=\"7\" erro=\"Tarde.\"\n");
}

TEST_F(Registo, TemUmaLinhaParaCadaAcontecimentoDeUmaConfirmacao) {
    const confirmacao::PedidoERP cria{confirmacao::AccaoERP::cria, {2019, "GR", 1, 0}};
    const confirmacao::PedidoERP anula{confirmacao::AccaoERP::anula, {2019, "GR", 1, 12}};
    confirmacao::Intencao guia{
        .fluxo = confirmacao::Fluxo::emite_guia, .Cliente = "CL'1", .Data = {2019, 3, 15}};
    guia.artigos = {{"BOB'1", m("2.5"), "OR"}, {"B\"2\n", m("1"), "OR"}};
    registo.inicio("1.2", "2");
    registo.intencao(guia);
    registo.antes_do_erp(cria);
    registo.depois_do_erp(cria, {Desfecho::feito, {2019, "GR", 1, 12}, ""});
    registo.antes_de_confirmar();
    registo.feita();
    registo.intencao(guia);
    registo.depois_do_erp(cria, {Desfecho::recusado, cria.chave, "O ERP\r\nrecusou."});
    registo.depois_do_erp(anula, {Desfecho::sem_resposta, anula.chave, std::string(9999, 'x')});
    registo.compensada({.erro = "Erro",
                        .por_saber = true,
                        .anulados = {{2019, "GR", 1, 13}},
                        .por_anular = {{2019, "GR", 1, 12}},
                        .por_verificar = {"Veja A.", "Veja B."}});
    registo.compensada({"Antes de tudo.", false, {}, {}, {}});
    registo.fim("fechado");
    const std::string artigos =
        R"( cliente="CL'1" data="2019-03-15" artigos="BOB'1 2.5 t OR; B\"2\n 1 t OR")";
    EXPECT_EQ(linhas(), "\ninicio versao=\"1.2\" utilizador=\"" + utilizador_da_maquina() + R"(" modo="2"
erp operacao="cria" desfecho="feito" chave="GR/1/12/2019"
confirmacao desfecho="feita" fluxo="emite_guia" criados="GR/1/12/2019")" +
                            artigos + R"(
erp operacao="cria" desfecho="recusado" chave="GR/1/0/2019" mensagem="O ERP\r\nrecusou."
erp operacao="anula" desfecho="sem_resposta" chave="GR/1/12/2019" mensagem=")" +
                            std::string(Linha::texto_maximo, 'x') + R"(…"
confirmacao desfecho="por_saber" fluxo="emite_guia")" +
                            artigos +
                            R"( erro="Erro" compensados="GR/1/13/2019" por_anular="GR/1/12/2019")"
                            R"( por_verificar="Veja A." por_verificar="Veja B."
confirmacao desfecho="desfeita" erro="Antes de tudo."
fim como="fechado"
)");
}

TEST_F(Registo, DizOQueFalhouOuDemorouSemValoresNemPalavrasPasseENaoMudaFalhaNenhuma) {
    for (const std::string segredo : {"Segr}edo\"1", "um"}) {
        SessaoBDOuvida BD(std::make_unique<SessaoIndiscreta>(), registo);
        BD.Abre(startup::ConstrutorLigacao{
            .servidor = "s", .base = "b", .utilizador = "ana", .palavra_passe = segredo}
                    .constroi());
        EXPECT_THROW(BD.Executa("Delete algum where um=1"), base::FalhaGuarda);
        EXPECT_THROW(BD.ConfirmaTransaccao(), startup::ConfirmacaoDesconhecida);
    }
    EXPECT_TRUE(std::regex_match(
        linhas(), std::regex("(\noperacao_falhou operacao=\"EXECUTA Delete algum where (um|\\*\\*\\*)=1\" "
                             "numero=\"7\" erro=\"Não liga: [^\"]*Uid=.ana.;Pwd=.\\*\\*\\*.[^\"]*\\\\nFim\""
                             "\noperacao_falhou operacao=\"CONFIRMA\" erro=\"Não se sabe.\"){2}\n")))
        << linhas();
    for (const char* resto : {"Segr", "{um}", "edo"})
        EXPECT_THAT(tudo(), testing::Not(testing::HasSubstr(resto)));

    const EmpresaTeste empresa;
    SessaoBDOuvida BD(std::make_unique<platform::sqlite::SessaoSQLite>(), registo);
    BD.Abre(ligacao(empresa.pasta()));
    const std::size_t antes = linhas().size();
    const auto linha = BD.AbreActualizavel("Select * from xel_ORVEX_Mov where NumDoc=123 and NumLinha=1");
    EXPECT_THROW(linha->define("Descritivo", std::string(99, 'n')), base::Falha);
    registo.depois({Operacao::Especie::poe, "doc", "Nome", [] { return "Nome='Rita'"; }},
                   {std::chrono::seconds(2)});
    registo.depois({Operacao::Especie::cria_stock, "STOCK", {}, [] { return "STOCK PES-2041"; }},
                   {std::chrono::seconds(3)});
    registo.depois({Operacao::Especie::inicia, "INICIA"}, {std::chrono::milliseconds(999)});
    const std::string novas = linhas().substr(antes);
    EXPECT_TRUE(std::regex_match(
        novas, std::regex("operacao_falhou operacao=\"ALTERA Select [^\n]* numero=\"-2147217833\"[^\n]*\n"
                          "operacao_lenta operacao=\"doc.Nome\" ms=\"2000\"\n"
                          "operacao_lenta operacao=\"STOCK\" ms=\"3000\"\n")))
        << novas;
}

TEST_F(Registo, NaoPerdeLinhasDeProgramasQueEscrevemAoMesmoTempoEGuardaCincoFicheiros) {
    constexpr int programas = 3, de_cada = 2000; // together less than five files
    const auto escreve = [this](int programa, int quantas) {
        RegistoOperacoes seu = em(pasta.pasta()); // a line opens the file anew, whoever writes it
        for (int i = 0; i < quantas; ++i)
            seu.falha(std::to_string(programa) + "." + std::to_string(i) + std::string(500, '.'));
    };
    const auto inteiras = [this] {
        const std::string texto = tudo();
        const std::regex linha(R"(\] falha erro="(\d\.\d+)\.{500}"\n)");
        std::set<std::string> diferentes;
        for (std::sregex_iterator i(texto.begin(), texto.end(), linha), fim; i != fim; ++i)
            diferentes.insert((*i)[1]);
        return diferentes;
    };
    {
        std::vector<std::jthread> todos;
        for (int p = 0; p < programas; ++p)
            todos.emplace_back(escreve, p, de_cada);
    }
    EXPECT_EQ(inteiras().size(), programas * de_cada);

    escreve(9, 5 * de_cada);
    const FicheiroRotativo ficheiro(pasta.pasta());
    for (int i = 0; i < FicheiroRotativo::ficheiros; ++i)
        EXPECT_LE(std::filesystem::file_size(ficheiro.caminho(i)), FicheiroRotativo::maior);
    EXPECT_FALSE(std::filesystem::exists(ficheiro.caminho(FicheiroRotativo::ficheiros)));
    EXPECT_GT(inteiras().size(), 4 * de_cada);
    EXPECT_TRUE(inteiras().contains("9." + std::to_string(5 * de_cada - 1)));
    EXPECT_EQ(ditos.size(), 0U);
}

TEST_F(Registo, QueNaoPodeSerEscritoDizSeUmaVezENaoParaNada) {
    const EmpresaTeste empresa;
    for (const auto& onde : {pasta.escreve("ficheiro", "") / "orvex", std::filesystem::path()}) {
        ditos.clear();
        RegistoOperacoes mudo = em(onde);
        EXPECT_NE(FicheiroRotativo(onde).defeito(), "");
        EXPECT_FALSE(mudo.avariado());
        SessaoBDOuvida BD(std::make_unique<platform::sqlite::SessaoSQLite>(), mudo);
        EXPECT_TRUE(BD.Abre(ligacao(empresa.pasta())));
        EXPECT_THROW(BD.Executa("nada"), base::Falha);
        EXPECT_TRUE(mudo.avariado());
        mudo.fim("fechado");
        EXPECT_THAT(ditos, testing::ElementsAre(testing::HasSubstr("não pode ser escrito")));
    }
    EXPECT_EQ(FicheiroRotativo(pasta.pasta() / "a" / "b").defeito(), "");
    EXPECT_FALSE(std::filesystem::exists(pasta.pasta() / "a")) << "asking writes nothing";
}

} // namespace
} // namespace orvex::testes
