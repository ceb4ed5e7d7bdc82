#include "platform/qt/espera_erp.h"

#include "platform/qt/pecas.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QSessionManager>
#include <QThread>
#include <QWindow>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace orvex::platform::qt {
namespace {

using namespace std::chrono_literals;
using automacao::Acabou;
using Relogio = std::chrono::steady_clock;

constexpr std::chrono::milliseconds sem_aviso = 300ms;
constexpr std::chrono::milliseconds entre_chamadas = 100ms; // of one wait, at most
constexpr std::chrono::milliseconds entre_pinturas = 20ms;

bool nas_janelas() {
    const auto* aplicacao = qobject_cast<QApplication*>(QCoreApplication::instance());
    return aplicacao != nullptr && QThread::currentThread() == aplicacao->thread();
}

// The busy cursor, and the status line of every window there is.
class Aviso {
  public:
    Aviso() {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        for (const QWidget* janela : QApplication::topLevelWidgets())
            for (auto* widget : janela->findChildren<QWidget*>("LinhaEstado"))
                if (auto* linha = dynamic_cast<LinhaEstado*>(widget)) linhas_.emplace_back(linha, linha);
        mostra("À espera do ERP…");
    }
    ~Aviso() {
        mostra({});
        QGuiApplication::restoreOverrideCursor();
    }
    Aviso(const Aviso&) = delete;

  private:
    void mostra(const QString& texto) {
        for (const auto& [vive, linha] : linhas_)
            if (vive != nullptr) linha->mostra_espera(texto);
    }

    std::vector<std::pair<QPointer<QWidget>, LinhaEstado*>> linhas_;
};

class EsperaERP : public QObject {
  public:
    void espera(const Acabou& acabou) {
        if (!nas_janelas() || a_esperar_) {
            while (!acabou(1s))
                continue;
            return;
        }
        const auto agora = Relogio::now();
        if (agora - fim_ > entre_chamadas) {
            inicio_ = agora;
            premidos_ = {}; // what was let go of in between, nobody saw here
        }
        const auto esperou = std::chrono::duration_cast<std::chrono::milliseconds>(agora - inicio_);
        if (!acabou(std::max(0ms, sem_aviso - esperou))) espera_a_vista(acabou);
        fim_ = Relogio::now();
    }

    bool eventFilter(QObject* alvo, QEvent* evento) override;

  private:
    void espera_a_vista(const Acabou& acabou) {
        const Aviso aviso;
        struct Fim {
            EsperaERP& espera;
            ~Fim() { espera.termina(); } // whatever painting throws
        } const fim{*this};
        comeca();
        do
            QCoreApplication::processEvents();
        while (!acabou(entre_pinturas));
        QCoreApplication::processEvents(); // what was typed until now
    }

    void comeca() {
        a_esperar_ = true;
        QCoreApplication::instance()->installEventFilter(this);
        connect(
            qApp, &QGuiApplication::commitDataRequest, this, [](QSessionManager& sessao) { sessao.cancel(); },
            Qt::DirectConnection);
    }

    void termina() {
        disconnect(qApp, &QGuiApplication::commitDataRequest, this, nullptr);
        QCoreApplication::instance()->removeEventFilter(this);
        a_esperar_ = false;
        for (auto& [janela, largada] : largadas_)
            if (janela != nullptr) QCoreApplication::postEvent(janela, largada.release());
        largadas_.clear();
    }

    // A window that saw the press waits for the release, or its button would stay down.
    void larga(QObject* alvo, const QMouseEvent& largada) {
        if (premidos_.testFlag(largada.button()))
            premidos_.setFlag(largada.button(), false);
        else if (auto* janela = qobject_cast<QWindow*>(alvo))
            largadas_.emplace_back(janela, largada.clone());
    }

    Relogio::time_point inicio_{}; // of the wait that the last call belongs to
    Relogio::time_point fim_{};    // of that call
    bool a_esperar_ = false;
    Qt::MouseButtons premidos_; // and not let go of yet, and the windows know nothing of it
    std::vector<std::pair<QPointer<QWindow>, std::unique_ptr<QEvent>>> largadas_;
};

// What is accepted goes no further: the system does nothing of its own with it, and looks for no shortcut.
bool EsperaERP::eventFilter(QObject* alvo, QEvent* evento) {
    switch (evento->type()) {
    case QEvent::Timer: // goes off again afterwards, a single shot too; windows paint by timers of their own
        return !alvo->isWindowType();
    case QEvent::Close:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::DragLeave:
    case QEvent::Drop:
        evento->ignore();
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        premidos_ |= static_cast<const QMouseEvent&>(*evento).button();
        break;
    case QEvent::MouseButtonRelease:
        larga(alvo, static_cast<const QMouseEvent&>(*evento));
        break;
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::NativeGesture:
        break;
    default:
        return false;
    }
    evento->accept();
    return true;
}

} // namespace

automacao::Espera espera_nas_janelas() {
    return [espera = std::make_shared<EsperaERP>()](const Acabou& acabou) { espera->espera(acabou); };
}

} // namespace orvex::platform::qt
