#include "platform/espera/linha.h"

#include <utility>

namespace orvex::platform::espera {

Linha::Linha(Espera espera) : espera_(std::move(espera)), linha_([this] { corre(); }) {}

Linha::~Linha() {
    {
        const std::lock_guard guarda(tranca_);
        fim_ = true;
    }
    mudou_.notify_all();
    linha_.join();
}

void Linha::corre() {
    std::unique_lock guarda(tranca_);
    for (;;) {
        mudou_.wait(guarda, [this] { return fim_ || trabalho_ != nullptr; });
        if (fim_) return;
        guarda.unlock();
        std::exception_ptr falha;
        try {
            (*trabalho_)();
        } catch (...) {
            falha = std::current_exception();
        }
        guarda.lock();
        falha_ = std::move(falha);
        trabalho_ = nullptr;
        mudou_.notify_all();
    }
}

void Linha::executa(Motivo motivo, const Trabalho& trabalho) {
    if (std::this_thread::get_id() == linha_.get_id()) return trabalho();
    {
        const std::lock_guard guarda(tranca_);
        trabalho_ = &trabalho;
    }
    mudou_.notify_all();
    const auto feito = [this] { return trabalho_ == nullptr; };
    try {
        espera_(motivo, [&](std::chrono::milliseconds limite) {
            std::unique_lock guarda(tranca_);
            return mudou_.wait_for(guarda, limite, feito);
        });
    } catch (...) { // a window that is not painted is less than an answer that is lost
    }
    std::unique_lock guarda(tranca_);
    mudou_.wait(guarda, feito);
    if (falha_) std::rethrow_exception(std::exchange(falha_, nullptr));
}

} // namespace orvex::platform::espera
