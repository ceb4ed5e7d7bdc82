// A session of the desktop that ends while a confirmation or one of its boxes is open is held back.
#include "app/diario_orvex.h"
#include "platform/qt/janelas/janela_mov_stocks.h"
#include "tests/adjust/ecra_ajuste.h"
#include "tests/qt/na_janela.h"

#include <QSessionManager>

namespace {
int impedidas = 0;
}

// In the library's place: without a desktop it would do nothing.
void QSessionManager::cancel() { ++impedidas; }

namespace orvex::testes {
namespace {

bool se_a_sessao_acabasse() {
    const int antes = impedidas;
    emit qApp->commitDataRequest(*qApp->findChild<QSessionManager*>());
    return impedidas > antes;
}

TEST(FimDeSessao, EsperaPorUmaConfirmacaoAMeioEPelaSuaCaixa) {
    NaJanela<EcraAjuste, platform::qt::JanelaMovStocks> janela(1);
    const PastaTemporaria pasta;
    platform::operacoes::RegistoOperacoes registo(pasta.pasta(), [](auto&) {});
    app::DiarioOrvex guardado({.BD = janela.BD,
                               .gERP = janela.ERP,
                               .gaveta = platform::diario::Gaveta(pasta.pasta() / "diario"),
                               .programa = janela.empresa.pasta(),
                               .empresa = "E",
                               .abre_sessao = [&] { return abre_empresa(janela.empresa.pasta()); },
                               .registo = registo});
    janela.observadores.junta(guardado.observador());
    janela.diario.do_commit = Diario::Maneira::lanca;
    bool ao_confirmar = false, com_a_caixa = false;
    janela.diario.espia = [&](const std::string& linha) {
        if (linha == "CONFIRMA") ao_confirmar = se_a_sessao_acabasse();
    };
    Respostas respostas;
    respostas.carrega(ok); // the first item of the list
    janela.tecla(Qt::Key_F4);
    janela.activa();
    janela.joga("Return, «6», Return");
    for (int pergunta = 0; pergunta < 2; ++pergunta)
        respostas.faz([](QWidget& caixa) {
            EXPECT_FALSE(se_a_sessao_acabasse()); // nothing has begun
            for (const Qt::Key codigo : para_ok)
                tecla(caixa, codigo);
        });
    respostas.faz([&](QWidget& caixa) {
        com_a_caixa = se_a_sessao_acabasse();
        tecla(caixa, Qt::Key_Return);
    });
    janela.tecla(Qt::Key_C, Qt::AltModifier);
    EXPECT_THAT(respostas.textos.back(), testing::HasSubstr("Situação Anómala"));
    EXPECT_TRUE(ao_confirmar);
    EXPECT_TRUE(com_a_caixa);
    EXPECT_FALSE(se_a_sessao_acabasse());
}

} // namespace
} // namespace orvex::testes
