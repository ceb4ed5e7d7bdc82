#include "platform/qt/consulta/caminho.h"

namespace orvex::platform::qt::consulta {
namespace {

constexpr std::size_t mais_paginas = 20;
constexpr int mais_linhas = 300'000;
constexpr std::size_t sempre_ficam = 2; // the one in sight, and the way back from it

} // namespace

void Caminho::esquece(std::size_t qual) {
    Pagina* esta = paginas_[qual];
    paginas_.erase(paginas_.begin() + static_cast<std::ptrdiff_t>(qual));
    pilha_.removeWidget(esta);
    esta->hide();
    esta->deleteLater(); // a link of it may have led here
}

void Caminho::segue(Pagina* nova) {
    while (ha_a_frente())
        esquece(paginas_.size() - 1);
    paginas_.push_back(nova);
    pilha_.addWidget(nova);
    const auto linhas = [this] {
        int soma = 0;
        for (const Pagina* esta : paginas_)
            soma += esta->lidas();
        return soma;
    };
    while (paginas_.size() > sempre_ficam && (paginas_.size() > mais_paginas || linhas() > mais_linhas))
        esquece(0);
    lugar_ = paginas_.size() - 1;
    pilha_.setCurrentWidget(nova);
}

void Caminho::anda(int passos) {
    if (passos < 0 ? !ha_atras() : !ha_a_frente()) return;
    lugar_ += static_cast<std::size_t>(passos);
    Pagina* esta = paginas_[lugar_];
    pilha_.setCurrentWidget(esta);
    if (QWidget* onde = esta->focusWidget(); onde != nullptr && onde->isVisibleTo(esta))
        onde->setFocus();
    else
        esta->foca();
}

} // namespace orvex::platform::qt::consulta
