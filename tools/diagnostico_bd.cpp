#include "diagnostico_bd.h"

#include "base/texto.h"
#include "controladores_odbc.h"
#include "platform/odbc/sessao_odbc.h"
#include "platform/odbc/texto_ligacao.h"
#include "platform/sqlite/sessao_sqlite.h"

#include <algorithm>

namespace orvex::diagnostico {
namespace {

using startup::DefinicoesBD;
using startup::SessaoBD;

// Asked of a session that may not be open: the failure tells why.
std::string porque_nao_abriu(SessaoBD& BD) {
    try {
        BD.Consulta("Select * from xel_ORVEX where 1=0");
    } catch (const base::Falha& falha) {
        return falha.what();
    }
    return {};
}

Resultado ligacao_recusada(SessaoBD& BD) {
    return {"ligação", Estado::erro,
            porque_nao_abriu(BD) +
                " Verifique em [BD] Servidor, Base, Utilizador, PalavraPasse e Encriptacao."};
}

bool instalado(const std::string& controlador) {
    const auto todos = controladores_instalados();
    std::error_code erro;
    return std::filesystem::exists(controlador, erro) || // drivers may also be named by their file
           std::any_of(todos.begin(), todos.end(),
                       [&](const std::string& este) { return base::mesmo_nome(este, controlador); });
}

Resultado controlador_em_falta(const std::string& controlador) {
    std::string instalados;
    for (const std::string& este : controladores_instalados())
        instalados += (instalados.empty() ? "" : ", ") + este;
    return {"controlador ODBC", Estado::erro,
            "«" + controlador +
                "» não está instalado. Instale-o, ou corrija Controlador em [BD]. Instalados: " +
                (instalados.empty() ? "nenhum" : instalados) + "."};
}

Resultado encriptacao(SessaoBD& BD, const DefinicoesBD& definicoes) {
    const std::string pedida =
        "Encriptacao=" + (definicoes.encriptacao.empty() ? "sim" : definicoes.encriptacao);
    try {
        const auto resposta =
            BD.Consulta("SELECT encrypt_option FROM sys.dm_exec_connections WHERE session_id=@@SPID");
        if (!resposta->fim()) {
            const bool encriptada = base::mesmo_nome(resposta->valor(0).texto(), "TRUE");
            return {"encriptação", encriptada ? Estado::ok : Estado::informacao,
                    (encriptada ? "a ligação está encriptada, com " : "a ligação não está encriptada, com ") +
                        pedida};
        }
    } catch (const base::Falha&) {
    }
    return {"encriptação", Estado::nao_verificado,
            "o servidor não diz se a ligação está encriptada; nas definições, " + pedida};
}

// Each tells whether the database opened.

bool verifica_servidor(const DefinicoesBD& definicoes, Resultados& resultados) {
    const std::string controlador =
        definicoes.controlador.empty() ? platform::odbc::controlador_normal : definicoes.controlador;
    platform::odbc::SessaoODBC BD;
    const bool aberta = BD.Abre(startup::texto_ligacao(definicoes));
    if (!aberta && !instalado(controlador)) {
        resultados.push_back(controlador_em_falta(controlador));
        resultados.push_back({"ligação", Estado::nao_verificado, "depende do controlador"});
        return false;
    }
    const auto servidor = aberta ? BD.servidor() : platform::odbc::Servidor{};
    resultados.push_back(
        {"controlador ODBC", Estado::ok, controlador + (aberta ? " (" + servidor.controlador + ")" : "")});
    if (!aberta) {
        resultados.push_back(ligacao_recusada(BD));
        return false;
    }
    resultados.push_back({"ligação", Estado::ok,
                          definicoes.base + " em " + definicoes.servidor + " como " + definicoes.utilizador +
                              ", " + servidor.versao});
    resultados.push_back(encriptacao(BD, definicoes));
    verifica_tabelas(BD, definicoes, resultados);
    return true;
}

bool verifica_embebida(const DefinicoesBD& definicoes, Resultados& resultados) {
    platform::sqlite::SessaoSQLite BD;
    const bool aberta = BD.Abre(startup::texto_ligacao(definicoes));
    resultados.push_back(
        aberta ? Resultado{"ligação", Estado::ok, "empresa embebida " + definicoes.base + " (SQLite)"}
               : ligacao_recusada(BD));
    if (aberta) verifica_tabelas(BD, definicoes, resultados);
    return aberta;
}

} // namespace

void verifica_base_de_dados(const DefinicoesBD& definicoes, Resultados& resultados) {
    const bool embebida = definicoes.servidor == startup::servidor_embebido;
    if (!(embebida ? verifica_embebida(definicoes, resultados) : verifica_servidor(definicoes, resultados)))
        resultados.push_back({"tabelas, direitos e índices", Estado::nao_verificado, "dependem da ligação"});
}

} // namespace orvex::diagnostico
