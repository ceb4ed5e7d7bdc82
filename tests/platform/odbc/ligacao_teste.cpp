// How a connection comes about, and what it begins with.
#include "startup/esquema_livro.h"
#include "tests/platform/odbc/servidor.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <thread>

namespace orvex::testes {
namespace {

using Silencio = ServidorTDS::Silencio;

// An address that swallows what is sent to it: the queue of those who want to connect is full.
struct Surdo {
    Surdo() {
        morada.sin_family = AF_INET;
        morada.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        for (int& descritor : descritores)
            descritor = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        bind(descritores[0], generica, tamanho);
        listen(descritores[0], 0);
        getsockname(descritores[0], generica, &tamanho);
        for (const int descritor : descritores)
            connect(descritor, generica, tamanho);
    }
    ~Surdo() {
        for (const int descritor : descritores)
            close(descritor);
    }
    Surdo(const Surdo&) = delete;

    sockaddr_in morada{};
    sockaddr* generica = reinterpret_cast<sockaddr*>(&morada);
    socklen_t tamanho = sizeof morada;
    std::array<int, 5> descritores{};
};

TEST_F(Servidor, a_server_that_falls_silent_is_given_up_in_the_time_for_a_connection) {
    const auto desiste = [](const std::string& ligacao) {
        SessaoODBC outra({.ligacao = 1});
        const auto antes = std::chrono::steady_clock::now();
        EXPECT_FALSE(outra.Abre(ligacao));
        EXPECT_LT(std::chrono::steady_clock::now() - antes, std::chrono::milliseconds(2'500));
        return falha([&] { outra.Consulta("select NumSerie from  xel_ORVEX"); });
    };
    for (const Silencio onde : {Silencio::saudacao, Silencio::entrada, Silencio::meio, Silencio::nunca}) {
        servidor.silencio = onde;
        servidor.avaria_no(1, {.efeito = Efeito::surdez, .milissegundos = 4'000}); // once logged in
        EXPECT_THAT(desiste(ligacao(servidor)), HasSubstr("não respondeu a tempo")) << static_cast<int>(onde);
    }
    // Where nobody takes connections from the queue, nothing comes back at all.
    const Surdo surdo;
    const std::string porta = std::to_string(ntohs(surdo.morada.sin_port));
    EXPECT_THAT(desiste(ligacao_com({{&C::servidor, "127.0.0.1," + porta}})),
                HasSubstr("Não foi possível ligar"));
}

TEST_F(Servidor, what_one_at_a_time_may_do_survives_a_lost_connection_and_lets_go) {
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

TEST(PrimeirosArranques, at_the_same_time_on_an_empty_ledger_all_succeed) {
    const PastaTemporaria pasta;
    cria_empresa_vazia(pasta.pasta());
    const ServidorTDS servidor(pasta.pasta());
    std::vector<std::string> falhas(8);
    std::vector<std::thread> postos;
    for (std::string& esta : falhas)
        postos.emplace_back([&] {
            SessaoODBC BD;
            BD.Abre(ligacao(servidor));
            esta = falha([&] {
                BD.EmExclusivo([&] {
                    startup::VerificaTabelas(BD);
                    startup::VerificaPesos(BD);
                });
                BD.Consulta("select PesoBruto from  xel_ORVEX_Mov");
            });
        });
    for (std::thread& posto : postos)
        posto.join();
    EXPECT_THAT(falhas, testing::Each(""));
}

} // namespace
} // namespace orvex::testes
