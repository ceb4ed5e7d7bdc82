// Several programs in one process, of which one goes on at a time. Each stops before every step of its own;
// there the order that was asked for, and nothing else, says who goes on. So a run can be repeated.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <semaphore>
#include <string>
#include <vector>

namespace orvex::testes {

// Before this step, counted from 1 over all programs, another program goes on.
struct Troca {
    int passo;
    std::size_t para;
};
// By their steps. Without one, the first program runs to its end, then the next.
using Ordem = std::vector<Troca>;

std::string texto(const Ordem& ordem); // "12>1 30>0"

class Escalonador {
  public:
    explicit Escalonador(Ordem ordem) : ordem_(std::move(ordem)) {}

    // Each on a thread of its own, until all have ended.
    void corre(const std::vector<std::function<void()>>& programas);

    // Called by the program that goes on: it is about to take a step.
    void passo();
    // It can not, until somebody lets go of the ledger's lock. Then it goes on first, as if it had been
    // waiting in the engine. Throws when nobody is left who could let go.
    void espera();
    // It let go of the lock, if it had it.
    void larga();

    int passos_do_primeiro() const { return do_primeiro_; }
    bool encravou() const { return encravou_; }

  private:
    enum class Estado { pronto, a_espera, acabou };

    void acaba();
    void da_a_vez(std::size_t a_quem);
    std::size_t pronto() const; // the first who can go on
    bool pode(std::size_t programa) const {
        return programa < estados_.size() && estados_[programa] == Estado::pronto;
    }

    Ordem ordem_;
    std::size_t proxima_ = 0; // of the order
    std::vector<Estado> estados_;
    std::vector<std::size_t> chamados_; // who waited for the lock
    std::size_t quem_ = 0;
    int passos_ = 0, do_primeiro_ = 0;
    bool encravou_ = false;
    std::deque<std::binary_semaphore> vez_; // what is above is touched by who has the turn
};

} // namespace orvex::testes
