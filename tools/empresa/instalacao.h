// The files of an installation beside its company.
#pragma once

#include <filesystem>

namespace orvex::demo {

// The settings, the fallback database settings and the parameters, for the company made by faz_empresa.
void escreve_ficheiros(const std::filesystem::path& pasta);

// Copies the program, and those that examine its installation, from the folder of this one; of a program for
// Windows also its libraries, and leaves a starter for each task. False when the program is not there.
bool copia_programa(const std::filesystem::path& de, const std::filesystem::path& para);

} // namespace orvex::demo
