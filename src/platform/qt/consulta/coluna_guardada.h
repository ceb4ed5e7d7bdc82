// A column of very many rows, kept close: numbers, weights and dates as whole numbers, texts end to end.
#pragma once

#include "base/ordem.h"
#include "livro/consultas/quadro.h"

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvex::platform::qt::consulta {

class ColunaGuardada {
  public:
    explicit ColunaGuardada(livro::consultas::Tipo tipo) : tipo_(tipo) {}

    void junta(const base::Variante& valor);
    // As it came; an empty text is a null.
    base::Variante valor(int linha) const;
    bool nulo(int linha) const;
    bool com_algo() const { return com_algo_; } // in any row

    // Rows in order, nulls last whichever way. The keys it needs are kept until `esquece_ordem`, also for
    // rows that come later.
    std::function<bool(int a, int b)> menor(bool ascendente);
    void esquece_ordem();

  private:
    bool de_texto() const {
        return tipo_ == livro::consultas::Tipo::texto || tipo_ == livro::consultas::Tipo::codigo;
    }
    int chave_de(const base::Variante& valor);

    livro::consultas::Tipo tipo_;
    bool com_algo_ = false;
    std::vector<std::int64_t> numeros_; // in the order of what they stand for
    std::string textos_;
    std::vector<std::size_t> fins_;                     // of the rows' texts
    std::unordered_map<int, base::Variante> estranhos_; // of another kind than their column
    // Of a column of texts that rows are sorted by: keys, and which of them each row has; -1 for a null.
    std::vector<base::ChaveOrdem> chaves_;
    std::vector<int> das_linhas_;
    std::unordered_map<std::string, int> repetidas_; // keys of the texts that came first
};

} // namespace orvex::platform::qt::consulta
