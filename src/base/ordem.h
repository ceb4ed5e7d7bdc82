// How values are sorted for the eye: nulls, numbers, dates, texts, each kind by what it means. Numbers within
// a text count as numbers (FA/1/9 before FA/1/10); case and accents do not count.
#pragma once

#include "base/variante.h"

namespace orvex::base {

bool e_numero(const Variante& valor); // kept as one, whatever its text looks like

class ChaveOrdem {
  public:
    ChaveOrdem() = default;
    explicit ChaveOrdem(const Variante& valor);
    bool operator<(const ChaveOrdem& outra) const;

  private:
    int grupo_ = 0;
    double numero_ = 0;
    std::string texto_;
};

} // namespace orvex::base
