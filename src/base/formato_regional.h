// How numbers are read from the user and shown to the user. SQL texts and files never pass through here.
#pragma once

#include "base/moeda.h"
#include "base/variante.h"

#include <optional>
#include <string>
#include <string_view>

namespace orvex::base {

struct FormatoRegional {
    char decimal = ',';
    char grupo = '.';

    std::string texto(Moeda valor) const; // "1234,5": regional sign, no grouping, no trailing zeros
    std::string
    texto(const Variante& valor) const;  // numbers as above, dates dd-mm-yyyy, everything else as it is
    std::string peso(Moeda valor) const; // "###,###,###.000": 1234.5 is "1.234,500", 0.5 is ",500"
    // The same with a zero where nothing stands before the sign: "0,500".
    std::string peso_inteiro(Moeda valor) const;

    // A single sign of either kind is the decimal sign, never grouping ("1.234" is one and a bit); both
    // together are grouping and decimal sign, in that order. Blanks group too, of the kinds a spreadsheet
    // writes. Empty when the text is no number, or one that no column holds.
    std::optional<Moeda> le(std::string_view texto) const;
};

} // namespace orvex::base
