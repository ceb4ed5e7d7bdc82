// Views of the enquiries taken along: the clipboard, files, sheets, a client's statement and labels, which a
// real reader of barcodes reads back.
#include "base/moeda.h"
#include "livro/consultas/historia.h"
#include "platform/qt/consulta/extracto.h"
#include "platform/qt/consulta/folha_vista.h"
#include "platform/qt/consulta/janela_etiquetas.h"
#include "platform/qt/consulta/levar.h"
#include "tests/qt/apoio_qt.h"

#include <zbar.h>

#include <csignal>
#include <set>
#include <sys/resource.h>

namespace orvex::testes {
namespace {

using namespace platform::qt::consulta;
using namespace livro::consultas;
using testing::HasSubstr;

// A device that keeps the texts written on it, and where.
class Escrita : public QPaintDevice, public QPaintEngine {
  public:
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    Type type() const override { return User; }
    void drawTextItem(const QPointF& onde, const QTextItem& texto) override {
        textos.push_back(texto.text().trimmed().toStdString());
        fundo = std::max(fundo, onde.y());
        direita = std::max(direita, onde.x() + texto.width());
        for (const auto& [y, x, fim] : lugares) // nothing stands upon something else
            EXPECT_TRUE(y != onde.y() || fim <= onde.x() + 1 || x >= onde.x() + texto.width() - 1)
                << textos.back();
        lugares.push_back({onde.y(), onde.x(), onde.x() + texto.width()});
    }
    QPaintEngine* paintEngine() const override { return const_cast<Escrita*>(this); }

    static constexpr QSize pontos{595, 842};
    std::vector<std::string> textos;
    std::vector<std::array<qreal, 3>> lugares;
    qreal fundo = 0, direita = 0;

