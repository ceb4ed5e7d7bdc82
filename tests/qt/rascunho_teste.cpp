// The offer of a note left unfinished, and Ctrl+Z, on the window of the delivery notes.
#include "platform/diario/rascunhos.h"
#include "platform/qt/janelas/janela_guias_remessa.h"
#include "tests/delivery/ecra_guias.h"
#include "tests/qt/na_janela.h"

namespace orvex::testes {
namespace {

namespace diario_ = platform::diario;

struct Posto : NaJanela<EcraGuias, platform::qt::JanelaGuiasRemessa> {
    explicit Posto(EmpresaTeste& empresa_, const std::filesystem::path& pasta)
        : NaJanela(std::ref(empresa_)),
          rascunhos({.pasta = pasta,
                     .empresa = "E",
                     .diarios = diario_::Gaveta(pasta),
                     .em_curso = [] { return std::filesystem::path("d.diario"); },
                     .engole = [](const std::string& texto) { ADD_FAILURE() << texto; }}) {
        observadores.junta(rascunhos);
        qt.define_rascunhos(rascunhos);
        ecra.utilizador_abre();
    }
    std::string oferta() {
        return em<QWidget>("faixaRascunho").isVisible() ? em<QLabel>("rascunho").text().toStdString() : "";
    }
    std::string guia() { return linhas(ecra.Gr, {"Artigo", "Quant"}); }

    diario_::Rascunhos rascunhos;
};

struct RascunhoNaJanela : testing::Test {
    EmpresaTeste empresa;
    PastaTemporaria pasta;
};

TEST_F(RascunhoNaJanela, UmaGuiaAbandonadaOfereceSeSemTirarOTecladoNemMexerEmNada) {
    {
        Posto posto(empresa, pasta.pasta());
        EXPECT_EQ(posto.oferta(), "");
        posto.joga("«CL'1», Return");
        posto.escolhe(1);
        posto.joga("«0,5», Return");
        Respostas respostas;
        respostas.carrega(para_ok);
        posto.qt.close();
        EXPECT_THAT(respostas.textos, ElementsAre("Abandonar sem gravar?"));
    }
    Posto posto(empresa, pasta.pasta());
    const QRect campo = posto.lugar(posto.em<QWidget>("campo(0)"));
    EXPECT_THAT(posto.oferta(),
                testing::MatchesRegex("Há uma guia por acabar de .*, cliente CL'1, 1 linha."));
    EXPECT_EQ(posto.com_teclado(), "campo(0)");
    EXPECT_TRUE(posto.vazio());
    posto.joga("«CL'1», Return");
    posto.escolhe(2);
    EXPECT_EQ(posto.oferta(), ""); // while another note would be lost
    posto.joga("Alt+N");
    EXPECT_EQ(posto.lugar(posto.em<QWidget>("campo(0)")), campo);
    posto.joga("Alt+R");
    QTRY_COMPARE(posto.guia(), "BOB'1|0.5");
    EXPECT_EQ(posto.oferta(), "");
    EXPECT_EQ(posto.com_teclado(), "Gr");

    posto.diario.do_commit = Diario::Maneira::lanca; // which clears the screen, and says why
    posto.tecla(Qt::Key_C, Qt::AltModifier, {ok});
    EXPECT_TRUE(posto.vazio());
    EXPECT_THAT(posto.oferta(), StartsWith("Pode ter sido emitida")); // no journal tells otherwise
    posto.clica("deitaForaRascunho");
    EXPECT_EQ(posto.oferta(), "");
    posto.joga("Ctrl+Z"); // what may have been issued does not come back, what was given up before it does
    EXPECT_EQ(posto.guia(), "BOB2|1.15");
}

TEST_F(RascunhoNaJanela, CtrlZEDoTextoQueSeEscreveEDepoisDaGuia) {
    Posto posto(empresa, pasta.pasta());
    posto.joga("«CL'1», Return");
    posto.escolhe(1);
    posto.activa();
    posto.joga("«7», Ctrl+Z"); // of the cell
    EXPECT_EQ(posto.em<QTableView>("Gr").findChild<QLineEdit*>()->text(), "2,5");
    posto.joga("Esc, Ctrl+Z");
    EXPECT_EQ(posto.guia(), "");
    posto.escolhe(1);
    posto.joga("Alt+N, «X», Ctrl+Z");
    EXPECT_EQ(posto.ecra.campo(0).Text + posto.guia(), "");
    posto.joga("Ctrl+Z");
    EXPECT_EQ(posto.guia(), "BOB'1|2.5");
    posto.joga("Alt+N");
    EXPECT_EQ(posto.oferta(), ""); // given up
    posto.joga("Ctrl+Z");
    posto.clica("campo(1)");
    posto.escreve("9999");
    posto.tecla(Qt::Key_Tab, {}, {ok}); // there is none
    EXPECT_TRUE(posto.vazio());
    EXPECT_THAT(posto.oferta(), StartsWith("Há uma guia por acabar")); // it was no way of giving it up
    posto.joga("Alt+R");
    QTRY_COMPARE(posto.guia(), "BOB'1|2.5");

    // Loaded over by another note, it is offered; thrown away by a slip, it comes back.
    EXPECT_THAT(posto.tecla(Qt::Key_C, Qt::AltModifier, {ok}), ElementsAre("Foi criado o documento Nº  1"));
    EXPECT_EQ(posto.oferta(), "");
    posto.joga("Ctrl+Z");
    EXPECT_TRUE(posto.vazio());
    posto.joga("«CL'1», Return");
    posto.escolhe(2);
    posto.carrega("1");
    EXPECT_THAT(posto.oferta(), StartsWith("Há uma guia por acabar"));
    posto.clica("deitaForaRascunho");
    posto.joga("Ctrl+Z");
    EXPECT_EQ(posto.botoes(), "-AD");
    posto.joga("Alt+N, Ctrl+Z");
    EXPECT_EQ(posto.guia(), "BOB3|3"); // the second one that is still open
    EXPECT_EQ(posto.oferta(), "");
    posto.joga("Alt+N");
    posto.carrega("1"); // given up before that
    posto.joga("Alt+N, Ctrl+Z");
    EXPECT_EQ(posto.guia(), "BOB3|3");
}

} // namespace
} // namespace orvex::testes
