// The stock of the articles: per warehouse in artarm, in all (with its value at cost) in Artigos.
#pragma once

#include "base/moeda.h"
#include "platform/erp/base_erp.h"

#include <string>

namespace orvex::platform::erp {

// A stock may go below 0: the weights are the users' word.
void move_armazem(BaseErp& base, const std::string& artigo, const std::string& armazem,
                  base::Moeda quantidade);

// Moves the article's own stock at its average cost (its last purchase price when it has no stock) and gives
// the value moved, in euro.
base::Moeda move_artigo(BaseErp& base, const std::string& artigo, base::Moeda quantidade);
// Moves it at a value known beforehand: what undoes a movement to the last cent.
void move_artigo(BaseErp& base, const std::string& artigo, base::Moeda quantidade, base::Moeda valor);

} // namespace orvex::platform::erp
