#include "platform/diario/rascunhos.h"
#include "tests/apoio/empresa_teste.h"

namespace fs = std::filesystem;
using namespace orvex;
using namespace orvex::platform::diario;
using delivery::Rascunho;

namespace {

struct OsRascunhos : testing::Test {
    testes::PastaTemporaria pasta;
    fs::path dos_rascunhos = pasta.pasta() / "ç" / "rascunhos";
    Gaveta gaveta{pasta.pasta() / "diarios"};
    std::unique_ptr<FicheiroDiario> diario; // of the confirmation that is running
    std::vector<std::string> engolidas;

    Rascunhos janela() {
        return Rascunhos({.pasta = dos_rascunhos,
                          .empresa = "E",
                          .diarios = gaveta,
                          .em_curso = [this] { return diario->caminho(); },
                          .engole = [this](const std::string& texto) { engolidas.push_back(texto); }});
    }
    static Rascunho guia(const char* cliente = "CL'1") {
        return {.Cliente = cliente,
                .Armazem = 1,
                .Campos = {{25, "00-ÇÃ-\"1\""}},
                .Carga = base::DataHora{2019, 3, 16, 8, 30, 0},
                .linhas = {{"2019/FA/1/123/2", "BOB2", "Bobina d'aço", testes::m("1.15"), testes::m("1.25")},
                           {.Nome = "Nota"}}};
    }
    void confirma(Rascunhos& nesta) {
        const confirmacao::Intencao intencao{.fluxo = confirmacao::Fluxo::emite_guia};
        diario = gaveta.cria(linha_da_intencao({}, intencao));
        nesta.intencao(intencao);
    }
    fs::path larga_diario() {
        const fs::path este = diario->caminho();
        diario.reset();
        return este;
    }
    static std::string ofertas(Rascunhos&& nesta) {
        std::string todas;
        for (; nesta.oferta() != nullptr; nesta.deita_fora())
            todas += nesta.oferta()->rascunho.Cliente + "lps"[static_cast<int>(nesta.oferta()->estado)];
        return todas;
    }
    std::size_t ficheiros() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(dos_rascunhos), fs::directory_iterator()));
    }
};

} // namespace

TEST_F(OsRascunhos, DeCadaJanelaFicaAGuiaSuaEDaQueFechouOfereceSeTudo) {
    {
        Rascunhos viva = janela(), fechada = janela();
        viva.guarda(guia("VIVA"));
        fechada.guarda(guia("ANTES"));
        fechada.guarda(guia());
        fechada.larga(); // another note is loaded, and then one begun
        EXPECT_EQ(fechada.oferta()->rascunho, guia());
        fechada.guarda(guia("CL2"));
        EXPECT_EQ(janela().oferta(), nullptr); // nobody takes what a living window has
        fechada.guarda(std::nullopt);
        EXPECT_EQ(ficheiros(), 4);
        { const Rascunhos acaba = std::move(fechada); }
        Rascunhos outra = janela();
        ASSERT_NE(outra.oferta(), nullptr);
        EXPECT_EQ(outra.oferta()->rascunho, guia());
        outra.retoma();
        EXPECT_EQ(outra.oferta(), nullptr);
        outra.guarda(std::nullopt); // emptied
        EXPECT_EQ(ficheiros(), 2);
    }
    EXPECT_EQ(ofertas(janela()), "VIVAl");
    EXPECT_EQ(ficheiros(), 0);
}

