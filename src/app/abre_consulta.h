// An item or client of the screens, opened in orvex-consulta.
#pragma once

#include "common/controlos.h"

#include <filesystem>
#include <string>

namespace orvex::app {

// Starts that program on the installation in this folder, in a process of its own that shares nothing with
// this one. Gives what kept it from that, for the user; nothing once it runs.
std::string abre_consulta(const common::CodigoEscrito& codigo, const std::filesystem::path& instalacao);

} // namespace orvex::app
