// The members of the screen's control arrays by what they are. Their numbers are laid down: windows and
// errors show them.
#pragma once

namespace orvex::adjust {

// `campo`, and the button in `btFx` of a field that has a list
namespace campos {
enum : int {
    artigo = 0,
    existencia = 1,
    processo = 2,
    quantidade = 3, // of a surplus or breakage that is not loaded: the new stock
    observacoes = 4,
    documento = 5, // number of the adjustment loaded
};
}

// `Label2`
namespace rotulos {
enum : int { nome_artigo = 1, quantidade = 3 };
}

} // namespace orvex::adjust
