// The trial on a real server, against the server of the tests.
#include "tests/apoio/empresa_teste.h"
#include "tests/tools/comando.h"

namespace orvex::testes {
namespace {

using namespace testing;

struct Ensaio : Test {
    PastaTemporaria pasta;
    std::filesystem::path base = pasta.pasta() / "ENSAIO";
    std::unique_ptr<ServidorTDS> servidor;

    Ensaio() {
        cria_empresa_vazia(pasta.pasta());
        servidor = std::make_unique<ServidorTDS>(pasta.pasta());
        for (const auto& [nome, valor] :
             {std::pair{"ORVEX_SERVIDOR", "127.0.0.1," + std::to_string(servidor->porta())},
              {"ORVEX_BASE", "ENSAIO"},
              {"ORVEX_UTILIZADOR", servidor->utilizador},
              {"ORVEX_PALAVRA_PASSE", servidor->palavra_passe},
              {"ORVEX_ENCRIPTACAO", "nao"},
              {"PASTA", pasta.pasta().string()}})
            setenv(nome, valor.c_str(), 1);
    }

    Fim ensaia(const std::string& guiao) { // of the shell, in place of the suites
        const auto programa = pasta.escreve("programa.sh", "#!/bin/sh\n" + guiao + "\n");
        std::filesystem::permissions(programa, std::filesystem::perms::owner_all);
        return corre(ORVEX_ENSAIO_PROGRAMA " " + programa.string());
    }
};

TEST_F(Ensaio, OsTestesCorremNumaBasePropriaQueEApagada) {
    const Fim fim =
        corre("GTEST_FILTER='Conjuntos.*:Linguagem.*:Passos.*:RegrasServidor.*:Transaccoes.*:TrfBobines.*'"
              " " ORVEX_ENSAIO_PROGRAMA);
    EXPECT_EQ(fim.codigo, 0) << fim.texto;
    EXPECT_FALSE(std::filesystem::exists(base));
}

TEST_F(Ensaio, ABaseApagaSeAcabeComoAcabarSalvoSeForOutra) {
    constexpr const char* outra = "cd $PASTA && rm -r ENSAIO && mkdir ENSAIO && cp livro.db erp.db ENSAIO";
    const struct {
        const char* guiao;
        int resultado;
        bool fica;
        const char* texto;
    } casos[] = {
        {"test -d $PASTA/ENSAIO", 0, false, "apagada"},
        {"exit 3", 1, false, "acabou com 3"},
        {"kill -TERM $PPID; exec sleep 60", 128 + SIGTERM, false, "apagada"},
        {"kill -SEGV $$", 128 + SIGSEGV, false, "apagada"},
        {outra, 1, true, "não se lhe toca"},
        {"exit 0", 1, true, "já existe"}, // the one that was just left
    };
    for (const auto& caso : casos) {
        const auto [codigo, texto] = ensaia(caso.guiao);
        EXPECT_EQ(codigo, caso.resultado) << caso.guiao << texto;
        EXPECT_EQ(std::filesystem::exists(base), caso.fica) << caso.guiao << texto;
        EXPECT_THAT(texto, AllOf(HasSubstr(caso.texto), Not(HasSubstr(servidor->palavra_passe))));
    }
}

TEST_F(Ensaio, NenhumTesteTocaNumaBaseQueNaoFoiFeitaParaEle) {
    setenv("ORVEX_TESTE_MOTOR", "servidor", 1);
    setenv("ORVEX_ENSAIO", "0", 1);
    setenv("ORVEX_BASE", "EMPRESA", 1);
    EXPECT_THROW(abre_empresa(pasta.pasta()), base::Falha);
    EXPECT_THROW(SessaoDeTeste().Abre(""), base::Falha);
    EXPECT_THAT(servidor->textos(), Each(AnyOf(StartsWith("IF @@TRANCOUNT > 0 ROLLBACK TRANSACTION;"),
                                               StartsWith("select n from orvex_ensaio_0"))));
    for (const char* nome : {"ORVEX_TESTE_MOTOR", "ORVEX_ENSAIO"})
        unsetenv(nome);
}

} // namespace
} // namespace orvex::testes
