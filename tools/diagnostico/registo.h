// What the registry of Windows says of an automation component.
#pragma once

#include "diagnostico.h"

#include <array>
#include <optional>
#include <string>

namespace orvex::diagnostico {

// As programs of one word size see it. Paths may be missing: nobody registered that kind of server.
struct VistaDoRegisto {
    int bits;
    std::string biblioteca{}; // to be loaded by a program of that size
    std::string executavel{}; // a process of its own
    bool substituto =
        false; // the library may be loaded by a process of the system's, for programs of any size
    std::string em_falta{}; // whichever of the two files is not there
};

struct ClasseRegistada {
    std::string classe;                   // "{...}"
    std::array<VistaDoRegisto, 2> vistas; // the program's own size first
};

// By the name that the settings give, or by the number in braces. None where no class has that name. Windows
// alone.
std::optional<ClasseRegistada> classe_registada(const std::string& componente);

} // namespace orvex::diagnostico
