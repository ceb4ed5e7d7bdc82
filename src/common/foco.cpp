#include "common/foco.h"

#include <algorithm>

namespace orvex::common {

void Foco::pede(Controlo& controlo) {
    if (!controlo.recebe_foco()) return;
    pedido_ = &controlo;
    teclas_.clear();
}

void Foco::envia(int passos, Tecla tecla) { teclas_.push_back({passos, tecla}); }

void Foco::desiste() {
    pedido_ = nullptr;
    teclas_.clear();
}

bool Foco::resolve() {
    bool tudo_aceite = true;
    while (pedido_ != nullptr || !teclas_.empty()) {
        Controlo* destino = pedido_;
        if (destino != nullptr) {
            pedido_ = nullptr;
        } else {
            destino = vizinho(teclas_.front());
            teclas_.pop_front();
        }
        if (destino == nullptr || destino == actual_ || !destino->recebe_foco()) continue;
        tudo_aceite = muda(*destino) && tudo_aceite;
    }
    // A control that was disabled or hidden under the keyboard passes it on, without being validated.
    if (actual_ == nullptr || !actual_->recebe_foco()) {
        Controlo* abandonado = actual_;
        actual_ = vizinho({+1, Tecla::do_utilizador});
        if (abandonado != nullptr) ouvinte_.perdeu(*abandonado);
        if (actual_ != nullptr) ouvinte_.ganhou(*actual_);
    }
    return tudo_aceite;
}

bool Foco::muda(Controlo& destino) {
    Controlo* deixado = actual_;
    if (deixado != nullptr && !ouvinte_.valida_ao_sair(*deixado)) {
        // What the refusing handler asked for can only be the field it stays in.
        desiste();
        return false;
    }
    // The validation may have closed the way (a disabled field); it may also have asked for another one.
    if (pedido_ == nullptr && !destino.recebe_foco()) return true;
    actual_ = pedido_ != nullptr ? pedido_ : &destino;
    pedido_ = nullptr;
    if (actual_ == deixado) return true;
    if (deixado != nullptr) ouvinte_.perdeu(*deixado);
    ouvinte_.ganhou(*actual_);
    return true;
}

Controlo* Foco::vizinho(Passo passo) const {
    if (ordem_.empty()) return nullptr;
    const auto tamanho = static_cast<std::ptrdiff_t>(ordem_.size());
    const auto onde = std::find(ordem_.begin(), ordem_.end(), actual_);
    std::ptrdiff_t i = onde != ordem_.end() ? onde - ordem_.begin() : (passo.passos > 0 ? -1 : 0);
    for (std::ptrdiff_t tentativas = 0; tentativas < tamanho; ++tentativas) {
        i = (i + passo.passos + tamanho) % tamanho;
        Controlo* candidato = ordem_[static_cast<std::size_t>(i)];
        const auto* botao = dynamic_cast<const Botao*>(candidato);
        if (passo.tecla == Tecla::enviada && passo.passos > 0 && botao != nullptr &&
            botao->papel == Botao::Papel::sai)
            continue;
        if (candidato != actual_ && candidato->recebe_foco()) return candidato;
    }
    return nullptr;
}

} // namespace orvex::common
