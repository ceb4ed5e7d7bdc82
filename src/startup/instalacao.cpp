#include "startup/instalacao.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "startup/construtor_ligacao.h"
#include "startup/ficheiro.h"
#include "startup/parametros.h"

namespace orvex::startup {
namespace {

constexpr const char* nome_definicoes = "OrvexEXE.xel";
constexpr const char* pasta_de_32_bits = "32";

void abre_palavra_passe(std::string& palavra_passe, const char* seccao, const std::filesystem::path& ficheiro,
                        const AbreProtegida& abre) {
    if (!protegida(palavra_passe)) return;
    try {
        palavra_passe = abre(palavra_passe.substr(marca_protegida.size()));
    } catch (const base::Falha& falha) {
        throw base::Falha(std::string("A palavra-passe de ") + seccao + " em «" + base::texto_de(ficheiro) +
                          "» está protegida, e não se abre aqui: " + falha.what() +
                          " Só a abre a máquina onde foi protegida. Escreva-a de novo em PalavraPasse.");
    }
}

} // namespace

std::filesystem::path pasta_da_maquina() {
    const std::filesystem::path dados = base::caminho_do_ambiente("ProgramData");
    std::error_code erro;
    return !dados.empty() && std::filesystem::is_directory(dados / "ORVEX", erro) ? dados / "ORVEX"
                                                                                  : std::filesystem::path();
}

std::filesystem::path pasta_da_instalacao(const std::filesystem::path& de, int bits) {
    const auto programa = bits == 32 && de.filename() == pasta_de_32_bits ? de.parent_path() : de;
    std::error_code erro;
    for (const char* nome : {nome_definicoes, ficheiro_parametros})
        if (std::filesystem::exists(programa / nome, erro)) return programa;
    const std::filesystem::path maquina = pasta_da_maquina();
    return maquina.empty() ? programa : maquina;
}

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
    return (tipo == std::filesystem::file_type::directory ? pasta : programa) / nome_definicoes;
}

std::filesystem::path PastasInstalacao::catalogo() const { return programa / "Catalogos" / "bd.sql"; }

DefinicoesBD definicoes_bd(const std::filesystem::path& ficheiro, const std::filesystem::path& catalogo,
                           const AbreProtegida& abre) {
    DefinicoesBD definicoes = DefinicoesBD::le(ficheiro);
    const bool do_catalogo = definicoes.incompletas();
    if (do_catalogo) definicoes = DefinicoesBD::le(catalogo);
    abre_palavra_passe(definicoes.palavra_passe, "[BD]", do_catalogo ? catalogo : ficheiro, abre);
    return definicoes;
}

DefinicoesERP definicoes_erp(const std::filesystem::path& ficheiro, const AbreProtegida& abre) {
    DefinicoesERP definicoes = DefinicoesERP::le(ficheiro);
    if (definicoes.incompletas()) definicoes.completa(ficheiro);
    abre_palavra_passe(definicoes.valores[DefinicoesERP::palavra_passe], "[ERP]", ficheiro, abre);
    return definicoes;
}

std::optional<std::filesystem::path> programa_de_32_bits(const DefinicoesERP& definicoes,
                                                         const std::filesystem::path& programa, int bits) {
    if (bits == 32 || !definicoes.de_32_bits || definicoes.tipo() == TipoERP::emulacao) return std::nullopt;
    const auto outro = programa.parent_path() / pasta_de_32_bits / programa.filename();
    if (const std::string defeito = defeito_do_ficheiro(outro); !defeito.empty())
        throw base::Falha("As definições dizem, em [ERP], Bits=32; mas o programa de 32 bits, «" +
                          base::texto_de(outro) + "», " + defeito +
                          ". Instale os programas de 32 bits também, ou retire a linha Bits.");
    return outro;
}

std::filesystem::path programa_a_par(const std::filesystem::path& programa, const std::string& nome) {
    const auto pasta = programa.parent_path();
    const auto ficheiro = base::caminho_de(nome + base::texto_de(programa.extension()));
    const std::string defeito = defeito_do_ficheiro(pasta / ficheiro);
    if (defeito.empty()) return pasta / ficheiro;
    if (const auto acima = pasta.parent_path() / ficheiro;
        pasta.filename() == pasta_de_32_bits && defeito_do_ficheiro(acima).empty())
        return acima;
    throw base::Falha("«" + base::texto_de(pasta / ficheiro) + "» " + defeito + ".");
}

std::string texto_ligacao(const DefinicoesBD& definicoes) {
    return ConstrutorLigacao{.opcao = definicoes.utilizador_do_sistema ? ConstrutorLigacao::do_sistema
                                                                       : ConstrutorLigacao::com_palavra_passe,
                             .servidor = definicoes.servidor,
                             .base = definicoes.base,
                             .utilizador = definicoes.utilizador,
                             .palavra_passe = definicoes.palavra_passe,
                             .controlador = definicoes.controlador,
                             .encriptacao = definicoes.encriptacao}
        .constroi();
}

} // namespace orvex::startup
