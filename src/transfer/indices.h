// The members of the screen's control arrays by what they are. Their numbers are laid down: windows and
// errors show them.
#pragma once

namespace orvex::transfer {

// `campo`, and the button in `btFx` of a field that has a list
namespace campos {
enum : int {
    artigo = 0,
    detentor = 1,
    destino = 2, // of a transfer to a client
    sem_uso = 3, // part of the screen, without room in its window
    obs_entrada = 4,
    obs_saida = 5,
};
}

// `Label2`
namespace rotulos {
enum : int { artigo = 2, detentor = 3, destino = 4 }; // the name that belongs to the field's code
}

} // namespace orvex::transfer
