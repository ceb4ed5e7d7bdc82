// The note on paper: what the sheet says, how it fills its pages, and where the PDF goes.
#include "platform/qt/aplicacao.h"
#include "platform/qt/janelas/janela_guias_remessa.h"
#include "platform/qt/papel/folha.h"
#include "tests/apoio/sem_espaco.h"
#include "tests/delivery/ecra_guias.h"
#include "tests/qt/na_janela.h"

namespace orvex::testes {
namespace {

using delivery::FolhaGuia;

// In a few words: "Cliente: CL'1   José O'Neill, Lda | ...".
std::string junta(const std::vector<FolhaGuia::Dado>& dados) {
    std::string texto;
    for (const auto& [legenda, valor] : dados)
        if (!legenda.starts_with("Data")) texto += legenda + ": " + valor + " | ";
    return texto;
}

std::string junta(const FolhaGuia::Linha& linha) {
    return linha.Artigo + ";" + linha.Nome + ";" + linha.Doc + ";" + linha.PesoLiquido + ";" +
           linha.PesoBruto;
}

struct PapelDaGuia : testing::Test, NaJanela<EcraGuias, platform::qt::JanelaGuiasRemessa> {
    void escolhe_uma_linha() {
        joga("«CL'1», Return, Tab, Tab, Tab, Tab, Return, «0,5», Return, Return, «Sr. D'Orey», Return");
    }
    // Saves under this name, and tells what the boxes said.
    std::vector<std::string> guarda_em(const QString& caminho, bool com_caixa) {
        Respostas respostas;
        respostas.faz([&](QWidget& dialogo) {
            testes::escreve(dialogo, caminho.toUtf8());
            testes::tecla(dialogo, Qt::Key_Return);
        });
        if (com_caixa) respostas.carrega(ok);
        tecla(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
        activa();
        return respostas.textos;
    }
    QTemporaryDir pasta;
};

TEST_F(PapelDaGuia, TemOQueEstaNoEcraPorConfirmarOuEmitido) {
    escolhe_uma_linha();
    ecra.campo(25).Text = "AA-00-AA";
    FolhaGuia folha = folha_da_guia(ecra, "Bobines, Lda.");
    EXPECT_EQ(folha.titulo + folha.numero + "/" + folha.estado, "Guia de Remessa/POR CONFIRMAR");
    EXPECT_THAT(junta(folha.dados),
                testing::StartsWith("Cliente: CL'1   José O'Neill, Lda | Contribuinte: "));
    EXPECT_EQ(junta(folha.transporte), "Matrícula: AA-00-AA | ");
    ASSERT_EQ(folha.linhas.size(), 2U);
    EXPECT_EQ(junta(folha.linhas[0]), "BOB'1;Bobina d'aço;2019/FA/1/123;0,500;0,500");
    EXPECT_EQ(junta(folha.linhas[1]), ";Sr. D'Orey;;;");
    EXPECT_EQ(junta(folha.totais), ";1 linha;;0,500;0,500");

    tecla(Qt::Key_C, Qt::AltModifier, {ok});
    joga("Tab, «1», Tab");
    folha = folha_da_guia(ecra, "Bobines, Lda.");
    EXPECT_EQ(folha.titulo + folha.numero + "/" + folha.estado, "Guia de Remessa1/EMITIDA");
    EXPECT_THAT(junta(folha.dados), testing::StartsWith("Cliente: CL'1   José O'Neill, Lda | "));
    EXPECT_EQ(junta(folha.totais), ";1 linha;;0,500;0,500");
}

TEST_F(PapelDaGuia, SoVaiParaOFicheiroPorInteiroEDizPorqueNaoFoi) {
    for (const auto modificadores :
         {Qt::KeyboardModifiers(Qt::ControlModifier), Qt::ControlModifier | Qt::ShiftModifier})
        EXPECT_THAT(tecla(Qt::Key_P, modificadores, {ok}),
                    ElementsAre("A guia não tem linhas: nada há para imprimir."));
    escolhe_uma_linha();
    const std::string com_teclado_antes = com_teclado();
    EXPECT_THAT(guarda_em(pasta.filePath("Guia"), false), ElementsAre());
    EXPECT_THAT(em<QLabel>("ajuda").text().toStdString(), testing::EndsWith("Guia.pdf»"));
    QFile ficheiro(pasta.filePath("Guia.pdf"));
    ASSERT_TRUE(ficheiro.open(QIODevice::ReadOnly));
    EXPECT_TRUE(ficheiro.readAll().startsWith("%PDF"));

    const SemEspaco cheio(1000);
    EXPECT_THAT(guarda_em(pasta.filePath("Outra"), true),
                ElementsAre(testing::StartsWith("Não foi possível gravar o ficheiro «")));
    EXPECT_FALSE(QFile::exists(pasta.filePath("Outra.pdf")));
    EXPECT_EQ(com_teclado(), com_teclado_antes);
}

TEST(Folha, CadaLinhaFicaInteiraNumaSoPaginaPorBaixoDosCabecalhos) {
    constexpr QSize espaco(2000, 2800);
    constexpr int por_metro = 300 * 10000 / 254, rodape = 2700;
    FolhaGuia guia{.titulo = "Guia de Remessa"};
    for (int i = 0; i < 90; ++i) // with words longer than the column
        guia.linhas.push_back(
            {"BOB1", std::string(static_cast<std::size_t>(i), 'W') + " e mais", "", "1", "1"});
    QImage papel(espaco + QSize(0, 50), QImage::Format_RGB32);
    papel.setDotsPerMeterX(por_metro);
    papel.setDotsPerMeterY(por_metro);
    const platform::qt::Folha folha(guia, papel, espaco);
    EXPECT_GT(folha.paginas(), 2);
    int linhas = 0;
    for (int pagina = 0; pagina < folha.paginas(); ++pagina) {
        papel.fill(Qt::white);
        QPainter pintor(&papel);
        folha.pinta(pintor, pagina);
        pintor.end();
        bool cabecalhos = false;
        QColor antes;
        for (int y = 0; y < papel.height(); ++y) {
            const QColor cor = papel.pixelColor(1, y);
            cabecalhos = cabecalhos || cor == platform::qt::cor_etiquetas;
            if (cor == Qt::lightGray && antes != Qt::lightGray) { // the rule under a line
                ++linhas;
                EXPECT_LT(y, rodape) << "página " << pagina;
            }
            antes = cor;
            for (int x = 0; y >= espaco.height() && x < espaco.width(); ++x)
                ASSERT_EQ(papel.pixel(x, y), QColor(Qt::white).rgb()) << "fora da página " << pagina;
        }
        EXPECT_TRUE(cabecalhos) << pagina;
    }
    EXPECT_EQ(linhas, 89); // the last one has the rule of the totals
}

} // namespace
} // namespace orvex::testes
