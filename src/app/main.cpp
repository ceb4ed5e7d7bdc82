// The program: one start, one task, named by the argument.
#include "app/fabrica_orvex.h"
#include "base/descricao.h"
#include "platform/qt/aplicacao.h"
#include "platform/qt/caixa.h"

#include <QApplication>

#include <exception>

namespace {

using namespace orvex;

// A failure inside an event ends the event loop and is reported by main; it must not pass through the
// toolkit.
class Aplicacao : public QApplication {
  public:
    using QApplication::QApplication;

    bool notify(QObject* alvo, QEvent* evento) override {
        try {
            return QApplication::notify(alvo, evento);
        } catch (...) {
            if (!falha_) falha_ = std::current_exception();
            exit(1);
            return true;
        }
    }

    int corre() {
        const int resultado = falha_ ? 1 : exec();
        if (falha_) std::rethrow_exception(falha_);
        return resultado;
    }

  private:
    std::exception_ptr falha_;
};

std::filesystem::path caminho(const QString& texto) { return std::filesystem::path(texto.toStdU16String()); }

int corre(Aplicacao& aplicacao) {
    const auto pastas = startup::PastasInstalacao::de(caminho(QCoreApplication::applicationDirPath()));
    app::FabricaOrvex fabrica(pastas.programa);
    startup::Arranque arranque(fabrica, pastas);
    const QStringList argumentos = QCoreApplication::arguments();
    // The argument is the whole command line after the program's name.
    const auto ecra = arranque.Main(argumentos.mid(1).join(' ').toStdString());
    return ecra != nullptr ? aplicacao.corre() : 0;
}

} // namespace

int main(int argc, char* argv[]) {
    Aplicacao aplicacao(argc, argv);
    platform::qt::prepara_aplicacao(aplicacao);
    try {
        return corre(aplicacao);
    } catch (const std::exception& falha) {
        platform::qt::mostra_caixa(nullptr, base::descricao(falha), startup::titulo_programa,
                                   common::Icone::critico, common::Botoes::ok);
        return 1;
    }
}
