// A workbook's archive, read back once it is written.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace orvex::platform::saidas {

// Every part of the archive ends, and each sheet is at least as long as its rows, in bytes. The library
// copies the parts through temporary files and looks at no failed write to them.
bool arquivo_inteiro(const std::filesystem::path& arquivo, const std::vector<std::uint64_t>& das_linhas);

} // namespace orvex::platform::saidas
