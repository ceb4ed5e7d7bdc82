// Where an installation's files are, and what its settings come to once their fallbacks are applied.
#pragma once

#include "startup/definicoes.h"
#include "startup/palavra_passe.h"

#include <filesystem>
#include <optional>
#include <string>

namespace orvex::startup {

// What an administrator keeps for all users of a machine: %ProgramData%\ORVEX, which the installer makes.
// Empty where there is none.
std::filesystem::path pasta_da_maquina();

// What a program loads, drivers and components, is of its own word size.
inline constexpr int bits_do_programa = sizeof(void*) * 8;

// The folder of the installation that the program in `programa` works on: its own, if there are settings or
// parameters in it; else the machine's, if there is one. 32-bit programs in the folder `32` of the others
// work on what these do.
std::filesystem::path pasta_da_instalacao(const std::filesystem::path& programa, int bits = bits_do_programa);

struct PastasInstalacao {
    std::filesystem::path comum;    // base folder shared by the maker's programs
    std::filesystem::path programa; // folder with the parameters file, as a rule that of the executable

    // The common folder is the one ORVEX_PASTA_COMUM names in the environment, or else the program's.
    static PastasInstalacao de(const std::filesystem::path& programa);

    // In the common folder's TRAMEL, or beside the program where there is no such folder. Throws Falha when
    // nobody can tell.
    std::filesystem::path ficheiro_definicoes() const;
    // Settings of the database for when those of the settings file are incomplete.
    std::filesystem::path catalogo() const;
};

// With passwords that can be used. Each throws Falha, naming the file that cannot be read, or whose password
// cannot be opened. What they give may be incomplete all the same.
DefinicoesBD definicoes_bd(const std::filesystem::path& ficheiro, const std::filesystem::path& catalogo,
                           const AbreProtegida& abre);
DefinicoesERP definicoes_erp(const std::filesystem::path& ficheiro, const AbreProtegida& abre);

// The 32-bit program that is to work in place of `programa`, since the settings choose it to reach the ERP's
// component; none where this one is to work, as any of 32 bits. Throws Falha where it is not installed.
std::optional<std::filesystem::path> programa_de_32_bits(const DefinicoesERP& definicoes,
                                                         const std::filesystem::path& programa,
                                                         int bits = bits_do_programa);

// The program of this name that goes with `programa`, for what loads no component: beside it or, from the
// folder `32`, above it. Throws Falha where there is none.
std::filesystem::path programa_a_par(const std::filesystem::path& programa, const std::string& nome);

// The connection text that SessaoBD::Abre takes.
std::string texto_ligacao(const DefinicoesBD& definicoes);

} // namespace orvex::startup
