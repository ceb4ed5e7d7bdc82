// What the system does so that the settings keep no password that can be read.
//
// On Windows a password is protected for the machine: every user and program there can open it, who has the
// file alone cannot. Other systems have no such thing, and every function throws Falha there.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace orvex::platform::proteccao {

// Why nothing in this file can be protected; empty when it can.
std::string impedimento(const std::filesystem::path& ficheiro);

// A text of letters, digits and signs, and back. Each throws Falha.
std::string protege(const std::string& claro);
std::string abre(const std::string& protegido);

// The file gets these bytes, whole or not at all, and keeps its access rights. Throws Falha.
void substitui(const std::filesystem::path& ficheiro, std::string_view bytes);

} // namespace orvex::platform::proteccao
