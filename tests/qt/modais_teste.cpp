// Modal windows: boxes and search lists.
#include "platform/qt/caixa.h"
#include "platform/qt/listas/modelo_lista.h"
#include "tests/qt/na_janela.h"

namespace orvex::testes {
namespace {

TEST(Caixa, TemBotoesPortuguesesEAsRespostasDoTeclado) {
    using common::Botoes;
    const struct {
        Botoes botoes;
        const char* textos;
        Qt::Key tecla;
        int resposta;
    } casos[] = {{Botoes::ok, "OK|", Qt::Key_Escape, common::resposta_ok},
                 {Botoes::ok_cancelar, "OK|Cancelar|", Qt::Key_Return, common::resposta_cancelar},
                 {Botoes::ok_cancelar, "OK|Cancelar|", Qt::Key_Escape, common::resposta_cancelar},
                 {Botoes::sim_nao, "Sim|Não|", Qt::Key_Return, common::resposta_sim},
                 {Botoes::sim_nao, "Sim|Não|", Qt::Key_Escape, common::resposta_nao},
                 {Botoes::sim_nao, "Sim|Não|", Qt::Key_N, common::resposta_nao}};
    for (const auto& caso : casos) {
        Respostas respostas;
        std::string vistos;
        respostas.faz([&](QWidget& caixa) {
            for (const QAbstractButton* botao : dynamic_cast<QMessageBox&>(caixa).buttons())
                vistos += botao->text().remove('&').toStdString() + "|";
            QTest::keyClick(&caixa, caso.tecla, caso.tecla == Qt::Key_N ? Qt::AltModifier : Qt::NoModifier);
        });
        // The text comes as it is, with one line break for each pair.
        EXPECT_EQ(platform::qt::mostra_caixa(nullptr, "<b>A</b>\n\rB & C\r\nD?", "", common::Icone::nenhum,
                                             caso.botoes),
                  caso.resposta);
        EXPECT_EQ(vistos, caso.textos);
        EXPECT_EQ(respostas.textos, std::vector<std::string>{"<b>A</b>\nB & C\nD?"});
    }
}

TEST(Caixa, SemRespostaPorqueOProgramaAcabaNadaFicaAceite) {
    int dada = 0;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [] { QCoreApplication::exit(1); });
        dada = 10 * platform::qt::mostra_caixa(nullptr, "?", "", {}, common::Botoes::ok_cancelar);
        dada += platform::qt::mostra_caixa(nullptr, "?", "", {}, common::Botoes::sim_nao);
    });
    EXPECT_EQ(QCoreApplication::exec(), 1);
    EXPECT_EQ(dada, 10 * common::resposta_cancelar + common::resposta_nao);
}

