#include "platform/qt/programa.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/caixa.h"

#include <cstdlib>
#include <iostream>

namespace orvex::platform::qt {
namespace {

std::function<void(const std::string&)>& ao_faltar_ecra() {
    static std::function<void(const std::string&)> diz_falha;
    return diz_falha;
}

// The toolkit ends the process itself where there is no window system to show anything on.
void sem_sistema_de_janelas(QtMsgType gravidade, const QMessageLogContext&, const QString& texto) {
    if (gravidade != QtFatalMsg) return;
    ao_faltar_ecra()("Não foi possível abrir a janela: o programa precisa de um ecrã. (" +
                     texto.simplified().toStdString() + ")");
    std::_Exit(EXIT_FAILURE);
}

bool alguem_ve() {
    if (QCoreApplication::startingUp() ||
        qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr)
        return false;
    const QString sistema = QGuiApplication::platformName();
    return sistema != "offscreen" && sistema != "minimal";
}

} // namespace

std::unique_ptr<Programa> Programa::novo(int& argc, char** argv,
                                         std::function<void(const std::string&)> diz_falha) {
    ao_faltar_ecra() = std::move(diz_falha);
    qInstallMessageHandler(sem_sistema_de_janelas);
    std::unique_ptr<Programa> este(new Programa(argc, argv));
    qInstallMessageHandler(nullptr);
    prepara_aplicacao(*este);
    return este;
}

bool Programa::notify(QObject* alvo, QEvent* evento) {
    try {
        return QApplication::notify(alvo, evento);
    } catch (...) {
        if (!falha_) falha_ = std::current_exception();
        exit(1);
        return true;
    }
}

int Programa::corre() {
    const int resultado = falha_ ? 1 : exec();
    if (falha_) std::rethrow_exception(falha_);
    return resultado;
}

void diz(const std::string& texto, const std::string& titulo, common::Icone icone) {
    if (alguem_ve()) {
        mostra_caixa(nullptr, texto, titulo, icone, common::Botoes::ok);
    } else {
        std::cerr << titulo << ": " << texto << '\n';
    }
}

} // namespace orvex::platform::qt
