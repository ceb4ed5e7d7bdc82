// The members of ERP objects whose types the values alone do not tell: which width an integer has, what goes
// by reference, what a number is understood as when it comes back. The one place that knows them.
#pragma once

#include "platform/automacao/valores.h"

#include <span>
#include <string_view>

namespace orvex::platform::automacao {

enum class TipoMembro {
    qualquer, // as the value is; an integer has 32 bits
    inteiro_16,
    inteiro_32,
    decimal, // a weight: currency, also where the value is a plain number
    texto,
    objecto,
    por_ler // what the method gives back is nobody's, and may be anything
};

struct Argumento {
    TipoMembro tipo = TipoMembro::qualquer;
    bool por_referencia = false;
};

struct Assinatura {
    std::string_view nome;
    TipoMembro tipo = TipoMembro::qualquer; // of the property, or of what the method gives back
    std::span<const Argumento> argumentos{};

    Argumento argumento(std::size_t posicao) const {
        return posicao < argumentos.size() ? argumentos[posicao] : Argumento{};
    }
};

const Assinatura& assinatura_de(std::string_view membro); // names are compared without case

// A plain value on its way out, and one that came back. A whole number may come as any type that holds it, a
// flag being -1 or 0, and never as null; what cannot be understood throws Falha.
Valor posto(TipoMembro tipo, const base::Variante& valor);
base::Variante lido(TipoMembro tipo, const base::Variante& valor);

} // namespace orvex::platform::automacao
