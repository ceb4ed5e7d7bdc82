// orvex-auditoria as it is called, on a demo company; and what it puts in order.
#include "platform/sqlite/empresa.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/tools/comando.h"
#include "tools/auditoria/ordenados.h"
#include "tools/empresa/empresa_demo.h"

#include <map>
#include <random>

namespace orvex::testes {
namespace {

namespace fs = std::filesystem;
using namespace testing;

TEST(Auditoria, OsRegistosSaemPorOrdemMesmoQuandoNaoCabem) {
    auditoria::Ordenados<std::int64_t> ordenados;
    std::mt19937_64 gerador(1);
    std::vector<std::int64_t> todos(2'000'000);
    for (std::int64_t& este : todos)
        ordenados.junta(este = static_cast<std::int64_t>(gerador() % 1'000'000));
    std::sort(todos.begin(), todos.end());
    for (int vez = 0; vez < 2; ++vez) {
        std::vector<std::int64_t> saidos;
        for (ordenados.comeca(); ordenados.ha(); ordenados.avanca())
            saidos.push_back(ordenados.actual());
        EXPECT_TRUE(saidos == todos) << vez;
    }
}

// The program itself, on a demo company: what it prints, and what it ends with.
struct Programas : Test {
    PastaTemporaria raiz;
    fs::path pasta = raiz.pasta() / "i",
             livro = pasta / demo::pasta_empresa / platform::sqlite::ficheiro_livro;

    void SetUp() override { demo::faz_empresa({.pasta = pasta, .hoje = base::DataHora::agora()}); }
    std::pair<int, std::string> corre(const std::string& opcoes = "") const {
        const Fim fim = testes::corre("'" ORVEX_AUDITORIA "' '" + pasta.string() + "' --espera 0 " + opcoes);
        return {fim.codigo, fim.texto};
    }
    std::map<fs::path, std::string> ficheiros() const {
        std::map<fs::path, std::string> todos;
        for (const auto& este : fs::directory_iterator(livro.parent_path()))
            todos[este.path()] = conteudo_de(este.path());
        return todos;
    }
};

TEST_F(Programas, AcabaCom02Ou1ENadaAlteraNemCria) {
    const auto antes = ficheiros();
    EXPECT_THAT(corre(), Pair(0, HasSubstr("Nada a corrigir.")));
    EXPECT_EQ(ficheiros(), antes);
    const auto estraga = [&](const char* sql) { platform::sqlite::abre_base(livro).exec(sql); };
    estraga("update xel_ORVEX_Mov set Qtd=Qtd+1 where TpDoc='FA' and NumLinha=1 and NumDoc=1");
    EXPECT_THAT(corre(),
                Pair(2, AllOf(HasSubstr("2 erros, 1 informação, 2000 kg."), HasSubstr("\nERRO  L1  "),
                              HasSubstr("| diferença 1000 kg | desde FA/1/1 de "))));
    const std::string aceites = "'" + (raiz.pasta() / "a.txt").string() + "'";
    EXPECT_THAT(corre("--json --escreve-aceites " + aceites),
                Pair(2, AllOf(StartsWith("{\n"), HasSubstr("\"diferenca_kg\": 1000.0"))));
    EXPECT_THAT(corre("--aceites " + aceites), Pair(0, HasSubstr("3 achados aceites não são mostrados.")));
    estraga("drop table U_DocGcLin1");
    EXPECT_THAT(corre(), Pair(1, HasSubstr("NÃO VERIFICADO: L1, L2, L5 e L7 dos movimentos: ")));
    for (const char* errada : {"--desde ontem", "--artigo", "--nada", "--aceites /nada", "--espera x"})
        EXPECT_THAT(corre(errada), Pair(1, HasSubstr("Nada foi verificado."))) << errada;
    fs::remove(livro);
    EXPECT_THAT(corre(), Pair(1, HasSubstr("livro.db")));
    EXPECT_FALSE(fs::exists(livro));
}

TEST_F(Programas, AuditaEnquantoOutroProgramaTrabalha) {
    platform::sqlite::SessaoSQLite outro;
    ASSERT_TRUE(outro.Abre(ligacao(livro.parent_path())));
    outro.Executa("update xel_ORVEX_Mov set Qtd=Qtd+1 where TpDoc='FA' and NumLinha=1 and NumDoc=1");
    outro.IniciaTransaccao();
    outro.Executa("Delete xel_ORVEX"); // nobody sees it yet
    EXPECT_THAT(corre(), Pair(2, HasSubstr("2 erros, 1 informação, 2000 kg.")));
    outro.AnulaTransaccao();
    EXPECT_FALSE(outro.Consulta("Select top 1 * from xel_ORVEX")->fim());
}

} // namespace
} // namespace orvex::testes
