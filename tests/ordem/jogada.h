// One run of several programs on one company, in one order.
#pragma once

#include "platform/operacoes/ouvinte.h"
#include "tests/apoio/programas.h"
#include "tests/ordem/escalonador.h"

#include <set>

namespace orvex::testes {

// Ledger and ERP, a line for each row. Numbers that a refused confirmation used up say nothing of what was
// done: documents are known by their rank.
struct Estado {
    std::string livro, erp;
};

class Jogada {
  public:
    Jogada(Linha linha, const Fluxos& fluxos, const Ordem& ordem);
    Jogada(const Jogada&) = delete;
    Jogada& operator=(const Jogada&) = delete;

    // What the next start does, its user agreeing.
    void recupera();

    EmpresaTeste empresa;
    platform::diario::Gaveta gaveta{empresa.pasta() / "diario"};
    Escalonador escalonador;
    std::vector<std::unique_ptr<platform::operacoes::Ouvinte>> pontos; // outlive them
    std::vector<std::unique_ptr<Programa>> programas;
    Fluxos confirmados;              // in the order of their commits
    std::vector<std::string> livros; // after each
    std::set<std::size_t> feitos;    // the programs that committed
    Estado ultimo;

  private:
    void confirmou(std::size_t programa, confirmacao::Fluxo fluxo);
};

} // namespace orvex::testes