TEST(Caixa, MostraPorInteiroUmTextoComprido) {
    for (const int palavras : {1, 8, 60}) {
        Respostas respostas;
        respostas.faz([&](QWidget& caixa) {
            const auto& texto = widget<QLabel>(caixa, "qt_msgbox_label");
            const QRect precisa = texto.fontMetrics().boundingRect(
                QRect(0, 0, texto.contentsRect().width(), 10'000), Qt::TextWordWrap, texto.text());
            EXPECT_LE(precisa.width(), texto.width()) << palavras;
            EXPECT_LE(precisa.height(), texto.height()) << palavras;
            EXPECT_TRUE(texto.wordWrap() || precisa.height() < 2 * texto.fontMetrics().lineSpacing());
            QTest::keyClick(&caixa, Qt::Key_Return);
        });
        std::string texto;
        for (int i = 0; i < palavras; ++i)
            texto += "movimento ";
        platform::qt::mostra_caixa(nullptr, texto, "", common::Icone::critico, common::Botoes::ok);
    }
}

struct Janelas : testing::Test, JanelaAberta {};

TEST_F(Janelas, FechaSeSoDepoisDaCaixaQueUmManipuladorTemAberta) {
    std::string passos;
    qt.define_ao_fechar([&] { passos += "fechada"; });
    ecra.confirmar.Click = [&] { passos += ecra.Avisa("", "Um", 2) == 0 ? "resposta " : ""; };
    Respostas respostas;
    respostas.faz([&](QWidget& caixa) {
        EXPECT_FALSE(qt.close());
        testes::tecla(caixa, Qt::Key_Return);
    });
    clica("confirmar");
    EXPECT_TRUE(QTest::qWaitFor([&] { return passos == "resposta fechada"; })) << passos;
}

TEST_F(Janelas, DepoisDeUmaFalhaAoMostrarVoltaAMostrarEAOuvirAGrelha) {
    const auto falha = QObject::connect(em<QTableView>("grelha").model(), &QAbstractItemModel::dataChanged,
                                        [] { throw base::Falha("?"); });
    ecra.grelha.define_valor(0, "Nome", "n");
    EXPECT_THROW(qt.mostra(), base::Falha);
    QObject::disconnect(falha);
    ecra.campo[0].Text = "b";
    clica_celula("grelha", 1, 1);
    EXPECT_EQ(em<QLineEdit>("campo(0)").text(), "b");
    EXPECT_EQ(ecra.grelha.linha_actual, 2);
}

// The clients of the company, CL'1, CL2, CL3 and INA, and one more.
struct Listas : testing::Test, JanelaAberta {
    Listas() { insere(empresa.outra(), "Clientes", {"CODIGO", "Nome"}, {{"9", "Irmãos São João & Açores"}}); }

    // Opens the list with F4, does something in it, and gives what came into the field.
    std::string escolhe(const std::function<void(QWidget&)>& accao) {
        Respostas respostas;
        respostas.faz(accao);
        tecla(Qt::Key_F4);
        return ecra.campo[0].Text;
    }
};

TEST_F(Listas, ProcuraEmTodasAsColunasSemMaiusculasNemAcentosEEscNaoMudaNada) {
    for (const auto& caso : tabela({"SAO joao => 1 de 5 registos => 9", "acor => 1 de 5 registos => 9",
                                    "IBERICA => 1 de 5 registos => CL2", "cl3 => 1 de 5 registos => CL3",
                                    "r => 3 de 5 registos => 9", "nada disto => 0 de 5 registos => 7"})) {
        SCOPED_TRACE(caso[0]);
        ecra.utilizador_foca(ecra.campo[0]);
        ecra.campo[0].Text = "7";
        std::string contagem;
        const std::string escolhido = escolhe([&](QWidget& lista) {
            testes::escreve(lista, caso[0].c_str());
            contagem = widget<QLabel>(lista, "contagem").text().toStdString();
            QGuiApplication::clipboard()->setText("?");
            QTest::keyClick(&widget<QTableView>(lista, "registos"), Qt::Key_C, Qt::ControlModifier);
            EXPECT_EQ(QGuiApplication::clipboard()->text() == "?", caso[2] == "7") << "with no current row";
            testes::tecla(lista, Qt::Key_Return);
            EXPECT_EQ(lista.isVisible(), caso[2] == "7");
            testes::tecla(lista, Qt::Key_Escape);
        });
        EXPECT_EQ(escolhido, caso[2]);
        EXPECT_EQ(contagem, caso[1]);
        EXPECT_EQ(com_teclado(), caso[2] == "7" ? "campo(0)" : "campo(1)");
    }
    EXPECT_EQ(ecra.validados, std::vector(5, 0));
}

TEST_F(Listas, OrdenamPeloTecladoEPelosTitulosEUmDuploCliqueEscolhe) {
    const std::string escolhido = escolhe([](QWidget& lista) {
        auto& registos = widget<QTableView>(lista, "registos");
        testes::tecla(lista, Qt::Key_2, Qt::ControlModifier);
        EXPECT_EQ(registos.model()->index(0, 1).data().toString(), "Ibérica SL");
        const QHeaderView& titulos = *registos.horizontalHeader();
        const QPoint nome(titulos.sectionViewportPosition(1) + 10, titulos.height() / 2);
        QTest::mouseClick(titulos.viewport(), Qt::LeftButton, {}, nome);
        const QPoint primeira = celula(lista, "registos", 0, 1);
        QTest::mouseClick(registos.viewport(), Qt::LeftButton, {}, primeira);
        QTest::mouseDClick(registos.viewport(), Qt::LeftButton, {}, primeira);
    });
    EXPECT_EQ(escolhido, "CL3") << "descending at the second time";
}

TEST_F(Listas, NumerosEDatasOrdenamSePeloValorEMostramSeNoFormatoRegionalEColunasEscondidasNaoSeProcuram) {
    insere(empresa.outra(), "xel_ORVEX", {"NumSerie", "Quantidade", "Data"},
           {{"dez", m("10.5"), base::DataHora{2024, 2, 1}},
            {"nove", m("9"), base::DataHora{2023, 12, 31}},
            {"10,5", {}, {}}});
    platform::qt::ModeloLista modelo(
        empresa.outra().Consulta("select Quantidade, Data, NumSerie from xel_ORVEX"), {',', '.'},
        {false, false, true});
    const auto mostrado = [&](int coluna) {
        std::string linhas;
        for (int linha = 0; linha < modelo.rowCount(); ++linha)
            linhas += "|" + modelo.index(linha, coluna).data().toString().toStdString();
        return linhas;
    };
    modelo.ordena(0, Qt::AscendingOrder);
    EXPECT_EQ(mostrado(0), "||9,000|10,500");
    modelo.ordena(1, Qt::AscendingOrder);
    EXPECT_EQ(mostrado(1), "||31-12-2023|01-02-2024");
    modelo.filtra("10,5");
    EXPECT_EQ(mostrado(1), "|01-02-2024");
    EXPECT_EQ(modelo.escolha(0), "10.5") << "as it was read";
}

TEST_F(Listas, UmaListaLongaMostraAsPrimeirasLinhasELeAsOutrasQuandoSaoPrecisas) {
    std::vector<std::vector<base::Variante>> clientes;
    for (int i = 0; i < 2500; ++i)
        clientes.push_back({"Z" + std::to_string(10'000 + i), "Nome"});
    empresa.outra().IniciaTransaccao();
    insere(empresa.outra(), "Clientes", {"CODIGO", "Nome"}, clientes);
    empresa.outra().ConfirmaTransaccao();
    const auto modelo = [this] {
        return platform::qt::ModeloLista(empresa.outra().Consulta("select CODIGO from Clientes"), {}, {});
    };
    auto procurado = modelo();
    EXPECT_LT(procurado.rowCount(), 2505);
    procurado.filtra("z12499");
    EXPECT_EQ(procurado.rowCount(), 0) << "of those read so far";
    while (procurado.le_mais()) {
    }
    EXPECT_EQ(procurado.escolha(0), "Z12499");
    auto ordenado = modelo();
    ordenado.ordena(0, Qt::DescendingOrder);
    EXPECT_EQ(ordenado.escolha(0), "Z12499");
    const std::string escolhido = escolhe([](QWidget& lista) {
        const auto& contagem = widget<QLabel>(lista, "contagem");
        EXPECT_TRUE(QTest::qWaitFor([&] { return contagem.text().endsWith("505 registos"); }));
        testes::escreve(lista, "z12499");
        testes::tecla(lista, Qt::Key_Return);
    });
    EXPECT_EQ(escolhido, "Z12499");
    ecra.utilizador_foca(ecra.campo[0]); // which holds it: the list opens on it, however far down it is
    EXPECT_EQ(escolhe([](QWidget& lista) { testes::tecla(lista, Qt::Key_Return); }), "Z12499");
}

TEST_F(Listas, ComecamNaLinhaDoCodigoDoCampoOuFiltradasPorEleOuInteirasEUmaDicaMostraOCortado) {
    insere(empresa.outra(), "Clientes", {"CODIGO", "Nome"}, {{"ZULMIRA-ZULMIRA", "Z"}});
    for (const auto& caso : tabela("cl2 => CL2 => 6 registos | IBER => CL2 => 1 de 6 registos | "
                                   "nada => 9 => 6 registos | z => ZULMIRA-ZULMIRA => 6 registos")) {
        SCOPED_TRACE(caso[0]);
        ecra.utilizador_foca(ecra.campo[0]);
        ecra.campo[0].Text = caso[0];
        EXPECT_EQ(escolhe([&](QWidget& lista) {
                      EXPECT_EQ(widget<QLabel>(lista, "contagem").text().toStdString(), caso[2]);
                      auto& registos = widget<QTableView>(lista, "registos");
                      registos.setColumnWidth(0, 60);
                      const QPoint codigo =
                          registos.visualRect(registos.currentIndex().siblingAtColumn(0)).center();
                      QHelpEvent ajuda(QEvent::ToolTip, codigo, codigo);
                      QCoreApplication::sendEvent(registos.viewport(), &ajuda);
                      EXPECT_EQ(QToolTip::text().contains(caso[1].c_str()), caso[0] == "z");
                      testes::tecla(lista, Qt::Key_Return);
                  }),
                  caso[1]);
    }
}

TEST_F(Listas, UmRegistoSemChaveDizQueNaoPodeSerEscolhidoEAListaFica) {
    insere(empresa.outra(), "Clientes", {"CODIGO", "Nome"}, {{"", "Sem código"}});
    const std::string escolhido = escolhe([](QWidget& lista) {
        QString dito;
        QTimer::singleShot(0, &lista, [&dito] {
            auto& caixa = dynamic_cast<QMessageBox&>(*QApplication::activeModalWidget());
            dito = caixa.text();
            caixa.accept();
        });
        testes::escreve(lista, "sem c");
        testes::tecla(lista, Qt::Key_Return);
        EXPECT_TRUE(dito.startsWith("Este registo não pode ser escolhido")) << dito.toStdString();
        EXPECT_TRUE(lista.isVisible());
        testes::tecla(lista, Qt::Key_Escape);
    });
    EXPECT_EQ(escolhido, "");
}

TEST_F(Listas, UmaConsultaQueFalhaMostraAFalhaENaoEscolheNada) {
    diario.falha_no = diario.passos + 1;
    EXPECT_THAT(tecla(Qt::Key_F4, {}, {ok}), ElementsAre("Falha provocada."));
    EXPECT_EQ(com_teclado(), "campo(0)");
}

} // namespace
} // namespace orvex::testes
