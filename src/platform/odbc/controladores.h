// The drivers, and how to speak to each.
#pragma once

#include <string>
#include <vector>

namespace orvex::platform::odbc {

// Which words a driver takes in its connection text.
enum class Fala { servidor, freetds };

// By a library's name, or by the one that the driver gives itself.
Fala fala_de(const std::string& biblioteca);

struct Controlador {
    std::string nome;       // as it is registered
    std::string biblioteca; // empty where the manager does not tell
};

// All that the system's manager knows.
std::vector<Controlador> controladores_instalados();

// The library of a driver: the one that the manager has under this name, or the name itself where the
// manager does not tell (a driver may be named by its library).
std::string biblioteca_de(const std::string& controlador);

} // namespace orvex::platform::odbc
