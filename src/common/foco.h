// Who has the keyboard, and what happens when it moves.
//
// A handler only asks: SetFocus and sent keys are carried out after it has returned. A field that is left is
// validated exactly once; when the validation refuses, the keyboard stays. An explicit SetFocus discards the
// keys sent before it, so that a pending key never overrides a later explicit focus. A control that is
// disabled or out of sight never takes the focus.
#pragma once

#include "common/controlos.h"

#include <deque>

namespace orvex::common {

class Foco {
  public:
    struct Ouvinte {
        virtual ~Ouvinte() = default;
        virtual bool valida_ao_sair(Controlo& controlo) = 0; // False keeps the focus
        virtual void perdeu(Controlo& controlo) = 0;
        virtual void ganhou(Controlo& controlo) = 0;
    };

    explicit Foco(Ouvinte& ouvinte) : ouvinte_(ouvinte) {}

    void define_ordem(std::vector<Controlo*> ordem) { ordem_ = std::move(ordem); }
    const std::vector<Controlo*>& ordem() const { return ordem_; }
    Controlo* actual() const { return actual_; }

    // A key that moves along the order: the user's Tab stops everywhere, one that is sent (Enter in a field)
    // passes over a button that leaves, where the next Enter would close the screen.
    enum class Tecla { do_utilizador, enviada };

    void pede(Controlo& controlo);       // SetFocus
    void envia(int passos, Tecla tecla); // {TAB} is +1, +{TAB} is -1

    void desiste(); // of what was asked for

    // Carries out what was asked for. False when a validation refused.
    bool resolve();

  private:
    bool muda(Controlo& destino);
    struct Passo {
        int passos;
        Tecla tecla;
    };
    Controlo* vizinho(Passo passo) const;

    Ouvinte& ouvinte_;
    std::vector<Controlo*> ordem_;
    Controlo* actual_ = nullptr;
    Controlo* pedido_ = nullptr;
    std::deque<Passo> teclas_;
};

} // namespace orvex::common
