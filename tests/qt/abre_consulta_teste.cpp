// Ctrl+I: what each place of the screens looks up, and that nothing changes by it.
#include "app/processo_solto.h"
#include "platform/qt/janelas/janela_guias_remessa.h"
#include "platform/qt/janelas/janela_mov_stocks.h"
#include "platform/qt/janelas/janela_trf_bobines.h"
#include "tests/adjust/ecra_ajuste.h"
#include "tests/delivery/ecra_guias.h"
#include "tests/qt/na_janela.h"
#include "tests/transfer/ecra_trf.h"

#ifndef _WIN32
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace orvex::testes {
namespace {

constexpr const char* nada = "Aqui não há artigo nem cliente para consultar.";

struct ConsultaDasGuias : testing::Test, NaJanela<EcraGuias, platform::qt::JanelaGuiasRemessa> {
    std::string dito() { return em<QLabel>("ajuda").text().toStdString(); }
};

TEST_F(ConsultaDasGuias, TemOClienteEOArtigoDaLinhaSemTocarNoQueSeEscreve) {
    joga("Ctrl+I, «cl'1», Ctrl+I");
    EXPECT_EQ(consultas, "cliente cl'1|");
    EXPECT_EQ(com_teclado() + ecra.Label2(1).Caption, "campo(0)") << "not validated";
    joga("Return, Ctrl+I");
    EXPECT_EQ(com_teclado() + dito(), std::string("campo(1)") + nada);

    consultas.clear();
    joga("Alt+F, Ctrl+I, Return, «9», Ctrl+I");
    EXPECT_EQ(consultas, "artigo BOB'1|artigo BOB'1|");
    auto* editor = qobject_cast<QLineEdit*>(qt.focusWidget());
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(editor->text(), "9");
    EXPECT_EQ(linhas(ecra.Gr, {"Quant"}), "2.5") << "not stored";
    joga("Esc, Alt+G, Down, Ctrl+I");
    EXPECT_EQ(dito(), nada) << "a blank row";
}

TEST_F(ConsultaDasGuias, AListaConsultaALinhaSemAEscolherEDizOQueImpede) {
    impedimento = "A consulta não arrancou.";
    Respostas respostas;
    respostas.faz([&](QWidget& lista) {
        for (const auto& [codigo, com] :
             {std::pair{Qt::Key_Down, Qt::NoModifier}, {Qt::Key_I, Qt::ControlModifier}})
            testes::tecla(lista, codigo, com);
        EXPECT_EQ(consultas, "cliente CL2|");
        EXPECT_EQ(widget<QLabel>(lista, "teclas").text().toStdString(), impedimento);
        testes::tecla(lista, Qt::Key_Escape);
    });
    tecla(Qt::Key_F4);
    EXPECT_EQ(ecra.campo(0).Text, "");
}

TEST(AbreConsulta, TemOArtigoDosAjustesEOArtigoEOsClientesDasTransferencias) {
    NaJanela<EcraAjuste, platform::qt::JanelaMovStocks> ajuste(1);
    ajuste.joga("«REEL'1», Ctrl+I, Tab, Ctrl+I");
    EXPECT_EQ(ajuste.consultas, "artigo REEL'1|");
    NaJanela<EcraTrf, platform::qt::JanelaTrfBobines> transferencia(2);
    transferencia.joga("«REEL'1», Ctrl+I, Tab, «CL2», Ctrl+I, Shift+Tab, Ctrl+I");
    EXPECT_EQ(transferencia.consultas, "artigo REEL'1|cliente CL2|cliente CL'1|");
}

#ifndef _WIN32
TEST(AbreConsulta, NaoHerdaALigacaoAoServidor) {
    const QTemporaryDir pasta;
    const QString lista = pasta.filePath("abertos"), acabou = pasta.filePath("acabou");
    const int ligacao = socket(AF_UNIX, SOCK_STREAM, 0);
    const QString qual = QFile::symLinkTarget("/proc/self/fd/" + QString::number(ligacao));
    QProcess processo;
    processo.setProgram("/bin/sh");
    processo.setArguments({"-c", "ls -l /proc/$$/fd > \"$0\"; touch \"$1\"", lista, acabou});
    app::solta_do_sistema(processo);
    ASSERT_TRUE(processo.startDetached());
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(acabou); }));
    close(ligacao);
    QFile abertos(lista);
    ASSERT_TRUE(abertos.open(QIODevice::ReadOnly));
    const std::string texto = abertos.readAll().toStdString();
    EXPECT_THAT(texto, HasSubstr("/dev/null"));
    EXPECT_THAT(texto, Not(HasSubstr(QFileInfo(qual).fileName().toStdString())));
}
#endif

} // namespace
} // namespace orvex::testes
