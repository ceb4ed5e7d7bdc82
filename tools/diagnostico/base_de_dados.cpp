#include "base_de_dados.h"
#include "definicoes.h"
#include "livro/tabelas.h"

#include "base/texto.h"
#include "platform/odbc/controladores.h"
#include "platform/odbc/sessao_odbc.h"
#include "platform/odbc/texto_ligacao.h"
#include "platform/operacoes/sistema.h"
#include "platform/sqlite/sessao_sqlite.h"

#include <algorithm>

namespace orvex::diagnostico {
namespace {

using startup::DefinicoesBD;
using startup::SessaoBD;

// Asked of a session that may not be open: the failure tells why.
std::string porque_nao_abriu(SessaoBD& BD) {
    try {
        BD.Consulta(livro::sonda_detentores);
    } catch (const base::Falha& falha) {
        return falha.what();
    }
    return {};
}

Resultado ligacao_recusada(SessaoBD& BD, const DefinicoesBD& definicoes) {
    const std::string entrada = definicoes.utilizador_do_sistema
                                    ? "Autenticacao (entra quem trabalha na máquina: " +
                                          platform::operacoes::utilizador_da_maquina() + ")"
                                    : "Utilizador, PalavraPasse";
    return {"ligação", Estado::erro,
            porque_nao_abriu(BD) + " Verifique em [BD] Servidor, Base, " + entrada + " e Encriptacao."};
}

bool instalado(const std::string& controlador) {
    const auto todos = platform::odbc::controladores_instalados();
    std::error_code erro;
    return std::filesystem::exists(controlador, erro) || // drivers may also be named by their file
           std::any_of(todos.begin(), todos.end(),
                       [&](const auto& este) { return base::mesmo_nome(este.nome, controlador); });
}

Resultado controladores() {
    std::vector<std::string> nomes;
    for (const auto& este : platform::odbc::controladores_instalados())
        nomes.push_back(este.nome);
    return {"controladores ODBC", Estado::informacao,
            "para programas de " + de_bits(bits_do_programa) + ": " +
                (nomes.empty() ? "nenhum" : enumera(nomes))};
}

std::unique_ptr<SessaoBD> verifica_servidor(const DefinicoesBD& definicoes, Resultados& resultados) {
    const std::string controlador =
        definicoes.controlador.empty() ? platform::odbc::controlador_normal : definicoes.controlador;
    auto BD = std::make_unique<platform::odbc::SessaoODBC>();
    const bool aberta = BD->Abre(startup::texto_ligacao(definicoes));
    if (!aberta && !instalado(controlador)) {
        resultados.push_back(
            {"controlador ODBC", Estado::erro,
             "«" + controlador + "» não está instalado. Instale-o, ou corrija Controlador em [BD]."});
        resultados.push_back({"ligação", Estado::nao_verificado, "depende do controlador"});
        return nullptr;
    }
    const auto servidor = aberta ? BD->servidor() : platform::odbc::Servidor{};
    resultados.push_back(
        {"controlador ODBC", Estado::ok, controlador + (aberta ? " (" + servidor.controlador + ")" : "")});
    if (!aberta) {
        resultados.push_back(ligacao_recusada(*BD, definicoes));
        return nullptr;
    }
    resultados.push_back({"ligação", Estado::ok,
                          definicoes.base + " em " + definicoes.servidor + ", " + quem_entra(definicoes) +
                              ", " + servidor.versao});
    verifica_encriptacao(*BD, definicoes, resultados);
    return BD;
}

std::unique_ptr<SessaoBD> verifica_embebida(const DefinicoesBD& definicoes, Resultados& resultados) {
    auto BD = std::make_unique<platform::sqlite::SessaoSQLite>();
    const bool aberta = BD->Abre(startup::texto_ligacao(definicoes));
    resultados.push_back(
        aberta ? Resultado{"ligação", Estado::ok, "empresa embebida " + definicoes.base + " (SQLite)"}
               : ligacao_recusada(*BD, definicoes));
    if (!aberta) return nullptr;
    return BD;
}

} // namespace

std::unique_ptr<SessaoBD> verifica_base_de_dados(const std::optional<DefinicoesBD>& definicoes,
                                                 Resultados& resultados) {
    if (!definicoes || definicoes->servidor != startup::servidor_embebido)
        resultados.push_back(controladores());
    if (!definicoes) {
        resultados.push_back({"base de dados", Estado::nao_verificado, "depende das definições"});
        return nullptr;
    }
    std::unique_ptr<SessaoBD> BD;
    try {
        BD = definicoes->servidor == startup::servidor_embebido ? verifica_embebida(*definicoes, resultados)
                                                                : verifica_servidor(*definicoes, resultados);
        if (BD != nullptr)
            verifica_tabelas(*BD, *definicoes, resultados);
        else
            resultados.push_back(
                {"tabelas, direitos e índices", Estado::nao_verificado, "dependem da ligação"});
    } catch (const std::exception& falha) { // lost on the way, say
        resultados.push_back({"base de dados", Estado::erro, falha.what()});
    }
    return BD;
}

void verifica_encriptacao(SessaoBD& BD, const DefinicoesBD& definicoes, Resultados& resultados) {
    constexpr const char* nome = "encriptação";
    const std::string pedida =
        "Encriptacao=" + (definicoes.encriptacao.empty() ? "sim" : definicoes.encriptacao);
    std::string resposta;
    try {
        const auto linha =
            BD.Consulta("SELECT encrypt_option FROM sys.dm_exec_connections WHERE session_id=@@SPID");
        if (!linha->fim()) resposta = linha->valor(0).texto();
    } catch (const base::Falha&) {
    }
    if (base::mesmo_nome(resposta, "TRUE")) {
        resultados.push_back({nome, Estado::ok, "a ligação está encriptada, com " + pedida});
    } else if (!base::mesmo_nome(resposta, "FALSE")) {
        resultados.push_back({nome, Estado::nao_verificado,
                              "o servidor não diz se a ligação está encriptada; nas definições, " + pedida});
    } else if (base::primeiros(base::maiusculas(definicoes.encriptacao), 1) ==
               "N") { // nao, with or without accent
        resultados.push_back({nome, Estado::informacao, "a ligação não está encriptada, com " + pedida});
    } else {
        resultados.push_back(
            {nome, Estado::erro,
             "a ligação não está encriptada, apesar de " + pedida +
                 ": os dados podem ser lidos na rede. Use outro Controlador em [BD], ou mande o "
                 "servidor obrigar à encriptação."});
    }
}

} // namespace orvex::diagnostico
