// The windows of the screens: their layout, and the work of each by keyboard and mouse.
#include "base/versao.h"
#include "platform/qt/janelas/janela_guias_remessa.h"
#include "platform/qt/janelas/janela_mov_stocks.h"
#include "platform/qt/janelas/janela_trf_bobines.h"
#include "tests/adjust/ecra_ajuste.h"
#include "tests/delivery/ecra_guias.h"
#include "tests/qt/na_janela.h"
#include "tests/transfer/ecra_trf.h"

#include <map>

namespace orvex::testes {
namespace {

using platform::qt::JanelaGuiasRemessa;

struct JanelaDasGuias : testing::Test, NaJanela<EcraGuias, JanelaGuiasRemessa> {
    // Where every control in sight lies in the window.
    std::map<std::string, QRect> lugares() {
        std::map<std::string, QRect> todos;
        for (const common::Controlo* controlo : ecra.controlos())
            if (const auto* w = qt.findChild<QWidget*>(controlo->nome.c_str()); w && w->isVisible())
                todos[controlo->nome] = lugar(*w);
        return todos;
    }
};

TEST_F(JanelaDasGuias, TemUmWidgetParaCadaControloEDizSempreEmQueEmpresaEsta) {
    for (const common::Controlo* controlo : ecra.controlos()) {
        const bool guardado = controlo->nome == "campo(11)"; // by the screen, shown nowhere
        EXPECT_EQ(qt.findChild<QWidget*>(controlo->nome.c_str()) == nullptr, guardado) << controlo->nome;
    }
    EXPECT_EQ(em<QLabel>("demonstracao").text(), "EMPRESA DE DEMONSTRAÇÃO");
    for (const char* parte : {"Bobines, Lda.", "SQLite", "demo", base::versao()})
        EXPECT_TRUE(em<QLabel>("sessao").text().contains(parte)) << parte;

    std::string aviso;
    platform::qt::LinhaEstado linha({"E", "SQLite", "demo", true, [&aviso] { return aviso; }});
    aviso = "SEM REGISTO";
    linha.mostra_estado({});
    EXPECT_TRUE(linha.findChild<QLabel*>("sessao")->text().startsWith("SEM REGISTO   Empresa: E "));
}

TEST_F(JanelaDasGuias, CabeInteiraNumEcraPequenoENadaSaiDoLugarComNomesCompridosOuComOPainelDaDevolucao) {
    qt.resize(1024, 768);
    cabe_em({683, 512}); // 1024 x 768 at 150 %
    const auto antes = lugares();
    ecra.Label2(1).Caption = std::string(300, 'W');
    ecra.Frame3.Visible = true;
    ecra.btConf(0).Enabled = false;
    ecra.cb1(0).itens = {std::string(60, 'W')};
    qt.mostra();
    const auto depois = lugares();
    EXPECT_GT(depois.size(), antes.size());
    for (const auto& [nome, lugar] : depois)
        EXPECT_TRUE(qt.rect().contains(lugar)) << nome;
    for (const auto& [nome, lugar] : antes)
        EXPECT_EQ(depois.at(nome), lugar) << nome;
}

TEST_F(JanelaDasGuias, A200PorCentoNumPortatilOsBotoesFicamAVistaEOTecladoTrazOResto) {
    const QSize portatil(675, 345); // 1366 x 768, less the frame and the bar of the desktop
    cabe_em(portatil);
    qt.resize(portatil);
    joga("«CL'1», Return, Alt+F, Return");
    for (int tabs = 0; tabs < 25; ++tabs, tecla(Qt::Key_Tab)) {
        const QWidget& este = *qt.focusWidget();
        const QRect visto = este.visibleRegion().boundingRect();
        const bool grelha = qobject_cast<const QTableView*>(&este) != nullptr;
        EXPECT_EQ(visto.width(), este.width()) << com_teclado();
        EXPECT_GE(visto.height(), grelha ? 80 : este.height()) << com_teclado();
        EXPECT_EQ(em<QWidget>("btSair").visibleRegion().boundingRect(), em<QWidget>("btSair").rect());
    }
}

TEST_F(JanelaDasGuias, EmiteEAnulaUmaGuiaSoComOTeclado) {
    joga("«CL'1», Return");
    EXPECT_EQ(em<QLabel>("Label2(1)").text(), "José O'Neill, Lda");
    for (int tabs = 0; tabs < 20 && com_teclado() != "Detalhe"; ++tabs)
        tecla(Qt::Key_Tab);
    tecla(Qt::Key_Return);
    EXPECT_EQ(com_teclado(), "Gr");
    joga("«0,5», Return, Return, «Sr. D'Orey», Return"); // the cursor is in the weight of the line picked
    EXPECT_THAT(tecla(Qt::Key_C, Qt::AltModifier, {ok}), ElementsAre("Foi criado o documento Nº  1"));
    EXPECT_EQ(com_teclado(), "campo(0)");
    const std::string da_guia = "select NumLinha, Artigo, Qtd, PesoBruto from xel_ORVEX_Mov where TpDoc='GR'";
    EXPECT_EQ(empresa.linhas(da_guia), "3|BOB'1|0.5|0.5");

    joga("Tab, «0001», Tab");
    EXPECT_EQ(ecra.campo(1).Text, "1");
    EXPECT_EQ(em<QTableView>("Gr").model()->index(3, 1).data().toString(), "Sr. D'Orey");
    tecla(Qt::Key_A, Qt::AltModifier, {para_ok});
    EXPECT_EQ(empresa.linhas(da_guia), "");
    EXPECT_TRUE(ecra.campo(1).Text.empty());
}

struct ComGuia : EcraGuias {
    ComGuia() { emite({1, 3}); }
};
struct JanelaDaDevolucao : testing::Test, NaJanela<ComGuia, JanelaGuiasRemessa> {
    bool marcada() { return ecra.Final.valor(0, "Transf").logico(); }
};

TEST_F(JanelaDaDevolucao, MostraOQueFoiFeitoDaGuiaOQueVoltaEQuantoPesa) {
    const auto texto_de = [this](const char* nome) { return em<QLabel>(nome).text().toStdString(); };
    const auto celula_de = [this](const char* grelha, int linha, int coluna) {
        return em<QTableView>(grelha).model()->index(linha, coluna).data().toString().toStdString();
    };
    const int do_peso = 6, da_volta = 8; // the window's own, behind the six that are given
    joga("Tab, «1», Tab");
    EXPECT_EQ(texto_de("situacao"), "EMITIDA");
    EXPECT_EQ(ecra.Label2(1).Caption + texto_de("Label2(1)"), "José O'Neill, Lda");
    EXPECT_EQ(texto_de("totais_guia"), "2 linhas   P.Liq. 5,500 t   Peso Bruto 2,600 t");
    EXPECT_EQ(celula_de("Gr", 0, 2) + celula_de("Gr", 2, 2), "2,500") << "a line of text weighs nothing";
    for (const char* codigo : {"CL2", "CL'1"}) { // typed over what was loaded
        ecra.campo(0).Text = codigo;
        qt.mostra();
        EXPECT_EQ(em<QLabel>("situacao").isVisible(), codigo == std::string("CL'1"));
    }
    joga("Alt+D, Space");
    EXPECT_EQ(texto_de("totais_devolucao"),
              "Volta: 1 linha   P.Liq. 2,500 t   Peso Bruto 2,600 t   para: Armazém ORVEX");
    EXPECT_EQ(celula_de("Final", 0, do_peso) + celula_de("Final", 0, da_volta), "2,500");
    tecla(Qt::Key_D, Qt::AltModifier, {para_ok, ok});
    EXPECT_EQ(texto_de("ajuda"), "Devolvida GR/1/1 em GV/1/1, CL'1, 1 linha, 2,500 t");
    joga("Tab, «1»");
    EXPECT_THAT(texto_de("ajuda"), HasSubstr("Enter seguinte"));
    joga("Tab, Alt+D");
    EXPECT_EQ(texto_de("situacao") + celula_de("Final", 0, da_volta) + celula_de("Final", 1, da_volta),
              "DEVOLVIDA EM PARTEdevolvida em GV/1/1");
    diario.lanca_em("CONSULTA Select g.NVias", base::Falha("Sem rede."));
    joga("Esc, Alt+N, Tab, «1», Tab");
    EXPECT_THAT(texto_de("situacao"), HasSubstr("Não foi possível saber"));
    EXPECT_EQ(em<QLabel>("situacao").toolTip(), "Sem rede.");
}

TEST_F(JanelaDaDevolucao, DevolveUmaLinhaDeUmaGuiaComOTecladoOuORato) {
    const auto& final = em<QTableView>("Final");
    joga("Tab, «1», Tab");
    for (int tabs = 0; tabs <= 3; ++tabs) { // from the grid, the date, each of the buttons
        tecla(Qt::Key_D, Qt::AltModifier);
        EXPECT_EQ(com_teclado(), "Final");
        EXPECT_FALSE(em<QWidget>("campo(0)").isEnabled());
        tecla(Qt::Key_Space);
        EXPECT_TRUE(marcada());
        for (int i = 0; i < tabs; ++i)
            tecla(Qt::Key_Tab);
        EXPECT_TRUE(em<QLabel>("ajuda").text().contains("Esc cancela")) << com_teclado();
        tecla(Qt::Key_Escape);
        EXPECT_FALSE(final.isVisible());
        EXPECT_EQ(com_teclado(), "btGV(0)") << tabs;
    }
    tecla(Qt::Key_Return); // on the button that opened it
    for (const bool esperada : {true, false, true}) {
        clica_celula("Final", 0, ecra.Final.coluna("Transf"));
        EXPECT_EQ(marcada(), esperada);
    }
    EXPECT_THAT(
        tecla(Qt::Key_D, Qt::AltModifier, {para_ok, ok}),
        ElementsAre("Vai proceder à Devolução.\nPretende continuar?", "Foi criado o documento Nº  1"));
    EXPECT_FALSE(final.isVisible());
    EXPECT_EQ(com_teclado(), "campo(0)");
}

constexpr QSize a_200_por_cento{504, 350}; // 1024 x 768, less the frame and the bar of the desktop

using JanelaDosAjustesAberta = NaJanela<EcraAjuste, platform::qt::JanelaMovStocks>;
struct JanelaDosAjustes : testing::Test, JanelaDosAjustesAberta {
    JanelaDosAjustes() : NaJanela(1) {}
};

TEST_F(JanelaDosAjustes, TemTodosOsControlosECabeInteiraNumEcraPequenoA200PorCento) {
    cabe_em(a_200_por_cento);
    ecra.btAnular.Visible = true;
    ecra.Label2(1).Caption = std::string(300, 'W');
    qt.mostra();
    qt.resize(qt.minimumSizeHint());
    for (const common::Controlo* controlo : ecra.controlos())
        EXPECT_TRUE(qt.rect().contains(lugar(em<QWidget>(controlo->nome.c_str())))) << controlo->nome;
}

TEST_F(JanelaDosAjustes, FazSubstituiEAnulaUmaSobraSoComOTeclado) {
    tecla(Qt::Key_F4, {}, {ok}); // the first item of the list
    EXPECT_EQ(em<QLabel>("Label2(1)").text(), "Bobina d'aço");
    EXPECT_EQ(com_teclado(), "campo(2)");
    joga("Return, «6»");
    EXPECT_EQ(em<QLabel>("diferenca").text(), "+1000 kg");
    EXPECT_EQ(em<QLabel>("diferenca").palette().color(QPalette::Window), platform::qt::cor_aviso);
    joga("Return");
    EXPECT_EQ(tecla(Qt::Key_C, Qt::AltModifier, {para_ok, para_ok, ok}).back(),
              "Foi gerado o Documento   :  1");

    tecla(Qt::Key_O, Qt::AltModifier, {ok}); // the first adjustment of the list
    EXPECT_EQ(em<QLineEdit>("campo(3)").text(), "1");
    EXPECT_EQ(em<QLabel>("Label2(3)").text(), "Quantidade");
    EXPECT_EQ(em<QWidget>("campo(3)").accessibleName(), "Quantidade");
    EXPECT_TRUE(em<QWidget>("btAnular").isVisible());
    joga("Return, «0,1»");
    tecla(Qt::Key_C, Qt::AltModifier, {para_ok, ok});
    tecla(Qt::Key_O, Qt::AltModifier, {ok});
    EXPECT_EQ(em<QLabel>("diferenca").text(), "100 kg");
    EXPECT_NE(em<QLabel>("diferenca").palette().color(QPalette::Window), platform::qt::cor_aviso);
    tecla(Qt::Key_A, Qt::AltModifier, {para_ok});
    EXPECT_THAT(em<QLabel>("ajuda").text().toStdString(),
                AllOf(StartsWith("Anulado SB/1/2, "), EndsWith(", 0,100 t")));
    EXPECT_EQ(documentos(), "SB|1|-1; SB|0.1|-1 / ");
    EXPECT_FALSE(em<QWidget>("btAnular").isVisible());
}

TEST_F(JanelaDosAjustes, APerguntaNaoTapaAQuantidadeEASegundaJanelaAbreAoLadoDaPrimeira) {
    tecla(Qt::Key_F4, {}, {ok});
    joga("Return, «6»");
    Respostas respostas;
    respostas.faz([&](QWidget& caixa) {
        const auto& campo = em<QWidget>("campo(3)");
        const QRect com_titulo = caixa.geometry().adjusted(0, -24, 0, 24); // wherever the desktop puts it
        EXPECT_FALSE(com_titulo.intersects(QRect(campo.mapToGlobal(QPoint()), campo.size())));
        testes::tecla(caixa, Qt::Key_Escape);
    });
    tecla(Qt::Key_C, Qt::AltModifier);
    qt.descarrega();
    QTRY_VERIFY(!qt.isVisible()); // and is remembered
    JanelaDosAjustesAberta segunda(1);
    EXPECT_NE(segunda.qt.pos(), qt.pos()) << "the first is still there";
}

TEST_F(JanelaDosAjustes, EnterNaoChegaASairESairComUmaExistenciaPorGravarPergunta) {
    tecla(Qt::Key_F4, {}, {ok});
    joga("Return, «6», Return, Return");
    EXPECT_EQ(com_teclado(), "btConf");
    for (const bool pela_tecla : {true, false}) { // and then by the window's own close box
        Respostas respostas;
        respostas.faz([](QWidget& caixa) {
            testes::escreve(caixa, "NS1"); // as a reader does
            testes::tecla(caixa, Qt::Key_Return);
            EXPECT_TRUE(caixa.isVisible());
            testes::tecla(caixa, Qt::Key_Escape);
        });
        pela_tecla ? tecla(Qt::Key_S, Qt::AltModifier) : void(qt.close());
        EXPECT_THAT(respostas.textos, ElementsAre("Abandonar sem gravar?"));
        EXPECT_TRUE(qt.isVisible());
        activa();
    }
    Respostas respostas;
    respostas.carrega(para_ok);
    tecla(Qt::Key_S, Qt::AltModifier);
    QTRY_VERIFY(!qt.isVisible());
}

using Aberta = NaJanela<EcraTrf, platform::qt::JanelaTrfBobines>;

TEST(JanelaTrfBobines, AposUmaRecusaUmArtigoPassaParaOutroCliente) {
    Aberta aberta(2);
    const QRect antes = aberta.lugar(aberta.em<QWidget>("campo(4)"));
    aberta.escreve("CASA");
    EXPECT_THAT(aberta.tecla(Qt::Key_Return, {}, {ok}),
                ElementsAre("Este Artigo/Num.Série pertence à ORVEX!"));
    EXPECT_EQ(aberta.com_teclado(), "campo(0)");
    aberta.joga("«REEL'1», Return"); // what was refused is selected, and replaced
    EXPECT_EQ(aberta.com_teclado(), "campo(2)");
    aberta.tecla(Qt::Key_F4, {}, {{Qt::Key_Down, Qt::Key_Return}}); // the second client of the list
    EXPECT_EQ(aberta.em<QLabel>("Label2(4)").text(), "Ibérica SL");
    EXPECT_EQ(aberta.lugar(aberta.em<QWidget>("campo(4)")), antes);
    aberta.tecla(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(aberta.rasto(), "CL'1|CL2|-2.5; CL2|CL2|2.5");
    EXPECT_EQ(aberta.em<QLabel>("ajuda").text(), "Transferido REEL'1, CL'1 → CL2, 2,500 t");
}

TEST(JanelaTrfBobines, SemClienteDestinoNaoHaLugarParaEleEEscNoClienteFecha) {
    Aberta aberta(1);
    EXPECT_LT(aberta.lugar(aberta.em<QWidget>("DTPicker1")).top() -
                  aberta.lugar(aberta.em<QWidget>("campo(1)")).bottom(),
              20);
    aberta.cabe_em(a_200_por_cento);
    aberta.joga("«REEL'1», Tab");
    aberta.clica("campo(1)");
    EXPECT_THAT(aberta.tecla(Qt::Key_Escape, {}, {ok}), ElementsAre("Abandonar sem gravar?"));
    aberta.tecla(Qt::Key_A, Qt::AltModifier);
    aberta.clica("campo(1)");
    aberta.tecla(Qt::Key_Escape); // nothing would be lost
    QTRY_VERIFY(!aberta.qt.isVisible());
}

} // namespace
} // namespace orvex::testes
