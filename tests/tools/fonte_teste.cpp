// Sessions that the enquiries' window keeps, over the wire.
#include "base/texto.h"
#include "tests/platform/odbc/servidor.h"
#include "tools/consulta/fonte.h"

namespace orvex::testes {
namespace {

using namespace livro::consultas;
using consulta::FonteDaEmpresa;

struct SessoesGuardadas : Servidor {
    FonteDaEmpresa fonte{{{}, {}, [this] { return abre(); }, {}}, casa()};

    livro::Casa casa() {
        empresa.com_ajustes_e_transferencias();
        return livro::Casa::le(startup::Parametros(empresa.pasta()));
    }
    std::unique_ptr<startup::SessaoBD> abre() const {
        auto nova = std::make_unique<SessaoODBC>(
            platform::odbc::Esperas{.ligacao = 2, .instrucao = 1, .bloqueio = 1});
        EXPECT_TRUE(nova->Abre(ligacao(servidor)));
        return nova;
    }
    bool responde(const std::function<void()>& amid = [] {}) {
        Recolhida recolhida;
        return fonte.responde(
            [&](const Meios& meios, Destino& destino) {
                amid();
                return artigo(meios, "B1", destino);
            },
            recolhida, [] { ADD_FAILURE(); });
    }
};

TEST_F(SessoesGuardadas, ServemASeguinteEnquantoPrestamESoPerguntam) {
    junta("B1");
    const auto antes = servidor.ligacoes();
    const auto textos_antes = servidor.textos().size();
    const auto novas = [&] { return servidor.ligacoes() - antes; };
    EXPECT_TRUE(responde());
    EXPECT_TRUE(responde());
    EXPECT_EQ(novas(), 1U);
    EXPECT_TRUE(responde([&] { EXPECT_TRUE(responde()); })); // two at once
    EXPECT_EQ(novas(), 2U);
    avaria(Efeito::corta); // lost while nobody asked
    EXPECT_TRUE(responde());
    EXPECT_EQ(novas(), 3U);
    avaria(Efeito::demora); // for longer than a statement may take
    EXPECT_THROW(responde(), Falha);
    EXPECT_TRUE(responde());
    EXPECT_EQ(novas(), 3U);
    struct : Recolhida {
        int vezes = 0;
        bool prossegue() override { return ++vezes < 3; }
    } desiste;
    const std::function<void(int)> com =
        [&](int quantas) { // at once; the next one waits until it is given up
            if (quantas > 0)
                EXPECT_TRUE(responde([&] { com(quantas - 1); }));
            else
                EXPECT_FALSE(fonte.responde([](auto&, auto&) { return true; }, desiste, [] {}));
        };
    com(4);
    EXPECT_TRUE(responde());
    const auto textos = servidor.textos();
    for (std::size_t i = textos_antes; i < textos.size(); ++i)
        EXPECT_THAT(base::maiusculas(textos[i]),
                    testing::AnyOf(testing::StartsWith("SELECT "), HasSubstr("SET DATEFORMAT"),
                                   testing::StartsWith("IF @@TRANCOUNT > 0 ROLLBACK ")));
}

} // namespace
} // namespace orvex::testes