// What a window left in the middle of a confirmation, by what its journal says when the next one opens.
TEST_F(OsRascunhos, UmaGuiaPorConfirmarSoSeOfereceQuandoSeSabeQueNaoFoiEmitida) {
    const std::pair<std::function<void()>, const char*> casos[] = {
        {[] {}, "CL'1p"},
        {[this] { diario->acaba(Resultado::desfeita); }, "CL'1l"},
        {[this] { diario->acaba(Resultado::feita); }, ""},
        {[this] { diario->acaba(Resultado::por_ver); }, "CL'1s"},
        {[this] { diario->escreve(linha_do_fim(Resultado::feita), Descarga::nao); }, ""}, // not renamed
        {[this] { fs::remove(larga_diario()); }, "CL'1s"},
        {[this] { std::ofstream(larga_diario()) << "estragado"; }, "CL'1s"}};
    for (const auto& [acontece, oferecidas] : casos) {
        {
            Rascunhos morta = janela();
            morta.guarda(guia());
            confirma(morta);
        }
        acontece();
        EXPECT_EQ(ofertas(janela()), oferecidas);
    }
    // One window that lives on: refused, failed twice, done.
    Rascunhos viva = janela();
    viva.guarda(guia());
    viva.compensada({}); // before it began, and the screen keeps all
    viva.guarda(guia());
    EXPECT_EQ(viva.oferta(), nullptr);
    for (const auto& [resultado, estado] : {std::pair(Resultado::por_ver, 's'), {Resultado::desfeita, 'l'}}) {
        confirma(viva);
        diario->acaba(resultado);
        viva.compensada({});
        viva.guarda(std::nullopt); // the screen was cleared
        ASSERT_NE(viva.oferta(), nullptr);
        EXPECT_EQ("lps"[static_cast<int>(viva.oferta()->estado)], estado);
        viva.guarda(guia("OUTRA"));
    }
    confirma(viva);
    viva.feita();
    viva.guarda(std::nullopt);
    EXPECT_EQ(ofertas(std::move(viva)), "OUTRAlCL'1s");
}

TEST_F(OsRascunhos, OQueNaoSePercebeFicaDeLadoEOQueNaoSeEscreveNaoParaNada) {
    { janela().guarda(guia()); }
    const fs::path ficheiro = [&] {
        for (const auto& este : fs::directory_iterator(dos_rascunhos))
            if (este.path().extension() == ".rascunho") return este.path();
        return fs::path();
    }();
    const std::string bom = testes::conteudo_de(ficheiro);
    const auto com = [&](const char* isto, const char* aquilo) {
        std::string outro = bom;
        return outro.replace(outro.find(isto), std::string_view(isto).size(), aquilo);
    };
    for (const std::string& mau :
         {std::string(), bom.substr(0, bom.size() / 2), com("\"versao\":1", "\"versao\":2"),
          com("1.15", "-1.15"), com("2019-03-16", "2019-13-16"), com("CL'1", "\xff")}) {
        std::ofstream(ficheiro, std::ios::binary) << mau;
        EXPECT_EQ(ofertas(janela()), "") << mau;
        EXPECT_EQ(testes::conteudo_de(fs::path(ficheiro).replace_extension(".estragado")), mau);
    }
    EXPECT_EQ(engolidas.size(), 6);
    std::ofstream(ficheiro, std::ios::binary) << com("\"E\"", "\"F\""); // of a company that was here before
    EXPECT_EQ(ofertas(janela()), "");
    EXPECT_TRUE(fs::exists(ficheiro));

    fs::remove_all(dos_rascunhos);
    std::ofstream(dos_rascunhos) << "no folder";
    Rascunhos sem_pasta = janela();
    engolidas.clear();
    for (const char* cliente : {"UM", "DOIS"})
        sem_pasta.guarda(guia(cliente));
    confirma(sem_pasta);
    EXPECT_TRUE(sem_pasta.avariado());
    EXPECT_EQ(engolidas.size(), 1); // once
    fs::remove(dos_rascunhos);
    sem_pasta.guarda(guia());
    EXPECT_FALSE(sem_pasta.avariado());

    // Neither marked nor taken away: nothing is confirmed.
    for (const auto& este : fs::directory_iterator(dos_rascunhos))
        if (fs::path nota = este.path(); nota.extension() == ".rascunho") {
            fs::remove(nota);
            fs::create_directories(nota / "cheia");
        }
    EXPECT_THROW(confirma(sem_pasta), confirmacao::Recusada);
}
