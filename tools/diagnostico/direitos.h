// What the users of a machine in general may do with a file.
#pragma once

#include <filesystem>
#include <optional>

namespace orvex::diagnostico {

struct DireitosDeTodos {
    bool le = false, muda = false;
};

// As the file's own list of rights says it of groups that hold every user. None where it cannot be read.
// Windows alone.
std::optional<DireitosDeTodos> direitos_de_todos(const std::filesystem::path& ficheiro);

} // namespace orvex::diagnostico
