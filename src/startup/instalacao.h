// Where an installation's files are, and what its settings come to once their fallbacks are applied.
#pragma once

#include "startup/definicoes.h"

#include <filesystem>
#include <string>

namespace orvex::startup {

struct PastasInstalacao {
    std::filesystem::path comum;    // base folder shared by the maker's programs
    std::filesystem::path programa; // folder of the executable, with the parameters file

    // The common folder is the one ORVEX_PASTA_COMUM names in the environment, or else the program's.
    static PastasInstalacao de(const std::filesystem::path& programa);

    // In the common folder's TRAMEL, or beside the program where there is no such folder. Throws Falha when
    // nobody can tell.
    std::filesystem::path ficheiro_definicoes() const;
    // Settings of the database for when those of the settings file are incomplete.
    std::filesystem::path catalogo() const;
};

// Each throws Falha, naming the file that cannot be read. What they give may be incomplete all the same.
DefinicoesBD definicoes_bd(const std::filesystem::path& ficheiro, const std::filesystem::path& catalogo);
DefinicoesERP definicoes_erp(const std::filesystem::path& ficheiro);

// The connection text that SessaoBD::Abre takes.
std::string texto_ligacao(const DefinicoesBD& definicoes);

} // namespace orvex::startup