  protected:
    int metric(PaintDeviceMetric qual) const override {
        switch (qual) {
        case PdmWidth:
            return pontos.width();
        case PdmHeight:
            return pontos.height();
        case PdmNumColors:
            return INT_MAX;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return static_cast<int>(devicePixelRatioFScale());
        default:
            return 72; // dots an inch
        }
    }
};

// What is written on each page, within its edges.
std::vector<std::vector<std::string>> paginas(const Impressa& esta, QSize espaco = Escrita::pontos) {
    Escrita papel;
    const FolhaVista folha(esta, papel, QSizeF(espaco));
    std::vector<std::vector<std::string>> todas;
    for (int i = 0; i < folha.paginas(); ++i) {
        QPainter pintor(&papel);
        folha.pinta(pintor, i);
        pintor.end();
        todas.push_back(std::exchange(papel.textos, {}));
        papel.lugares.clear();
    }
    EXPECT_LE(papel.fundo, espaco.height());
    EXPECT_LE(papel.direita, espaco.width());
    return todas;
}

Recolhida vista_de(int linhas) {
    Recolhida vista;
    vista.vista({"v", "Parados 10/20", {{"Há mais de", "90 dias"}}, true});
    vista.quadro(
        {"q",
         "Itens",
         {{"a", "Artigo", Tipo::codigo}, {"d", "Designação"}, {"o", "Obs"}, {"p", "Peso (t)", Tipo::peso}}});
    const std::string longa = "uma designação que não cabe numa linha só do papel, " + std::string(90, 'W');
    for (int i = 0; i < linhas; ++i)
        vista.linha({"L" + std::to_string(i), i % 7 == 0 ? longa : "curta", i % 5 == 0 ? longa : "",
                     base::Moeda::de_inteiro(i)});
    vista.total({"Total", {}, {}, base::Moeda::de_inteiro(99)});
    return vista;
}

TEST(FolhaDaVista, TemCadaLinhaUmaVezECadaPaginaDizDeQueE) {
    for (int linhas = 18; linhas < 90; ++linhas) { // also the one that the totals have no room behind
        const Recolhida vista = vista_de(linhas);
        const auto todas = paginas({vista, "Bobines, Lda.   EMPRESA DE DEMONSTRAÇÃO", {}});
        std::multiset<std::string> vistas;
        for (std::size_t i = 0; i < todas.size(); ++i) {
            const auto rodape = "Página " + std::to_string(i + 1) + " de " + std::to_string(todas.size());
            EXPECT_THAT(todas[i], testing::IsSupersetOf(
                                      {std::string("Bobines, Lda.   EMPRESA DE DEMONSTRAÇÃO"),
                                       std::string("Parados 10/20"), std::string("Há mais de: 90 dias"),
                                       std::string("Peso (t)"), rodape}));
            for (const std::string& texto : todas[i])
                if (texto.starts_with('L')) vistas.insert(texto);
        }
        EXPECT_EQ(vistas.size(), static_cast<std::size_t>(linhas));
        EXPECT_EQ(std::set(vistas.begin(), vistas.end()).size(), vistas.size());
        EXPECT_THAT(todas.back(),
                    testing::IsSupersetOf({std::string("99,000"), "L" + std::to_string(linhas - 1)}));
    }
    Recolhida nota;
    nota.quadro({"ficha", "Ficha", {{"n", "Nota"}}, true});
    nota.linha({QString("palavra ").repeated(2000).toStdString()});
    EXPECT_GT(paginas({nota, "Bobines, Lda.", {}}).size(), 1U);
}

TEST(FolhaDaVista, NaoPerdeLetrasEmPapelPequeno) {
    Recolhida vista;
    vista.quadro({"q", "Itens", {{"a", "Artigo", Tipo::codigo}, {"d", "Designação"}, {"o", "Observações"}}});
    Linha linha{"BA000265", std::string(17, 'W') + " e mais", "uma nota"};
    for (int i = 0; i < 5; ++i) {
        vista.partes[0].quadro.colunas.push_back({"p", "Peso Líquido (t)", Tipo::peso});
        linha.push_back(base::Moeda::de_decimos_milesimos(12345678900));
    }
    vista.linha(linha);
    const auto todas = paginas({vista, "Bobines, Lda.", {}}, {340, 515}); // A5, within its margins
    EXPECT_EQ(std::count(todas[0].begin(), todas[0].end(), "1234567,890"), 5);
    std::string escrito;
    for (const std::string& texto : todas[0])
        escrito += texto;
    EXPECT_EQ(std::count(escrito.begin(), escrito.end(), 'W'), 17);
}

TEST(ExtractoDoCliente, DizEmPalavrasOQueOLivroNaoSabe) {
    Recolhida vista;
    vista.vista({"cliente", "Cliente C1", {}, false});
    vista.quadro(
        {"ficha", "", {{"cliente", ""}, {"nome", ""}, {"data", ""}, {"artigos", ""}, {"peso", ""}}, true});
    vista.linha({"C1", "Metalúrgica", base::DataHora{2026, 10, 31}, 3, base::Moeda::de_inteiro(5)});
    vista.quadro({"artigos", "", {{"artigo", ""}, {"peso", "", Tipo::peso}, {"ressalvas", ""}}});
    vista.linha({"A1", base::Moeda::de_inteiro(5), {}});
    vista.linha({"A2", {}, sem_inicio});
    vista.linha({"A3", base::Moeda::de_inteiro(5), "Há um movimento sem peso. O livro não diz mais"});
    vista.linha({"A4", base::Moeda::de_inteiro(5), "O livro não diz como passou de C1 para C2"});
    const Extracto extracto = extracto_de(vista);
    const auto todas = paginas({extracto.vista, "Bobines, Lda.", extracto.fecho});
    ASSERT_EQ(todas.size(), 1U);
    EXPECT_THAT(todas[0], testing::IsSupersetOf({"Bobines, Lda.", "Extracto de artigos em poder do cliente",
                                                 "Cliente: C1 – Metalúrgica     À data de: 31-10-2026", "(1)",
                                                 "(2) (4)", "(4)", "Assinatura e carimbo", "Página 1 de 1"}));
    EXPECT_THAT(todas[0], testing::Contains(testing::StartsWith("(1) Os nossos registos")));
    EXPECT_THAT(todas[0], testing::Each(testing::Not(HasSubstr("livro"))));
}

TEST(Copia, DizACadaCelulaSeETextoOuNumero) {
    Recolhida vista;
    vista.vista({"v", "V", {}, true});
    vista.quadro({"q", "Q", {{"c", "Código", Tipo::codigo}, {"p", "Peso (t)", Tipo::peso}, {"n", "Nome"}}});
    vista.linha({"000123", base::Moeda::de_decimos_milesimos(12500), "Aço\t<1>\n2"});
    copia(vista);
    const QMimeData& dados = *QGuiApplication::clipboard()->mimeData();
    EXPECT_EQ(dados.text().toStdString(), "Código\tPeso (t)\tNome\n000123\t1,250\tAço <1> 2\n");
    EXPECT_THAT(dados.html().toStdString(),
                testing::AllOf(HasSubstr("sdnum=\"2070;0;@\">000123</td>"),
                               HasSubstr("sdval=\"1.25\" sdnum=\"2070;0;#,##0.000\">1,250</td>"),
                               HasSubstr(">Aço &lt;1> 2</td></tr>\n</table>")));
}

TEST(Ficheiro, DeixaOQueLaEstavaQuandoODiscoNaoChega) {
    QTemporaryDir pasta;
    QFile antes(pasta.filePath("a.csv"));
    ASSERT_TRUE(antes.open(QIODevice::WriteOnly) && antes.write("antes") == 5);
    antes.close();
    QWidget janela;
    janela.show();
    rlimit normal{};
    getrlimit(RLIMIT_FSIZE, &normal);
    const auto sinal = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit pouco{20000, normal.rlim_max};
    for (const auto& guarda : {guarda_csv, guarda_xlsx}) {
        Respostas respostas;
        respostas.faz([&](QWidget& dialogo) {
            const auto nomes = dialogo.findChildren<QLineEdit*>();
            EXPECT_THAT(nomes.first()->text().toStdString(), testing::StartsWith("Parados 10-20 2"));
            nomes.first()->setText(antes.fileName());
            // Later: the question that it brings up is answered once this is.
            QTimer::singleShot(0, &dialogo, [&dialogo] { testes::tecla(dialogo, Qt::Key_Return); });
        });
        respostas.carrega({Qt::Key_Left, Qt::Key_Return}); // replaced
        respostas.carrega({Qt::Key_Return});
        setrlimit(RLIMIT_FSIZE, &pouco);
        EXPECT_EQ(guarda(janela, vista_de(5000)), "");
        setrlimit(RLIMIT_FSIZE, &normal);
        EXPECT_THAT(respostas.textos.back(), HasSubstr(antes.fileName().toStdString()));
    }
    std::signal(SIGXFSZ, sinal);
    ASSERT_TRUE(antes.open(QIODevice::ReadOnly));
    EXPECT_EQ(antes.readAll(), "antes");
    EXPECT_EQ(QDir(pasta.path()).entryList(QDir::Files).size(), 1);
}

TEST(Ficheiro, TemSempreOSufixoEPerguntaAntesDeSubstituir) {
    QTemporaryDir pasta;
    QFile antes(pasta.filePath("a 1.5.csv"));
    ASSERT_TRUE(antes.open(QIODevice::WriteOnly));
    QWidget janela;
    janela.show();
    Respostas respostas;
    const auto escolhe = [&](const char* nome) {
        respostas.faz([caminho = pasta.filePath(nome)](QWidget& dialogo) {
            dialogo.findChildren<QLineEdit*>().first()->setText(caminho);
            testes::tecla(dialogo, Qt::Key_Return);
        });
    };
    escolhe("a 1.5");
    respostas.carrega({Qt::Key_Return}); // no
    escolhe("b 1.5");
    guarda_csv(janela, vista_de(1));
    EXPECT_THAT(respostas.textos, testing::ElementsAre(HasSubstr("a 1.5.csv já existe")));
    EXPECT_EQ(antes.size(), 0);
    EXPECT_TRUE(QFile::exists(pasta.filePath("b 1.5.csv")));
}

// What a reader finds in the picture, in order.
std::vector<std::string> lidos(const QImage& imagem) {
    QImage cinzenta = imagem.convertToFormat(QImage::Format_Grayscale8);
    std::string bytes;
    for (int y = 0; y < cinzenta.height(); ++y)
        bytes.append(reinterpret_cast<const char*>(cinzenta.constScanLine(y)),
                     static_cast<std::size_t>(cinzenta.width()));
    zbar::ImageScanner leitor;
    leitor.set_config(zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 0);
    leitor.set_config(zbar::ZBAR_CODE128, zbar::ZBAR_CFG_ENABLE, 1);
    zbar::Image esta(static_cast<unsigned>(cinzenta.width()), static_cast<unsigned>(cinzenta.height()),
                     "Y800", bytes.data(), bytes.size());
    leitor.scan(esta);
    std::vector<std::string> codigos;
    for (auto simbolo = esta.symbol_begin(); simbolo != esta.symbol_end(); ++simbolo)
        codigos.push_back(simbolo->get_data());
    return codigos;
}

TEST(Etiquetas, SaoLidasEmCadaTamanhoEDizemOQueNaoCabe) {
    for (const TamanhoDeEtiqueta& tamanho : tamanhos_de_etiqueta()) {
        for (const char* codigo : {"BA000265", "000123", "00123", "7", "ab-1/2 x", "000123456789012345"}) {
            const Etiqueta esta{codigo, "Bobine de aço laminado a frio, decapada e oleada, de 1,5 x 1250 mm"};
            ASSERT_EQ(cabe(tamanho, esta), Cabe::sim) << codigo;
            const QImage imagem = amostra_da_etiqueta(tamanho, esta);
            EXPECT_THAT(lidos(imagem), testing::ElementsAre(codigo)) << tamanho.nome.toStdString();
            const int y = imagem.height() * 3 / 4;
            for (int x = 0; x < imagem.width(); ++x) // whole dots, and white at the ends
                EXPECT_TRUE(imagem.pixelColor(x, y) == Qt::white ||
                            (imagem.pixelColor(x, y) == Qt::black && x > 20 && x < imagem.width() - 20));
        }
        EXPECT_EQ(cabe(tamanho, {QString(60, 'W'), {}}), Cabe::nao);
        EXPECT_EQ(cabe(tamanho, {"AÇO1", {}}), Cabe::letras);
    }
}

TEST(Etiquetas, NaoTomamUmCodigoLidoPorTeclas) {
    QWidget pai;
    JanelaEtiquetas janela(pai, {{"AA1", "a"}});
    janela.show();
    const auto& tamanho = widget<QComboBox>(janela, "tamanho");
    const auto& copias = widget<QSpinBox>(janela, "copias");
    const int antes = tamanho.currentIndex();
    const Respostas nenhuma; // printing would say that there is no printer
    for (const char* campo : {"tamanho", "copias", "primeira", "imprimir"})
        for (const QString codigo : {"7", "23456", "A4 60"}) {
            widget<QWidget>(janela, campo).setFocus();
            QTest::keyClicks(&com_foco(janela), codigo);
            tecla(janela, Qt::Key_Return);
            EXPECT_EQ(tamanho.currentIndex(), antes) << campo;
            EXPECT_EQ(copias.value(), 1) << campo;
            QTest::qWait(200);
        }
    widget<QWidget>(janela, "copias").setFocus();
    QTest::keyClicks(&com_foco(janela), "12");
    EXPECT_EQ(copias.value(), 12);
}

TEST(Etiquetas, EnchemAFolhaAPartirDoPrimeiroLugarLivre) {
    for (const TamanhoDeEtiqueta& tamanho : tamanhos_de_etiqueta()) {
        if (tamanho.por_folha() == 1) continue;
        QImage papel(2480, 3508, QImage::Format_RGB32); // A4, 300 dots an inch
        papel.setDotsPerMeterX(11811);
        papel.setDotsPerMeterY(11811);
        const FolhaEtiquetas folha(tamanho, {{"AA1", "a"}, {"BB2", "b"}, {"CC3", "c"}},
                                   tamanho.por_folha() - 2, papel, papel.size());
        ASSERT_EQ(folha.paginas(), 2);
        for (const auto& esperados : {std::vector<std::string>{"AA1", "BB2"}, {"CC3"}}) {
            papel.fill(Qt::white);
            QPainter pintor(&papel);
            folha.pinta(pintor, esperados.size() == 2 ? 0 : 1);
            pintor.end();
            EXPECT_THAT(lidos(papel), testing::UnorderedElementsAreArray(esperados));
            const QImage meia = papel.copy(0, 0, papel.width(), papel.height() / 2);
            EXPECT_EQ(lidos(meia).size(), esperados.size() == 2 ? 0U : 1U);
        }
    }
}

} // namespace
} // namespace orvex::testes
