// What was asked for on the command line, as an enquiry.
#pragma once

#include "livro/consultas/consultas.h"

#include <filesystem>
#include <functional>
#include <span>

namespace orvex::consulta {

enum class Formato { texto, csv, json, xlsx };

struct Opcoes {
    std::filesystem::path pasta{}; // of the installation; none is that of the program
    bool ajuda = false;
    Formato formato = Formato::texto;
    std::filesystem::path ficheiro{}; // of the xlsx
    // The enquiry; false where what is asked for does not exist, which `nada` then says.
    std::function<bool(const livro::consultas::Meios&, livro::consultas::Destino&)> consulta{};
    std::string nada{};
};

std::string uso();
// Throws Falha, with a text for the user.
Opcoes le_argumentos(std::span<const std::string> argumentos);

} // namespace orvex::consulta
