// The ERP's cancelled documents of ours, by article: a row that a cancellation took out of the ledger may be
// what stood between two others.
#pragma once

#include "exame.h"

namespace orvex::auditoria {

class Anulados {
  public:
    explicit Anulados(Contexto& contexto);

    // A cancelled note or return had made this client the holder.
    bool deu(const std::string& artigo, const std::string& detentor) const;
    // An adjustment was cancelled: it may have been replaced after its item had moved on.
    bool ajuste(const std::string& artigo) const;

  private:
    struct Anulado {
        std::uint64_t artigo = 0;
        std::uint64_t detentor = 0; // 0 of an adjustment
        friend auto operator<=>(const Anulado&, const Anulado&) = default;
    };
    std::vector<Anulado> todos_; // in order
};

} // namespace orvex::auditoria
