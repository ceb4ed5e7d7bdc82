// The window of the enquiries, by keys: what a reader sends, the way back, answers given up or failed, and
// filters that cannot be read.
#include "platform/qt/consulta/janela_consulta.h"
#include "startup/parametros.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/qt/apoio_qt.h"

#include <atomic>
#include <thread>

namespace orvex::testes {
namespace {

using namespace platform::qt::consulta;
using livro::consultas::Destino;

struct FonteParada : Fonte { // until it is let go
    explicit FonteParada(EmpresaTeste& esta)
        : empresa(esta), casa(livro::Casa::le(startup::Parametros(esta.pasta()))) {}
    EmpresaTeste& empresa;
    livro::Casa casa;
    std::atomic<bool> parada = false, falha = false;
    std::atomic<int> perguntas = 0;

    bool responde(const Consulta& consulta, Destino& destino, const std::function<void()>&) override {
        ++perguntas;
        while (parada && destino.prossegue())
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        if (falha) throw base::Falha("O servidor não responde.");
        platform::sqlite::SessaoSQLite BD;
        BD.Abre(ligacao(empresa.pasta()));
        return consulta({BD, casa, relogio}, destino);
    }
};

struct NaConsulta : testing::Test {
    EmpresaTeste empresa;
    std::shared_ptr<FonteParada> fonte;
    std::unique_ptr<JanelaConsulta> qt;

    NaConsulta() {
        empresa.recomeca();
        for (const char* codigo : {"R1", "R12", "R13", "000777"})
            empresa.insere_item(codigo, "CL2", m("1"));
        fonte = std::make_shared<FonteParada>(empresa);
        qt = std::make_unique<JanelaConsulta>(
            fonte, platform::qt::EstadoSessao{"Bobines, Lda.", "SQLite", "", true});
        qt->abre();
        qt->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(qt.get()));
    }
    ~NaConsulta() override {
        fonte->parada = false;
        qt.reset();
        EXPECT_TRUE(QTest::qWaitFor([this] { return fonte.use_count() == 1; })); // its threads have ended
    }

    void tecla(Qt::Key codigo, Qt::KeyboardModifiers m = {}) { testes::tecla(*qt, codigo, m); }
    void le(const char* codigo) { // as a reader sends it: its Enter before any answer
        escreve(*qt, codigo);
        tecla(Qt::Key_Return);
    }
    QString dito(const char* nome) { return widget<QLabel>(*qt, nome).text(); }
    bool chega(const QString& titulo) {
        return QTest::qWaitFor([&] { return dito("titulo") == titulo && tabela() != nullptr; });
    }
    bool dizem(const char* nome, const QString& texto) {
        return QTest::qWaitFor([&] {
            const auto todas = qt->findChildren<QLabel*>(nome);
            return std::any_of(todas.begin(), todas.end(), [&](const QLabel* esta) {
                return esta->isVisible() && esta->text().contains(texto);
            });
        });
    }
    QTableView* tabela() {
        for (auto* esta : qt->findChildren<QTableView*>("tabela"))
            if (esta->isVisible()) return esta;
        return nullptr;
    }
    QLineEdit& procura() { return widget<QLineEdit>(*qt, "procura"); }
    template <typename Tipo>
    Tipo& da_pagina(const char* nome) {
        for (auto* este : qt->findChildren<Tipo*>(nome))
            if (este->isVisible()) return *este;
        throw std::runtime_error(nome);
    }
};

TEST_F(NaConsulta, AbreOQueFoiLidoComEnterAntesDaRespostaEUmaSoVez) {
    fonte->parada = true;
    le("r1");
    tecla(Qt::Key_Return); // of a reader that sends two
    fonte->parada = false;
    ASSERT_TRUE(chega("Artigo R1"));
    EXPECT_LE(fonte->perguntas, 2);
    EXPECT_EQ(procura().selectedText(), "r1");
    fonte->parada = true;
    le("R13");
    le("000777"); // over the text that was there, whose answer has not come
    fonte->parada = false;
    ASSERT_TRUE(chega("Artigo 000777"));
    procura().setFocus();
    tecla(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(qt->focusWidget()->objectName().toStdString(), "sair"); // the last one, though views come later
    le("R12");
    ASSERT_TRUE(chega("Artigo R12"));
    tabela()->setFocus();
    le("R13X");
    QTest::qWait(300); // a table's own reader, which needs four characters
    EXPECT_TRUE(dizem("mensagem_da_procura", "Nada foi encontrado com «R13X»."));
    EXPECT_EQ(procura().selectedText(), "R13X");
    procura().setText("\t R13\r\n");
    tecla(Qt::Key_Return);
    ASSERT_TRUE(chega("Artigo R13"));
}

TEST_F(NaConsulta, FicaNaListaOndeVariosServem) {
    le("R");
    ASSERT_TRUE(QTest::qWaitFor([&] { return qt->focusWidget()->objectName() == "respostas"; }));
    EXPECT_EQ(dito("titulo"), "Procura");
    QTest::qWait(200);
    tecla(Qt::Key_Down);
    tecla(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "R12");
    tecla(Qt::Key_Return);
    ASSERT_TRUE(chega("Artigo R12"));
}

TEST_F(NaConsulta, VoltaAoQueEraComoFoiDeixado) {
    le("CL2");
    ASSERT_TRUE(chega("Cliente CL2"));
    tecla(Qt::Key_Down);
    tabela()->selectRow(2);
    QTableView* antes = tabela();
    tecla(Qt::Key_Return);
    ASSERT_TRUE(chega("Artigo R12"));
    tecla(Qt::Key_Left, Qt::AltModifier);
    ASSERT_TRUE(chega("Cliente CL2"));
    EXPECT_EQ(tabela(), antes);
    EXPECT_EQ(antes->currentIndex().row(), 2);
    EXPECT_EQ(qt->focusWidget(), antes);
    const int perguntas = fonte->perguntas;
    tecla(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(dito("titulo"), "Artigo R12");
    EXPECT_EQ(fonte->perguntas, perguntas);
}

TEST_F(NaConsulta, DesisteComEscEDizOQueFalhouEOQueNaoHa) {
    fonte->parada = true;
    qt->abre(livro::consultas::PedidoCliente{.codigo = "CL2"});
    tecla(Qt::Key_Escape);
    EXPECT_TRUE(dizem("mensagem_da_pagina", "Interrompido: faltam linhas"));
    EXPECT_FALSE(widget<QPushButton>(*qt, "copiar").isEnabled());
    fonte->parada = false;
    fonte->falha = true;
    tecla(Qt::Key_F5);
    EXPECT_TRUE(dizem("mensagem_da_pagina", "O servidor não responde."));
    fonte->falha = false;
    QTest::mouseClick(&widget<QPushButton>(*qt, "outra_vez"), Qt::LeftButton);
    ASSERT_TRUE(chega("Cliente CL2"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return widget<QPushButton>(*qt, "copiar").isEnabled(); }));
    fonte->parada = true;
    const QTableView* antes = tabela();
    tecla(Qt::Key_F5);
    QTest::qWait(100);
    tecla(Qt::Key_Escape);
    EXPECT_TRUE(dizem("mensagem_da_pagina", "à vista está a resposta anterior"));
    EXPECT_EQ(tabela(), antes);
    EXPECT_TRUE(widget<QPushButton>(*qt, "copiar").isEnabled());
    fonte->parada = false;
    qt->abre(livro::consultas::PedidoArtigo{"R1"});
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return qt->focusWidget()->accessibleName().startsWith("Movimentos"); }));
    qt->abre(livro::consultas::PedidoArtigo{"NÃO HÁ"});
    EXPECT_TRUE(dizem("mensagem_da_pagina", "«NÃO HÁ»"));
}

