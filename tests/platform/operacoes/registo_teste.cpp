// The operation log: what is in it, what is not, and that nothing is lost of it or stopped by it.
#include "platform/operacoes/registo_operacoes.h"
#include "platform/operacoes/sistema.h"
#include "startup/construtor_ligacao.h"
#include "tests/apoio/empresa_teste.h"

#include <gmock/gmock.h>

#include <regex>
#include <set>
#include <sys/wait.h>

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
        for (int i = FicheiroRotativo::ficheiros; i >= 0; --i) {
            std::ifstream ficheiro(FicheiroRotativo(pasta.pasta()).caminho(i));
            texto.append(std::istreambuf_iterator<char>(ficheiro), {});
        }
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

TEST_F(Registo, has_one_line_for_each_event_of_a_confirmation) {
    const confirmacao::PedidoERP cria{confirmacao::AccaoERP::cria, {2019, "GR", 1, 0}};
    const confirmacao::PedidoERP anula{confirmacao::AccaoERP::anula, {2019, "GR", 1, 12}};
    const auto pretende = [&] {
        registo.intencao({confirmacao::Fluxo::emite_guia,
                          cria.chave,
                          {},
                          "CL'1",
                          {2019, 3, 15},
                          {{"BOB'1", m("2.5"), "OR"}, {"B\"2\n", m("1"), "OR"}}});
        registo.antes_do_erp(cria);
    };
    registo.inicio("1.2", "2");
    pretende();
    registo.depois_do_erp(cria, {Desfecho::feito, {2019, "GR", 1, 12}, ""});
    registo.antes_de_confirmar();
    registo.feita();
    pretende();
    registo.depois_do_erp(cria, {Desfecho::recusado, cria.chave, "O ERP\r\nrecusou."});
    registo.compensada({"O ERP recusou.", false, {}, {}, {}});
    pretende();
    registo.depois_do_erp(cria, {Desfecho::feito, {2019, "GR", 1, 13}, ""});
    registo.depois_do_erp(anula, {Desfecho::sem_resposta, anula.chave, std::string(9999, 'x')});
    registo.compensada({"Erro", true, {{2019, "GR", 1, 13}}, {{2019, "GR", 1, 12}}, {"Veja A.", "Veja B."}});
    registo.compensada({"Antes de tudo.", false, {}, {}, {}});
    registo.fim("fechado");
    const std::string artigos =
        R"( cliente="CL'1" data="2019-03-15" artigos="BOB'1 2.5 t OR; B\"2\n 1 t OR")";
    EXPECT_EQ(linhas(), "\ninicio versao=\"1.2\" utilizador=\"" + utilizador_da_maquina() + R"(" modo="2"
erp operacao="cria" desfecho="feito" chave="GR/1/12/2019"
confirmacao desfecho="feita" fluxo="emite_guia" criados="GR/1/12/2019")" +
                            artigos + R"(
erp operacao="cria" desfecho="recusado" chave="GR/1/0/2019" mensagem="O ERP\r\nrecusou."
confirmacao desfecho="desfeita" fluxo="emite_guia")" +
                            artigos + R"( erro="O ERP recusou."
erp operacao="cria" desfecho="feito" chave="GR/1/13/2019"
erp operacao="anula" desfecho="sem_resposta" chave="GR/1/12/2019" mensagem=")" +
                            std::string(Linha::texto_maximo, 'x') + R"(…"
confirmacao desfecho="por_saber" fluxo="emite_guia" criados="GR/1/13/2019")" +
                            artigos +
                            R"( erro="Erro" compensados="GR/1/13/2019" por_anular="GR/1/12/2019")"
                            R"( por_verificar="Veja A." por_verificar="Veja B."
confirmacao desfecho="desfeita" erro="Antes de tudo."
fim como="fechado"
)");
}

TEST_F(Registo, tells_what_failed_or_was_slow_without_values_and_passwords_and_changes_no_failure) {
    for (const std::string segredo : {"Segr}edo\"1", "um"}) {
        SessaoBDOuvida BD(std::make_unique<SessaoIndiscreta>(), registo);
        BD.Abre(startup::ConstrutorLigacao{
            .servidor = "s", .base = "b", .utilizador = "ana", .palavra_passe = segredo}
                    .constroi());
        EXPECT_THROW(BD.Executa("Delete algum where um=1"), base::FalhaGuarda);
        EXPECT_THROW(BD.ConfirmaTransaccao(), startup::ConfirmacaoDesconhecida);
    }
    EXPECT_THAT(linhas(), testing::MatchesRegex(
                              "(\noperacao_falhou operacao=\"EXECUTA Delete algum where (um|\\*\\*\\*)=1\" "
                              "numero=\"7\" erro=\"Não liga: [^\"]*Uid=.ana.;Pwd=.\\*\\*\\*.[^\"]*\\\\nFim\""
                              "\noperacao_falhou operacao=\"CONFIRMA\" erro=\"Não se sabe.\"){2}\n"));
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
    registo.depois({Operacao::Especie::inicia, "INICIA"}, {std::chrono::milliseconds(999)});
    EXPECT_THAT(linhas().substr(antes),
                testing::MatchesRegex("operacao_falhou operacao=\"ALTERA Select [^\n]* numero=\"-2147217833\""
                                      "[^\n]*\noperacao_lenta operacao=\"doc.Nome\" ms=\"2000\"\n"));
}

TEST_F(Registo, loses_no_line_of_programs_that_write_at_once_and_keeps_five_files) {
    constexpr int programas = 3, de_cada = 2000; // together less than five files
    for (int p = 0; p < programas; ++p) {
        if (fork() != 0) continue;
        for (int i = 0; i < de_cada; ++i)
            registo.falha(std::to_string(p) + "." + std::to_string(i) + std::string(500, '.'));
        _exit(0);
    }
    while (wait(nullptr) > 0)
        continue;
    const auto inteiras = [this] {
        const std::string antes = "] falha erro=\"", depois = std::string(500, '.') + '"';
        std::set<std::string> diferentes;
        std::istringstream lidas(tudo());
        for (std::string linha; std::getline(lidas, linha);) {
            const auto inicio = linha.find(antes) + antes.size(), fim = linha.find(depois);
            if (fim + depois.size() == linha.size()) diferentes.insert(linha.substr(inicio, fim - inicio));
        }
        return diferentes;
    };
    EXPECT_EQ(inteiras().size(), programas * de_cada);

    for (int i = 0; i < 5 * de_cada; ++i)
        registo.falha("9." + std::to_string(i) + std::string(500, '.'));
    const FicheiroRotativo ficheiro(pasta.pasta());
    for (int i = 0; i < FicheiroRotativo::ficheiros; ++i)
        EXPECT_LE(std::filesystem::file_size(ficheiro.caminho(i)), FicheiroRotativo::maior);
    EXPECT_FALSE(std::filesystem::exists(ficheiro.caminho(FicheiroRotativo::ficheiros)));
    EXPECT_GT(inteiras().size(), 4 * de_cada);
    EXPECT_TRUE(inteiras().contains("9." + std::to_string(5 * de_cada - 1)));
    EXPECT_EQ(ditos.size(), 0U);
}

TEST_F(Registo, that_cannot_be_written_is_said_once_and_stops_nothing) {
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
