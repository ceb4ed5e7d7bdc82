// What was asked for on the command line, as an enquiry.
#pragma once

#include "livro/consultas/pedido.h"

#include <filesystem>
#include <optional>
#include <span>

namespace orvex::consulta {

enum class Formato { texto, csv, json, xlsx };

struct Opcoes {
    std::filesystem::path pasta{}; // of the installation; none is that of the program
    bool ajuda = false;
    Formato formato = Formato::texto;
    std::filesystem::path ficheiro{}; // of the xlsx
    bool janela = false;              // on the enquiry, if there is one; else it is answered here
    std::optional<livro::consultas::Pedido> pedido{};
};

std::string uso();
// Throws Falha, with a text for the user.
Opcoes le_argumentos(std::span<const std::string> argumentos);

} // namespace orvex::consulta
