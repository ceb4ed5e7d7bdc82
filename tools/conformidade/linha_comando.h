#pragma once

#include <filesystem>
#include <span>
#include <string>

namespace orvex::conformidade {

struct Opcoes {
    std::filesystem::path pasta{}; // of the installation; none is that of the program
    std::string empresa{}, cliente{}, artigo{};
    bool ajuda = false;
};

std::string uso();
// Throws Falha, with a text for the user.
Opcoes le_argumentos(std::span<const std::string> argumentos);

} // namespace orvex::conformidade
