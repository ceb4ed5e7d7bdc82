#include "diagnostico.h"

#include "base/falha.h"
#include "diagnostico_bd.h"
#include "diagnostico_parametros.h"
#include "platform/erp/sessao_erp_embebida.h"

#include <algorithm>
#include <optional>

namespace orvex::diagnostico {
namespace {

using startup::DefinicoesBD;
using startup::DefinicoesERP;

struct Valor {
    const char* nome;
    const std::string& texto;
};

std::string em_falta(std::initializer_list<Valor> valores) {
    std::string nomes;
    for (const auto& [nome, texto] : valores)
        if (texto.empty()) nomes += (nomes.empty() ? "" : ", ") + std::string(nome);
    return nomes;
}

bool verifica_definicoes(const std::filesystem::path& ficheiro, Resultados& resultados) {
    try {
        DefinicoesBD::le(ficheiro);
    } catch (const base::Falha& falha) {
        resultados.push_back(
            {"definições", Estado::erro, std::string(falha.what()) + " Crie-o, ou dê permissão para o ler."});
        return false;
    }
    resultados.push_back({"definições", Estado::ok, ficheiro.string()});
    return true;
}

std::optional<DefinicoesBD> verifica_definicoes_bd(const startup::PastasInstalacao& pastas,
                                                   Resultados& resultados) {
    constexpr const char* nome = "definições da base de dados";
    const std::filesystem::path ficheiro = pastas.ficheiro_definicoes();
    const DefinicoesBD proprias = DefinicoesBD::le(ficheiro);
    std::string porque;
    try {
        const DefinicoesBD usadas = startup::definicoes_bd(ficheiro, pastas.catalogo());
        if (!usadas.incompletas()) {
            const bool do_catalogo = proprias.incompletas();
            resultados.push_back({nome, Estado::ok,
                                  "servidor " + usadas.servidor + ", base " + usadas.base + ", utilizador " +
                                      usadas.utilizador +
                                      (do_catalogo ? " (de " + pastas.catalogo().string() + ")" : "")});
            return usadas;
        }
        porque = "«" + pastas.catalogo().string() + "» também está incompleto.";
    } catch (const base::Falha& falha) {
        porque = falha.what();
    }
    resultados.push_back({nome, Estado::erro,
                          "Preencha em [BD] de «" + ficheiro.string() + "»: " +
                              em_falta({{"Servidor", proprias.servidor},
                                        {"Base", proprias.base},
                                        {"Utilizador", proprias.utilizador}}) +
                              ". " + porque});
    return std::nullopt;
}

void verifica_bd(const std::optional<DefinicoesBD>& definicoes, Resultados& resultados) {
    if (!definicoes) {
        resultados.push_back({"base de dados", Estado::nao_verificado, "depende das definições"});
        return;
    }
    try {
        verifica_base_de_dados(*definicoes, resultados);
    } catch (const std::exception& falha) { // lost on the way, say
        resultados.push_back({"base de dados", Estado::erro, falha.what()});
    }
}

void verifica_erp(const std::filesystem::path& ficheiro, Resultados& resultados) {
    constexpr const char* nome = "entrada no ERP";
    const DefinicoesERP definicoes = startup::definicoes_erp(ficheiro);
    const auto& v = definicoes.valores;
    if (definicoes.incompletas()) {
        resultados.push_back({nome, Estado::erro,
                              "Preencha em [ERP] de «" + ficheiro.string() + "»: " +
                                  em_falta({{"Empresa", v[DefinicoesERP::empresa]},
                                            {"Utilizador", v[DefinicoesERP::utilizador]},
                                            {"Servidor", v[DefinicoesERP::servidor]},
                                            {"Base", v[DefinicoesERP::base]}}) +
                                  "."});
        return;
    }
    const std::string quem = v[DefinicoesERP::utilizador] + " na empresa " + v[DefinicoesERP::empresa] +
                             " (servidor " + v[DefinicoesERP::servidor] + ", base " + v[DefinicoesERP::base] +
                             ")";
    try {
        platform::erp::SessaoERPEmbebida sessao;
        const bool aceite = sessao.Liga(v);
        sessao.Desliga();
        resultados.push_back({nome, aceite ? Estado::ok : Estado::erro,
                              aceite ? quem
                                     : "O ERP recusou " + quem +
                                           ": corrija Empresa, Utilizador ou PalavraPasse em [ERP] de «" +
                                           ficheiro.string() + "»."});
    } catch (const std::exception& falha) {
        resultados.push_back({nome, Estado::erro,
                              std::string(falha.what()) + " Corrija Servidor e Base em [ERP] de «" +
                                  ficheiro.string() + "»."});
    }
}

} // namespace

Resultados diagnostica(const startup::PastasInstalacao& pastas) {
    Resultados resultados;
    const std::filesystem::path ficheiro = pastas.ficheiro_definicoes();
    const bool com_definicoes = verifica_definicoes(ficheiro, resultados);
    const auto bd = com_definicoes ? verifica_definicoes_bd(pastas, resultados) : std::nullopt;
    verifica_bd(bd, resultados);
    verifica_parametros(startup::Parametros(pastas.programa), pastas.programa, resultados);
    if (com_definicoes)
        verifica_erp(ficheiro, resultados);
    else
        resultados.push_back({"entrada no ERP", Estado::nao_verificado, "depende das definições"});
    return resultados;
}

bool tem_erros(const Resultados& resultados) {
    return std::any_of(resultados.begin(), resultados.end(),
                       [](const Resultado& este) { return este.estado == Estado::erro; });
}

std::string texto(const Resultados& resultados) {
    constexpr const char* inicios[] = {"ok    ", "ERRO  ", "info  ", "?     "};
    std::string linhas;
    for (const Resultado& este : resultados)
        linhas += inicios[static_cast<int>(este.estado)] + este.o_que + ": " +
                  (este.estado == Estado::nao_verificado ? "não verificado: " : "") + este.texto + "\n";
    return linhas;
}

} // namespace orvex::diagnostico
