// How a connection comes about, and what it begins with.
#include "tests/platform/odbc/servidor.h"

namespace orvex::testes {
namespace {

TEST_F(Servidor, QueSeCalaEDeixadoNoTempoDeUmaLigacao) {
    for (const bool na_entrada : {true, false}) {
        servidor.cala_se = na_entrada;
        servidor.avaria_no(1, {.efeito = Efeito::surdez, .milissegundos = 4'000}); // once logged in
        SessaoODBC outra({.ligacao = 1});
        const auto antes = std::chrono::steady_clock::now();
        EXPECT_FALSE(outra.Abre(ligacao(servidor)));
        EXPECT_LT(std::chrono::steady_clock::now() - antes, std::chrono::milliseconds(2'500));
        EXPECT_THAT(falha([&] { outra.Executa("Delete xel_ORVEX"); }), HasSubstr("não respondeu a tempo"));
    }
}

TEST_F(Servidor, OQueSoUmPodeFazerSobreviveAUmaLigacaoPerdidaEDepoisLarga) {
    SessaoODBC outra({.bloqueio = 1});
    ASSERT_TRUE(outra.Abre(ligacao(servidor)));
    const auto tenta = [&] { return falha([&] { outra.EmExclusivo([] {}); }); };
    BD.EmExclusivo([&] {
        avaria(Efeito::corta);
        usa();
        EXPECT_THAT(tenta(), HasSubstr("por outro posto")) << "the new connection has it too";
    });
    EXPECT_EQ(tenta(), "");
    EXPECT_EQ(falha([&] { BD.EmExclusivo([&] { avaria(Efeito::corta_depois); }); }), "")
        << "the work was done";
    EXPECT_EQ(tenta(), "");
}

} // namespace
} // namespace orvex::testes
