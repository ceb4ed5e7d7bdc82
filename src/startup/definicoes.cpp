#include "startup/definicoes.h"

#include "base/caminho.h"
#include "startup/ficheiro.h"

namespace orvex::startup {
namespace {

std::string pasta_completa(const std::string& pasta, const std::filesystem::path& ficheiro) {
    if (pasta.empty()) return pasta;
    std::error_code erro; // the folder we are in has gone: the path stays relative, and is not found
    const auto completo = std::filesystem::absolute(ficheiro, erro);
    return base::texto_de(
        ((erro ? ficheiro : completo).parent_path() / base::caminho_de(pasta)).lexically_normal());
}

std::string base_completa(const std::string& servidor, const std::string& base,
                          const std::filesystem::path& ficheiro) {
    return servidor == servidor_embebido ? pasta_completa(base, ficheiro) : base;
}

} // namespace

DefinicoesBD DefinicoesBD::le(const std::filesystem::path& ficheiro) {
    auto valores = le_ini(ficheiro);
    DefinicoesBD lidas{valores["BD.SERVIDOR"],
                       valores["BD.BASE"],
                       valores["BD.UTILIZADOR"],
                       valores["BD.PALAVRAPASSE"],
                       valores["BD.CONTROLADOR"],
                       valores["BD.ENCRIPTACAO"],
                       pasta_completa(valores["DIARIO.PASTA"], ficheiro)};
    lidas.base = base_completa(lidas.servidor, lidas.base, ficheiro);
    return lidas;
}

DefinicoesERP DefinicoesERP::le(const std::filesystem::path& ficheiro) {
    auto valores = le_ini(ficheiro);
    DefinicoesERP lidas{{valores["ERP.EMPRESA"], valores["ERP.PALAVRAPASSE"], valores["ERP.UTILIZADOR"],
                         valores["ERP.SERVIDOR"], valores["ERP.BASE"]}};
    lidas.valores[base] = base_completa(lidas.valores[servidor], lidas.valores[base], ficheiro);
    return lidas;
}

bool DefinicoesERP::incompletas() const {
    return valores[empresa].empty() || valores[utilizador].empty() || valores[servidor].empty() ||
           valores[base].empty();
}

void DefinicoesERP::completa(const std::filesystem::path& ficheiro) {
    const DefinicoesBD bd = DefinicoesBD::le(ficheiro);
    if (valores[utilizador].empty()) valores[utilizador] = bd.utilizador;
    if (valores[servidor].empty()) valores[servidor] = bd.servidor;
    if (valores[base].empty()) valores[base] = bd.base;
}

} // namespace orvex::startup
