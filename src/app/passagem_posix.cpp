#include "app/passagem.h"

namespace orvex::app {

std::optional<int> passa_a_32_bits(const startup::PastasInstalacao& /*pastas*/,
                                   const std::filesystem::path& /*programa*/) {
    return std::nullopt;
}

} // namespace orvex::app
