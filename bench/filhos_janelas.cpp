#include "bench/filhos.h"

#include "app/fabrica_orvex.h"
#include "platform/qt/aplicacao.h"
#include "platform/qt/listas/janela_lista.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "startup/instalacao.h"
#include "tests/fio/servidor_tds.h"
#include "tools/empresa/empresa_demo.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <unistd.h>

namespace orvex::bench {
namespace {

constexpr int largura = 1024;
constexpr int altura = 768;

// Calls back once a window of the program has painted itself, children and all.
class AoPintar : public QObject {
  public:
    explicit AoPintar(std::function<void(QWidget&)> accao) : accao_(std::move(accao)) {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* alvo, QEvent* evento) override {
        auto* widget = qobject_cast<QWidget*>(alvo);
        if (evento->type() == QEvent::Paint && widget != nullptr && widget->isWindow() && accao_) {
            // The children are painted before the event loop goes on.
            QTimer::singleShot(0, widget,
                               [widget, accao = std::exchange(accao_, nullptr)] { accao(*widget); });
        }
        return false;
    }

  private:
    std::function<void(QWidget&)> accao_;
};

// The process is gone at its first paint: what closing costs is not what is measured.
[[noreturn]] void acaba(QWidget&) { _exit(0); }

struct Aplicacao {
    Aplicacao() : qt(argc, argv) {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, pasta.path());
    }

    QTemporaryDir pasta; // what windows remember must not change what is measured
    int argc = 1;
    char nome[6] = "orvex";
    char* argv[2] = {nome, nullptr};
    QApplication qt;
};

int mede_lista(const std::filesystem::path& instalacao, const char* titulo, const char* sql,
               const char* letras) {
    Aplicacao aplicacao;
    platform::qt::prepara_aplicacao(aplicacao.qt);
    platform::sqlite::SessaoSQLite BD;
    BD.Abre(startup::texto_ligacao(startup::DefinicoesBD::le(instalacao / "OrvexEXE.xel")));

    QElapsedTimer relogio;
    relogio.start();
    platform::qt::JanelaLista lista(nullptr, {BD, titulo, sql, 8000, {{1, 1500}, {2, 5000}}}, {}, {});
    const auto decorrido = [&] { return static_cast<double>(relogio.nsecsElapsed()) / 1e6; };
    const AoPintar mostrada([&](QWidget&) {
        const double mostrar = decorrido();
        auto* filtro = lista.findChild<QLineEdit*>();
        const auto filtrar = [&] {
            QElapsedTimer demora;
            demora.start();
            QTest::keyClicks(filtro, letras);
            lista.repaint();
            return static_cast<double>(demora.nsecsElapsed()) / 1e6;
        };
        const double logo = filtrar();
        filtro->clear();
        const auto* contagem = lista.findChild<QLabel*>("contagem");
        while (!contagem->text().endsWith("registos"))
            QApplication::processEvents();
        const double completar = decorrido();
        std::printf("%.3f %.3f %.3f %.3f\n", mostrar, filtrar(), completar, logo);
        QApplication::quit();
    });
    lista.show();
    return QApplication::exec();
}

} // namespace

int mostra_janela_com_texto() {
    Aplicacao aplicacao;
    const AoPintar espera(acaba);
    QLabel janela("ORVEX");
    janela.resize(largura, altura);
    janela.show();
    return QApplication::exec();
}

int mostra_ecra(const std::filesystem::path& instalacao) {
    Aplicacao aplicacao;
    platform::qt::prepara_aplicacao(aplicacao.qt);
    const AoPintar espera(acaba);
    app::FabricaOrvex fabrica(instalacao);
    startup::Arranque arranque(fabrica, {instalacao, instalacao});
    const auto ecra = arranque.Main("2");
    return ecra != nullptr ? QApplication::exec() : 1;
}

int mede_arranque_fio(const std::filesystem::path& instalacao) {
    testes::ServidorTDS servidor(instalacao / demo::pasta_empresa);
    liga_ao_fio(instalacao, servidor);
    Aplicacao aplicacao;
    platform::qt::prepara_aplicacao(aplicacao.qt);
    servidor.atraso_ms = demora_da_linha_ms;
    QElapsedTimer relogio;
    relogio.start();
    const AoPintar espera([&](QWidget& janela) {
        std::printf("%.3f %d\n", static_cast<double>(relogio.nsecsElapsed()) / 1e6, servidor.pedidos());
        std::fflush(stdout);
        acaba(janela);
    });
    app::FabricaOrvex fabrica(instalacao);
    startup::Arranque arranque(fabrica, {instalacao, instalacao});
    const auto ecra = arranque.Main("2");
    return ecra != nullptr ? QApplication::exec() : 1;
}

int mede_lista_clientes(const std::filesystem::path& instalacao) {
    return mede_lista(instalacao, "Clientes",
                      "SELECT Codigo AS Cliente, Nome AS Nome From Clientes  ORDER BY Codigo", "met");
}

int mede_lista_artigos(const std::filesystem::path& instalacao) {
    return mede_lista(instalacao, "Artigos",
                      "SELECT NUMSERIE AS Artigo, ARTIGOS.Nome AS Nome From xel_ORVEX INNER JOIN Artigos  ON "
                      "ARTIGOS.CODIGO=xel_ORVEX.NUMSERIE  Group By NumSerie,Nome ORDER BY NUMSERIE",
                      "gal");
}

} // namespace orvex::bench
