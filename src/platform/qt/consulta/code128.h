// A code as a barcode of the kind Code 128, which every reader reads: bars and gaps, in modules.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvex::platform::qt::consulta {

inline constexpr int modulos_em_branco = 10; // on either side, without which a reader finds no beginning

// Its modules, dark ones true, from the first bar to the last. Nothing where the code has letters that it
// does not carry, with accents or controls, or is too long for any label.
std::optional<std::vector<bool>> code128(const std::string& codigo);

} // namespace orvex::platform::qt::consulta