TEST_F(NaConsulta, RecusaFiltrosQueNaoSeLeemEVoltaComOsQueForamPedidos) {
    qt->abre(livro::consultas::PedidoParados{90, "", {}});
    ASSERT_TRUE(QTest::qWaitFor([&] { return tabela() != nullptr; }));
    const int perguntas = fonte->perguntas;
    for (const auto& [campo, texto] : {std::pair{"filtro_dias", "muitos"}, {"filtro_data", "31-02-2019"}}) {
        auto& este = da_pagina<QLineEdit>(campo);
        const QString antes = este.text();
        este.setText(texto);
        QKeyEvent repetida(QEvent::KeyPress, Qt::Key_Return, {}, "\r", true); // of a key held down
        QApplication::sendEvent(&este, &repetida);
        EXPECT_THAT(dito("ajuda").toStdString(), Not(HasSubstr(texto)));
        QTest::keyClick(&este, Qt::Key_Return);
        EXPECT_THAT(dito("ajuda").toStdString(), HasSubstr(texto));
        EXPECT_EQ(qt->focusWidget(), &este);
        este.setText(antes);
    }
    EXPECT_EQ(fonte->perguntas, perguntas);
    da_pagina<QLineEdit>("filtro_dias").setText("7");
    QTest::keyClick(&da_pagina<QLineEdit>("filtro_dias"), Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return fonte->perguntas > perguntas; }));
    tecla(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(da_pagina<QLineEdit>("filtro_dias").text(), "90");
    da_pagina<QLineEdit>("filtro_dias").setFocus();
    le("R12/");
    EXPECT_TRUE(dizem("mensagem_da_procura", "«R12/»"));
    le("000777");
    ASSERT_TRUE(chega("Artigo 000777"));
    tecla(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(da_pagina<QLineEdit>("filtro_dias").text(), "90");
}

TEST_F(NaConsulta, CabeNumEcraPequenoA200PorCento) {
    fonte->parada = true;
    for (const livro::consultas::Pedido& pedido :
         {livro::consultas::Pedido(livro::consultas::PedidoCliente{.codigo = "CL2"}),
          livro::consultas::Pedido(livro::consultas::PedidoMovimentos{relogio, relogio})}) {
        qt->abre(pedido);
        fonte->parada = false;
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return tabela() != nullptr && widget<QPushButton>(*qt, "copiar").isEnabled(); }));
        EXPECT_LE(qt->minimumSizeHint().width(), 504);
        EXPECT_LE(qt->minimumSizeHint().height(), 350);
    }
}

} // namespace
} // namespace orvex::testes
