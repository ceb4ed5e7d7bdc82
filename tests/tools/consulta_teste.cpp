// orvex-consulta as it is called, on a demo company.
#include "platform/sqlite/empresa.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "tests/apoio/sessao_de_teste.h"
#include "tests/tools/comando.h"
#include "tools/empresa/empresa_demo.h"

#include <gmock/gmock.h>

#include <map>

namespace orvex::testes {
namespace {

namespace fs = std::filesystem;
using namespace testing;

struct Consulta : Test {
    PastaTemporaria raiz;
    fs::path pasta = raiz.pasta() / "i", empresa = pasta / demo::pasta_empresa;

    void SetUp() override { demo::faz_empresa({.pasta = pasta, .hoje = base::DataHora{2026, 11, 23}}); }
    std::pair<int, std::string> corre(const std::string& opcoes) const {
        const Fim fim = testes::corre("'" ORVEX_CONSULTA "' --instalacao '" + pasta.string() + "' " + opcoes);
        return {fim.codigo, fim.texto};
    }
    std::map<fs::path, std::string> ficheiros() const {
        std::map<fs::path, std::string> todos;
        for (const auto& este : fs::directory_iterator(empresa))
            todos[este.path()] = conteudo_de(este.path());
        return todos;
    }
};

TEST_F(Consulta, RespondeEmCadaFormatoENadaAlteraNemCria) {
    const auto antes = ficheiros();
    EXPECT_THAT(corre("artigo ba000265"),
                Pair(0, AllOf(StartsWith("Artigo BA000265\n"), HasSubstr("Detentor: ORVEX"))));
    EXPECT_THAT(
        corre("cliente C0013 --data 2026-10-31 --json"),
        Pair(0, AllOf(StartsWith("{\"vista\": \"cliente\""), HasSubstr("{\"artigo\": \"FM000059\""))));
    EXPECT_THAT(corre("parados 90 --cliente C0013 --csv"), Pair(0, HasSubstr("\nFM000059;")));
    EXPECT_THAT(corre("movimentos 2026-01-01 31-12-2026 --tipo devolucao"),
                Pair(0, HasSubstr("Tipo: Devolução")));
    EXPECT_THAT(corre("documento 4"), Pair(0, HasSubstr("Estado: Anulada")));
    EXPECT_THAT(corre("procura falcão"), Pair(0, HasSubstr("C0013")));
    for (const char* sem : {"artigo NADA", "cliente \"C'1\"", "documento GR/1/9999", "documento x",
                            "procura '%'", "parados 1 --cliente NADA"})
        EXPECT_EQ(corre(sem).first, 2) << sem;
    for (const char* errada :
         {"artigo", "artigo A B", "nada X", "parados x", "movimentos 2026-01-01",
          "movimentos 2026-01-02 2026-01-01", "artigo A --data ontem", "artigo A --data 2026-01-01",
          "cliente C0013 --data 31-10-26", "movimentos 2026-01-01 9999-12-31", "artigo A --csv --json",
          "--csv", "--janela --json artigo A", "movimentos 2026-01-01 2026-01-02 --tipo nada", "--xpto"})
        EXPECT_THAT(corre(errada), Pair(1, HasSubstr("Nada foi consultado."))) << errada;
    EXPECT_EQ(ficheiros(), antes);
}

TEST_F(Consulta, RespondeEnquantoOutroProgramaGravaSemOPrender) {
    platform::sqlite::SessaoSQLite outro;
    ASSERT_TRUE(outro.Abre(ligacao(empresa)));
    outro.IniciaTransaccao();
    outro.Executa("Delete xel_ORVEX"); // nobody sees it yet
    EXPECT_THAT(corre("parados 0"), Pair(0, HasSubstr(" artigos ")));
    outro.ConfirmaTransaccao();
    EXPECT_THAT(corre("parados 0"), Pair(0, HasSubstr("(nada)")));
}

TEST_F(Consulta, DizQueAEmpresaNuncaFoiAberta) {
    platform::sqlite::abre_base(empresa / platform::sqlite::ficheiro_livro)
        .exec("drop table xel_ORVEX; drop table xel_ORVEX_Mov");
    EXPECT_THAT(corre("artigo X"), Pair(1, HasSubstr("ainda não tem o livro da ORVEX")));
}

} // namespace
} // namespace orvex::testes
