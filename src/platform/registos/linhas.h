// Rows of a record set kept in memory, to be visited once, forwards. They lie packed in blocks, each value
// with one byte for its kind and the bytes it needs; a block that has been passed is given back.
#pragma once

#include "platform/registos/tipo_sql.h"

#include <cstddef>
#include <list>
#include <string>
#include <vector>

namespace orvex::platform::registos {

class Linhas {
  public:
    explicit Linhas(std::size_t colunas) : colunas_(colunas) {}

    void junta_linha(); // starts a row; its values follow, in order
    void junta(const Celula& celula);
    std::size_t total() const { return total_; }

    bool avanca(); // to the first row, then to the next; false when there is none
    Celula celula(std::size_t coluna) const;

  private:
    std::list<std::string> blocos_;
    std::size_t total_ = 0;
    std::size_t posicao_ = 0;          // in the first block, where the next row starts
    std::vector<std::size_t> colunas_; // of the current row: where each value starts
};

} // namespace orvex::platform::registos
