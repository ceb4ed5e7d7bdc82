// Names, places and tax numbers made up to read like those of real companies.
#pragma once

#include "sorteio.h"

#include <string>

namespace orvex::demo {

struct Terceiro {
    std::string nome;
    std::string morada;
    std::string localidade;
    std::string codigo_postal;
    std::string pais;
    std::string contribuinte;
    std::string regime_iva; // NAC, UE or EXT
};

std::string nome_pessoa(Sorteio& sorteio);
Terceiro cliente_nacional(Sorteio& sorteio);
Terceiro cliente_estrangeiro(Sorteio& sorteio);

// A valid Portuguese tax number of a company.
std::string contribuinte_nacional(Sorteio& sorteio);

// The kinds of serial-numbered goods, and what each is worth.
struct Familia {
    const char* prefixo; // of the serial number
    const char* nome;
    std::int64_t preco; // euro per tonne
};

const Familia& familia(std::int64_t artigo);

} // namespace orvex::demo
