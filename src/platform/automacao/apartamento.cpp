#include "platform/automacao/apartamento.h"

#include "base/falha.h"
#include "platform/automacao/falhas.h"

#include <algorithm>
#include <deque>
#include <exception>
#include <future>
#include <mutex>

namespace orvex::platform::automacao {
namespace {

// Given once, and for good.
class Sinal {
  public:
    Sinal() = default;
    Sinal(const Sinal&) = delete;
    Sinal& operator=(const Sinal&) = delete;
    ~Sinal() { ::CloseHandle(evento_); }

    void da() { ::SetEvent(evento_); }
    bool dado(std::chrono::milliseconds limite) const {
        return ::WaitForSingleObject(evento_, em_ms(limite)) == WAIT_OBJECT_0;
    }
    // Serves calls meanwhile, where the one who waits has an apartment: a component that asks for none has
    // its objects in the program's first.
    bool dado_a_servir(std::chrono::milliseconds limite) const {
        HANDLE este = evento_;
        DWORD qual = 0;
        const HRESULT resposta = ::CoWaitForMultipleHandles(0, em_ms(limite), 1, &este, &qual);
        if (resposta == RPC_S_CALLPENDING) return false;
        return !falhou(resposta) || dado(limite);
    }

  private:
    static DWORD em_ms(std::chrono::milliseconds limite) {
        return static_cast<DWORD>(std::clamp<long long>(limite.count(), 0, INFINITE));
    }

    HANDLE evento_ = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
};

constexpr auto sem_limite = std::chrono::milliseconds::max();

struct Tarefa {
    Apartamento::Trabalho trabalho;
    std::exception_ptr falha{};
    Sinal feita{};

    void faz() {
        try {
            trabalho();
        } catch (...) {
            falha = std::current_exception();
        }
        trabalho = {}; // what it holds goes here, not where it is waited for
        feita.da();
    }
};

} // namespace

// What both sides see; the thread keeps it when it is left to itself.
struct Apartamento::Fila {
    std::mutex tranca;
    std::deque<std::shared_ptr<Tarefa>> por_fazer;
    HANDLE ha_trabalho = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
    bool fim = false;
    std::promise<HRESULT> comecou;
    Sinal acabou;

    Fila() = default;
    Fila(const Fila&) = delete;
    Fila& operator=(const Fila&) = delete;
    ~Fila() { ::CloseHandle(ha_trabalho); }

    // None when the thread no longer takes any.
    std::shared_ptr<const Tarefa> junta(Trabalho trabalho, bool ultimo = false) {
        auto tarefa = std::make_shared<Tarefa>(std::move(trabalho));
        {
            const std::lock_guard guarda(tranca);
            if (fim) return nullptr;
            por_fazer.push_back(tarefa);
            fim = ultimo;
        }
        ::SetEvent(ha_trabalho);
        return tarefa;
    }

    // False once the last one was done.
    bool faz_tudo() {
        while (true) {
            std::shared_ptr<Tarefa> tarefa;
            {
                const std::lock_guard guarda(tranca);
                if (por_fazer.empty()) return !fim;
                tarefa = std::move(por_fazer.front());
                por_fazer.pop_front();
            }
            tarefa->faz();
        }
    }
};

Apartamento::Apartamento() : fila_(std::make_shared<Fila>()) {
    linha_ = std::thread([fila = fila_] { corre(fila); });
    const HRESULT comecou = fila_->comecou.get_future().get();
    if (!falhou(comecou)) return;
    linha_.join();
    throw base::Falha("Não foi possível preparar a automação: " + texto_do_sistema(comecou));
}

Apartamento::~Apartamento() {
    termina([] {}, sem_limite);
}

void Apartamento::corre(const std::shared_ptr<Fila>& fila) {
    const HRESULT comecou = ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
    fila->comecou.set_value(comecou);
    if (falhou(comecou)) return;
    do {
        ::MsgWaitForMultipleObjectsEx(1, &fila->ha_trabalho, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        MSG mensagem;
        while (::PeekMessageW(&mensagem, nullptr, 0, 0, PM_REMOVE) != 0) {
            ::TranslateMessage(&mensagem);
            ::DispatchMessageW(&mensagem);
        }
    } while (fila->faz_tudo());
    ::CoUninitialize();
    fila->acabou.da();
}

void Apartamento::executa(Trabalho trabalho, const Espera& espera) {
    const auto tarefa = fila_->junta(std::move(trabalho));
    if (!tarefa) throw base::Falha("A sessão do ERP já foi fechada.");
    try {
        if (espera)
            espera(espera::Motivo::erp,
                   [&tarefa](std::chrono::milliseconds limite) { return tarefa->feita.dado(limite); });
    } catch (...) { // a window that is not painted is less than an answer that is lost
    }
    while (!tarefa->feita.dado_a_servir(sem_limite))
        continue;
    if (tarefa->falha) std::rethrow_exception(tarefa->falha);
}

void Apartamento::entrega(Trabalho trabalho) { fila_->junta(std::move(trabalho)); }

bool Apartamento::termina(Trabalho trabalho, std::chrono::milliseconds limite) {
    if (!linha_.joinable()) return true;
    fila_->junta(std::move(trabalho), true);
    const bool a_tempo = fila_->acabou.dado_a_servir(limite);
    a_tempo ? linha_.join() : linha_.detach();
    return a_tempo;
}

} // namespace orvex::platform::automacao
