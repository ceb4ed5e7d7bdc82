// The trial on a real server, against the server of the tests.
#include "tests/apoio/empresa_teste.h"

#include <gmock/gmock.h>

#include <sys/wait.h>

namespace orvex::testes {
namespace {

using namespace testing;

struct Ensaio : Test {
    PastaTemporaria pasta;
    std::filesystem::path base = pasta.pasta() / "ENSAIO";
    std::string saida; // what the last command wrote
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

    int corre(const std::string& comando) {
        const auto ficheiro = pasta.escreve("saida.txt", "");
        const int estado = std::system((comando + " >" + ficheiro.string() + " 2>&1").c_str());
        saida = conteudo_de(ficheiro);
        return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
    }
    int ensaia(const std::string& guiao) { // of the shell, in place of the suites
        const auto programa = pasta.escreve("programa.sh", "#!/bin/sh\n" + guiao + "\n");
        std::filesystem::permissions(programa, std::filesystem::perms::owner_all);
        return corre(ORVEX_ENSAIO_PROGRAMA " " + programa.string());
    }
};

TEST_F(Ensaio, OsTestesCorremNumaBasePropriaQueEApagada) {
    EXPECT_EQ(corre("GTEST_FILTER='Conjuntos.*:Linguagem.*:RegrasServidor.*:Transaccoes.*:TrfBobines.*'"
                    " " ORVEX_ENSAIO_PROGRAMA),
              0)
        << saida;
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
        EXPECT_EQ(ensaia(caso.guiao), caso.resultado) << caso.guiao << saida;
        EXPECT_EQ(std::filesystem::exists(base), caso.fica) << caso.guiao << saida;
        EXPECT_THAT(saida, AllOf(HasSubstr(caso.texto), Not(HasSubstr(servidor->palavra_passe))));
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
