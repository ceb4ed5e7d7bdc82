#include "platform/qt/consulta/pergunta.h"

#include "base/descricao.h"

#include <QTimer>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <variant>

namespace orvex::platform::qt::consulta {
namespace {

using namespace livro::consultas;
using namespace std::chrono_literals;

constexpr auto entre_vezes = 50ms;           // that the window is told something, but for the first rows
constexpr std::size_t linhas_a_meio = 4'096; // untold; the enquiry waits with the next one

} // namespace

// What both threads know of an enquiry. The timer is of the windows' thread; without it the enquiry is over
// for the window, and what the other one still says is lost.
struct Pergunta::Estado : Destino, std::enable_shared_from_this<Estado> {
    explicit Estado(Ouvinte& quem) : ouvinte(quem) {
        relogio->setSingleShot(true);
        QObject::connect(relogio, &QTimer::timeout, [this] { conta(); });
    }

    // The windows' thread.
    void larga();
    void conta();

    // The enquiry's.
    void recomeca() {
        const std::lock_guard guarda(tranca);
        por_contar.clear();
        linhas_por_contar = 0;
        contou_linhas = false;
        por_contar.emplace_back([](Ouvinte& o) { o.comeca(); }); // with what comes next
    }
    void vista(const Vista& esta) override {
        junta([esta](Ouvinte& o) { o.vista(esta); });
    }
    void quadro(const Quadro& este) override {
        junta([este](Ouvinte& o) { o.quadro(este); });
    }
    void total(const Linha& este) override {
        junta([este](Ouvinte& o) { o.total(este); });
    }
    bool linha(const Linha& esta) override;
    bool prossegue() override {
        const std::lock_guard guarda(tranca);
        return relogio != nullptr;
    }
    void acaba(Fim como) {
        const std::lock_guard guarda(tranca);
        fim = std::move(como);
        acorda();
    }

    Ouvinte& ouvinte;
    QTimer* relogio = new QTimer; // changed on the windows' thread alone, and locked
    bool a_contar = false;        // of the windows' thread

  private:
    using Conta = std::function<void(Ouvinte&)>;
    using Peca = std::variant<Conta, std::vector<Linha>>;

    void junta(Conta esta) {
        const std::lock_guard guarda(tranca);
        poe(std::move(esta));
    }
    void poe(Peca esta) {
        por_contar.push_back(std::move(esta));
        acorda();
    }
    bool urge() const {
        return fim || linhas_por_contar >= linhas_a_meio || (!contou_linhas && !por_contar.empty());
    }
    void acorda();
    bool diz(std::vector<Peca>& pecas);

    std::mutex tranca; // guards what follows
    std::condition_variable contou;
    std::vector<Peca> por_contar;
    std::size_t linhas_por_contar = 0;
    bool contou_linhas = false;
    bool avisou = false, com_pressa = false; // the timer goes off; at once
    std::optional<Fim> fim;
};

// Amid a posted event others would keep the window's own waiting; a timer goes off in turn with them.
void Pergunta::Estado::acorda() {
    if (relogio == nullptr || (avisou && (com_pressa || !urge()))) return;
    avisou = com_pressa = true;
    QMetaObject::invokeMethod(
        relogio, [este = relogio] { este->start(0); }, Qt::QueuedConnection);
}

bool Pergunta::Estado::linha(const Linha& esta) {
    Linha copia = esta;
    std::unique_lock guarda(tranca);
    contou.wait(guarda, [&] { return relogio == nullptr || linhas_por_contar < linhas_a_meio; });
    if (relogio == nullptr) return false;
    if (por_contar.empty() || !std::holds_alternative<std::vector<Linha>>(por_contar.back()))
        por_contar.emplace_back(std::vector<Linha>());
    std::get<std::vector<Linha>>(por_contar.back()).push_back(std::move(copia));
    ++linhas_por_contar;
    acorda();
    return true;
}

void Pergunta::Estado::larga() {
    std::unique_lock guarda(tranca);
    QTimer* este = std::exchange(relogio, nullptr);
    por_contar.clear();
    guarda.unlock();
    contou.notify_all();
    if (este == nullptr) return;
    este->stop();
    este->disconnect();
    este->deleteLater(); // it may be what calls this
}

// Whoever is told may ask something else, or end the window: the rest is then for nobody.
bool Pergunta::Estado::diz(std::vector<Peca>& pecas) {
    for (Peca& esta : pecas) {
        if (auto* linhas = std::get_if<std::vector<Linha>>(&esta))
            ouvinte.linhas(std::move(*linhas));
        else
            std::get<Conta>(esta)(ouvinte);
        if (relogio == nullptr) return false;
    }
    return true;
}

void Pergunta::Estado::conta() {
    if (a_contar) return; // what was told shows a box, and this is called from it
    const auto vive = shared_from_this();
    std::vector<Peca> pecas;
    std::optional<Fim> com_fim;
    {
        const std::lock_guard guarda(tranca);
        std::swap(pecas, por_contar);
        com_fim = std::exchange(fim, {});
        contou_linhas = contou_linhas || linhas_por_contar > 0;
        linhas_por_contar = 0;
        avisou = !pecas.empty();
        com_pressa = false;
    }
    contou.notify_all();
    a_contar = true;
    if (!diz(pecas)) return;
    a_contar = false;
    if (com_fim) {
        larga();
        ouvinte.acaba(*com_fim);
        return;
    }
    const std::lock_guard guarda(tranca);
    if (avisou) relogio->start(urge() ? 0ms : entre_vezes);
}

Pergunta::Pergunta(std::shared_ptr<Fonte> fonte, Ouvinte& ouvinte)
    : fonte_(std::move(fonte)), ouvinte_(ouvinte) {}

Pergunta::~Pergunta() {
    if (actual_) actual_->larga();
}

bool Pergunta::a_meio() const { return actual_ && actual_->relogio != nullptr; }

// A thread each: one that hangs on a server does not hold up the window. It ends when the enquiry does, be it
// after the window; it changes nothing that anybody would miss.
void Pergunta::pergunta(Consulta consulta) {
    if (actual_) actual_->larga();
    actual_ = std::make_shared<Estado>(ouvinte_);
    actual_->recomeca();
    try {
        std::thread([estado = actual_, fonte = fonte_, consulta = std::move(consulta)] {
            Fim fim;
            try {
                if (!fonte->responde(consulta, *estado, [&] { estado->recomeca(); }))
                    fim.como = Fim::Como::nao_ha;
            } catch (const std::exception& falha) {
                fim = {Fim::Como::falhou, base::descricao(falha)};
            }
            estado->acaba(std::move(fim));
        }).detach();
    } catch (const std::system_error& falha) {
        actual_->acaba({Fim::Como::falhou, base::descricao(falha)});
    }
}

void Pergunta::desiste() {
    if (!a_meio()) return;
    actual_->larga();
    ouvinte_.acaba({.como = Fim::Como::desistiu});
}

} // namespace orvex::platform::qt::consulta
