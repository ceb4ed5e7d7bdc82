// The power goes at any flush of a confirmation, or of the closing of its program: what is on the disk then
// is recovered like what a dead program leaves.
#include "platform/sqlite/empresa.h"
#include "tests/morte/disco_que_esquece.h"
#include "tests/morte/perito.h"

using namespace orvex;
using namespace orvex::testes;

namespace {

namespace fs = std::filesystem;

struct Energia : testing::TestWithParam<confirmacao::Fluxo> {
    PastaTemporaria raiz;
    std::vector<fs::path> cortes;

    // Runs the flow, its journals two folders deep in a folder that is there, and keeps what is on the disk
    // before every flush and at the end: what was flushed alone, and with parts of the rest.
    void corre() {
        const PastaTemporaria diarios;
        DiscoQueEsquece disco(diarios.pasta());
        std::optional<Vida> vida;
        vida.emplace(GetParam(), diarios.pasta() / "diários" / "empresa", disco);
        const fs::path empresa = vida->empresa.pasta();
        const std::string parametros = conteudo_de(empresa / startup::ficheiro_parametros);
        const auto corta = [&] {
            for (int variante = 0; variante < 3; ++variante) {
                const auto n = static_cast<unsigned>(cortes.size());
                cortes.push_back(raiz.pasta() / ("cut" + std::to_string(n)));
                disco.guarda(empresa, cortes.back(), variante == 0 ? std::nullopt : std::optional(n));
                std::ofstream(cortes.back() / empresa.filename() / startup::ficheiro_parametros)
                    << parametros;
            }
        };
        disco.antes_de_descarregar = corta;
        vida->programa->prime();
        corta();
        vida.reset();
        corta();
    }
};

} // namespace

TEST_P(Energia, NadaSePerdeSeFaltaEmQualquerDescarga) {
    Perito perito(GetParam());
    corre();
    EXPECT_GT(cortes.size(), 20);
    std::string defeitos;
    for (const fs::path& corte : cortes)
        defeitos += perito.julga(corte);
    EXPECT_EQ(defeitos, "");
    EXPECT_TRUE(perito.janelas.contains("rows there"));
}

INSTANTIATE_TEST_SUITE_P(Fluxos, Energia, testing::ValuesIn(confirmacao::fluxos),
                         [](const auto& fluxo) { return nome(fluxo.param); });

TEST(Duracao, OQueSeConfirmaEstaNoDiscoNosDoisFicheiros) {
    const EmpresaTeste empresa;
    auto livro = platform::sqlite::abre_empresa(empresa.pasta(), 0);
    auto erp = platform::sqlite::abre_base(empresa.pasta() / platform::sqlite::ficheiro_erp);
    constexpr int completa = 2;
    EXPECT_EQ(livro.execAndGet("pragma main.synchronous").getInt(), completa);
    EXPECT_EQ(livro.execAndGet("pragma erp.synchronous").getInt(), completa);
    EXPECT_EQ(erp.execAndGet("pragma synchronous").getInt(), completa);
    EXPECT_EQ(livro.execAndGet("pragma main.journal_mode").getString(), "wal");
    EXPECT_EQ(erp.execAndGet("pragma journal_mode").getString(), "wal");
}
