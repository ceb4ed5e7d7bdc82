#pragma once

#include "auditoria.h"

#include <filesystem>
#include <span>

namespace orvex::auditoria {

struct Opcoes {
    std::filesystem::path pasta{}; // of the installation; none is that of the program
    Filtro filtro{};
    bool json = false, ajuda = false;
    std::filesystem::path aceites{}, escreve_aceites{};
    int espera = 20;
};

std::string uso();
// Throws Falha, with a text for the user.
Opcoes le_argumentos(std::span<const std::string> argumentos);

} // namespace orvex::auditoria
