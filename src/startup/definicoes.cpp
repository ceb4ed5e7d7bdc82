#include "startup/definicoes.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "base/texto.h"
#include "startup/ficheiro.h"

namespace orvex::startup {
namespace {

std::string pasta_completa(const std::string& pasta, const std::filesystem::path& ficheiro) {
    if (pasta.empty()) return pasta;
    return base::texto_de(base::caminho_completo(base::caminho_de(pasta), ficheiro.parent_path()));
}

std::string base_completa(const std::string& servidor, const std::string& base,
                          const std::filesystem::path& ficheiro) {
    return servidor == servidor_embebido ? pasta_completa(base, ficheiro) : base;
}

// User and password beside the system's log-in would be passed over in silence; so the settings must choose.
std::string defeito_da_autenticacao(const std::string& autenticacao, const DefinicoesBD& lidas) {
    if (autenticacao.empty()) return {};
    if (!base::mesmo_nome(autenticacao, "windows"))
        return "Autenticacao só pode ser windows; para utilizador e palavra-passe, retire a linha.";
    if (lidas.servidor == servidor_embebido)
        return "Autenticacao=windows é de um servidor, e não de uma empresa embebida: retire a linha.";
    if (!lidas.utilizador.empty() || !lidas.palavra_passe.empty())
        return "Autenticacao=windows dispensa Utilizador e PalavraPasse: retire uma coisa ou as outras.";
    return {};
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
                       pasta_completa(valores["DIARIO.PASTA"], ficheiro),
                       !valores["BD.AUTENTICACAO"].empty()};
    if (const auto defeito = defeito_da_autenticacao(valores["BD.AUTENTICACAO"], lidas); !defeito.empty())
        throw base::Falha("Em [BD] de «" + base::texto_de(ficheiro) + "», " + defeito);
    lidas.base = base_completa(lidas.servidor, lidas.base, ficheiro);
    return lidas;
}

DefinicoesERP DefinicoesERP::le(const std::filesystem::path& ficheiro) {
    auto valores = le_ini(ficheiro);
    const std::string bits = valores["ERP.BITS"];
    if (!bits.empty() && bits != "32" && bits != "64")
        throw base::Falha("Em [ERP] de «" + base::texto_de(ficheiro) +
                          "», Bits só pode ser 32 ou 64, e não «" + bits + "».");
    DefinicoesERP lidas{{valores["ERP.EMPRESA"], valores["ERP.PALAVRAPASSE"], valores["ERP.UTILIZADOR"],
                         valores["ERP.SERVIDOR"], valores["ERP.BASE"]},
                        valores["ERP.COMPONENTE"],
                        bits == "32"};
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
