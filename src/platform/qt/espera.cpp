#include "platform/qt/espera.h"

#include "platform/qt/pecas.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QSessionManager>
#include <QThread>
#include <QWindow>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

// As the keyboard gives it, shortcuts and all; the toolkit declares it with its tests alone.
QT_BEGIN_NAMESPACE
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow* janela, QEvent::Type tipo, int tecla, Qt::KeyboardModifiers com,
                                    const QString& texto, bool repetida, ushort vezes); // NOLINT
QT_END_NAMESPACE

namespace orvex::platform::qt {
namespace {

using namespace std::chrono_literals;
using espera::Acabou;
using espera::Motivo;
using Relogio = std::chrono::steady_clock;

constexpr auto sem_aviso = 300ms;
constexpr auto sem_texto = 1s;
constexpr auto entre_chamadas = 100ms; // of one wait, at most
constexpr auto entre_pinturas = 20ms;

bool nas_janelas() {
    const auto* aplicacao = qobject_cast<QApplication*>(QCoreApplication::instance());
    return aplicacao != nullptr && QThread::currentThread() == aplicacao->thread();
}

// The busy cursor and, once there is something to say, the status line of every window there is.
class Aviso {
  public:
    Aviso() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Aviso() {
        for (const auto& [vive, linha] : linhas_)
            if (vive != nullptr) linha->mostra_espera({});
        QGuiApplication::restoreOverrideCursor();
    }
    Aviso(const Aviso&) = delete;

    void diz(Motivo motivo) {
        if (!linhas_.empty()) return;
        for (const QWidget* janela : QApplication::topLevelWidgets())
            for (auto* widget : janela->findChildren<QWidget*>("LinhaEstado"))
                if (auto* linha = dynamic_cast<LinhaEstado*>(widget)) linhas_.emplace_back(linha, linha);
        for (const auto& [vive, linha] : linhas_)
            linha->mostra_espera(motivo);
    }

  private:
    std::vector<std::pair<QPointer<QWidget>, LinhaEstado*>> linhas_;
};

class EsperaNasJanelas : public QObject {
  public:
    using QObject::QObject;

    void espera(Motivo motivo, const Acabou& acabou) {
        if (a_esperar_) return espera::so_espera(motivo, acabou);
        const auto agora = Relogio::now();
        if (agora - fim_ > entre_chamadas) {
            inicio_ = agora;
            premidos_ = {}; // what was let go of in between, nobody saw here
        }
        const auto a_vista = std::max(inicio_ + sem_aviso, pintura_ + entre_pinturas) - agora;
        if (!acabou(std::max(0ms, std::chrono::ceil<std::chrono::milliseconds>(a_vista))))
            espera_a_vista(motivo, acabou);
        fim_ = Relogio::now();
    }

    void comeca_outra() { fim_ = {}; }

    bool da_um_momento(Relogio::time_point desde) {
        inicio_ = desde;
        fim_ = Relogio::now();
        espera(Motivo::servidor, espera::so_um_momento);
        if (esc_ < desde) return true;
        adiadas_.clear();
        return false;
    }

    bool eventFilter(QObject* alvo, QEvent* evento) override;

  private:
    struct Tecla {
        QPointer<QWindow> janela;
        int codigo;
        Qt::KeyboardModifiers com;
        QString texto;
    };

    void espera_a_vista(Motivo motivo, const Acabou& acabou) {
        Aviso aviso;
        struct Fim {
            EsperaNasJanelas& espera;
            ~Fim() { espera.termina(); } // whatever painting throws
        } const fim{*this};
        comeca();
        a_adiar_ = pintura_ < inicio_;
        do {
            if (Relogio::now() - inicio_ >= sem_texto) aviso.diz(motivo);
            QCoreApplication::processEvents();
            a_adiar_ = false;
        } while (!acabou(entre_pinturas));
        QCoreApplication::processEvents(); // what was typed until now
        pintura_ = Relogio::now();
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
        a_esperar_ = a_adiar_ = false;
        for (auto& [janela, largada] : largadas_)
            if (janela != nullptr) QCoreApplication::postEvent(janela, largada.release());
        largadas_.clear();
        if (adiadas_.empty()) return;
        QMetaObject::invokeMethod(
            this, [this] { devolve(); }, Qt::QueuedConnection);
    }

    // Once the handler has returned; or a box of its has come up, for which they were not meant.
    void devolve() {
        if (a_esperar_) return; // the end of that wait asks again
        for (const Tecla& tecla : std::exchange(adiadas_, {}))
            for (const auto tipo : {QEvent::KeyPress, QEvent::KeyRelease})
                if (tecla.janela != nullptr && tecla.janela == QGuiApplication::focusWindow())
                    qt_handleKeyEvent(tecla.janela, tipo, tecla.codigo, tecla.com, tecla.texto, false, 1);
    }

    // The first look at what came finds what was typed before anything showed.
    void escreveu(int tecla, Qt::KeyboardModifiers com, const QString& texto) {
        if (tecla == Qt::Key_Escape) esc_ = Relogio::now();
        if (a_adiar_) adiadas_.push_back({QGuiApplication::focusWindow(), tecla, com, texto});
    }

    // A window that saw the press waits for the release, or its button would stay down.
    void larga(QObject* alvo, const QMouseEvent& largada) {
        if (premidos_.testFlag(largada.button()))
            premidos_.setFlag(largada.button(), false);
        else if (auto* janela = qobject_cast<QWindow*>(alvo))
            largadas_.emplace_back(janela, largada.clone());
    }

    Relogio::time_point inicio_{};  // of the wait that the last call belongs to
    Relogio::time_point fim_{};     // of that call
    Relogio::time_point pintura_{}; // the last one
    Relogio::time_point esc_{};     // when it was last seen
    bool a_esperar_ = false;
    bool a_adiar_ = false;
    Qt::MouseButtons premidos_; // and not let go of yet, and the windows know nothing of it
    std::vector<std::pair<QPointer<QWindow>, std::unique_ptr<QEvent>>> largadas_;
    std::vector<Tecla> adiadas_;
};

// What is accepted goes no further: the system does nothing of its own with it, and looks for no shortcut.
bool EsperaNasJanelas::eventFilter(QObject* alvo, QEvent* evento) {
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
    case QEvent::KeyPress: {
        const auto& tecla = static_cast<const QKeyEvent&>(*evento);
        escreveu(tecla.key(), tecla.modifiers(), tecla.text());
        break;
    }
    case QEvent::InputMethod: // a letter of several keys
        if (const QString letra = static_cast<const QInputMethodEvent*>(evento)->commitString();
            !letra.isEmpty())
            escreveu(0, {}, letra);
        break;
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
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

// One for all that is waited for: it is one user who waits.
EsperaNasJanelas& do_programa() {
    static QPointer<EsperaNasJanelas> unica;
    if (unica == nullptr) unica = new EsperaNasJanelas(qApp);
    return *unica;
}

} // namespace

espera::Espera espera_nas_janelas() {
    return [](Motivo motivo, const Acabou& acabou) {
        nas_janelas() ? do_programa().espera(motivo, acabou) : espera::so_espera(motivo, acabou);
    };
}

void comeca_outra_espera() { do_programa().comeca_outra(); }

bool da_um_momento(Relogio::time_point desde) { return do_programa().da_um_momento(desde); }

} // namespace orvex::platform::qt
