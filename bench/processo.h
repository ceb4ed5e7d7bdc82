// One measured run of another program: its wall time, its peak memory, and the figures it printed.
#pragma once

#include <string>
#include <vector>

namespace orvex::bench {

struct Corrida {
    double parede_ms = 0;
    long memoria_kb = 0; // peak resident set
    std::vector<double> numeros;
};

// Throws std::runtime_error when the program cannot be started or fails.
Corrida corre(const std::vector<std::string>& comando);

double mediana(std::vector<double> valores);

} // namespace orvex::bench
