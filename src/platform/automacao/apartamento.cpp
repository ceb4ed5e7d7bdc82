#include "platform/automacao/apartamento.h"

#include "base/falha.h"
#include "platform/automacao/falhas.h"

#include <deque>
#include <future>
#include <mutex>

namespace orvex::platform::automacao {

// What both sides see; the thread keeps it when it is left to itself.
struct Apartamento::Fila {
    std::mutex tranca;
    std::deque<std::packaged_task<void()>> por_fazer;
    HANDLE ha_trabalho = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
    bool fim = false;
    std::promise<HRESULT> comecou;
    std::promise<void> acabou;

    Fila() = default;
    Fila(const Fila&) = delete;
    Fila& operator=(const Fila&) = delete;
    ~Fila() { ::CloseHandle(ha_trabalho); }

    // None when the thread no longer takes any.
    std::future<void> junta(Trabalho trabalho, bool ultimo = false) {
        std::packaged_task<void()> tarefa(std::move(trabalho));
        std::future<void> feita;
        {
            const std::lock_guard guarda(tranca);
            if (fim) return feita;
            feita = tarefa.get_future();
            por_fazer.push_back(std::move(tarefa));
            fim = ultimo;
        }
        ::SetEvent(ha_trabalho);
        return feita;
    }

    // False once the last one was done.
    bool faz_tudo() {
        while (true) {
            std::packaged_task<void()> tarefa;
            {
                const std::lock_guard guarda(tranca);
                if (por_fazer.empty()) return !fim;
                tarefa = std::move(por_fazer.front());
                por_fazer.pop_front();
            }
            tarefa();
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
    if (!linha_.joinable()) return;
    fila_->junta([] {}, true);
    linha_.join();
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
    fila->acabou.set_value();
}

void Apartamento::executa(Trabalho trabalho, const Espera& espera) {
    std::future<void> feita = fila_->junta(std::move(trabalho));
    if (!feita.valid()) throw base::Falha("A sessão do ERP já foi fechada.");
    try {
        if (espera)
            espera([&feita](std::chrono::milliseconds limite) {
                return feita.wait_for(limite) == std::future_status::ready;
            });
    } catch (...) { // a window that is not painted is less than an answer that is lost
    }
    feita.get();
}

void Apartamento::entrega(Trabalho trabalho) { fila_->junta(std::move(trabalho)); }

bool Apartamento::termina(Trabalho trabalho, std::chrono::milliseconds limite) {
    if (!linha_.joinable()) return true;
    std::future<void> acabou = fila_->acabou.get_future();
    fila_->junta(std::move(trabalho), true);
    const bool a_tempo = acabou.wait_for(limite) == std::future_status::ready;
    a_tempo ? linha_.join() : linha_.detach();
    return a_tempo;
}

} // namespace orvex::platform::automacao
