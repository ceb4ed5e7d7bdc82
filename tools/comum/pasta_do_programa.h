// Where a program lies; its name as called tells nothing when it was found on the path.
#pragma once

#include <filesystem>

namespace orvex {

inline std::filesystem::path pasta_do_programa(const std::filesystem::path& chamado) {
    std::error_code erro;
    const auto proprio = std::filesystem::read_symlink("/proc/self/exe", erro);
    return erro ? std::filesystem::absolute(chamado, erro).parent_path() : proprio.parent_path();
}

} // namespace orvex
