// Where a program lies; its name as called tells nothing when it was found on the path.
#pragma once

#include "base/caminho.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace orvex {

inline std::filesystem::path pasta_do_programa([[maybe_unused]] const std::filesystem::path& chamado) {
#ifdef _WIN32
    std::wstring proprio(32768, L'\0'); // no path is longer
    proprio.resize(::GetModuleFileNameW(nullptr, proprio.data(), static_cast<DWORD>(proprio.size())));
    return std::filesystem::path(proprio).parent_path();
#else
    std::error_code erro;
    const auto proprio = std::filesystem::read_symlink("/proc/self/exe", erro);
    return (erro ? base::caminho_completo(chamado) : proprio).parent_path();
#endif
}

} // namespace orvex
