// Handing over to the program of the same name and the other word size, where the settings choose it
// (Windows).
#pragma once

#include "startup/instalacao.h"

#include <filesystem>
#include <optional>

namespace orvex::app {

// How the 32-bit program ended that did the work of `programa`, with its command line, its folder and its
// input and output; none where this one is to work. To be asked before anything else, a console above all.
// Throws Falha where the settings cannot be read, and where the program that they choose does not start.
std::optional<int> passa_a_32_bits(const startup::PastasInstalacao& pastas,
                                   const std::filesystem::path& programa);

} // namespace orvex::app
