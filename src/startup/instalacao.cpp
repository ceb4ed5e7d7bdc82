#include "startup/instalacao.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "startup/construtor_ligacao.h"
#include "startup/ficheiro.h"

namespace orvex::startup {

PastasInstalacao PastasInstalacao::de(const std::filesystem::path& programa) {
    const std::filesystem::path comum = base::caminho_do_ambiente("ORVEX_PASTA_COMUM");
    return {comum.empty() ? programa : comum, programa};
}

std::filesystem::path PastasInstalacao::ficheiro_definicoes() const {
    const std::filesystem::path pasta = comum / "TRAMEL";
    std::error_code erro;
    const auto tipo = std::filesystem::status(pasta, erro).type();
    // A folder that cannot be asked for may well be there: the program's own settings are another company's.
    if (tipo == std::filesystem::file_type::none)
        throw base::Falha("Não foi possível procurar as definições: «" + base::texto_de(pasta) + "» " +
                          defeito_da_pasta(pasta) + ".");
    return (tipo == std::filesystem::file_type::directory ? pasta : programa) / "OrvexEXE.xel";
}

std::filesystem::path PastasInstalacao::catalogo() const { return programa / "Catalogos" / "bd.sql"; }

DefinicoesBD definicoes_bd(const std::filesystem::path& ficheiro, const std::filesystem::path& catalogo) {
    const DefinicoesBD definicoes = DefinicoesBD::le(ficheiro);
    return definicoes.incompletas() ? DefinicoesBD::le(catalogo) : definicoes;
}

DefinicoesERP definicoes_erp(const std::filesystem::path& ficheiro) {
    DefinicoesERP definicoes = DefinicoesERP::le(ficheiro);
    if (definicoes.incompletas()) definicoes.completa(ficheiro);
    return definicoes;
}

std::string texto_ligacao(const DefinicoesBD& definicoes) {
    return ConstrutorLigacao{.servidor = definicoes.servidor,
                             .base = definicoes.base,
                             .utilizador = definicoes.utilizador,
                             .palavra_passe = definicoes.palavra_passe,
                             .controlador = definicoes.controlador,
                             .encriptacao = definicoes.encriptacao}
        .constroi();
}

} // namespace orvex::startup
