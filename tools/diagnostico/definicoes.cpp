#include "definicoes.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "platform/operacoes/sistema.h"
#include "platform/proteccao/proteccao.h"

namespace orvex::diagnostico {
namespace {

namespace fs = std::filesystem;
using startup::DefinicoesBD;
using startup::DefinicoesERP;

bool verifica_ficheiro(const fs::path& ficheiro, Resultados& resultados) {
    constexpr const char* nome = "definições";
    try {
        DefinicoesBD::le(ficheiro);
    } catch (const base::Falha& falha) {
        resultados.push_back({nome, Estado::erro, std::string(falha.what()) + " Crie-o, ou corrija-o."});
        return false;
    }
    resultados.push_back({nome, Estado::ok, base::texto_de(ficheiro)});
    return true;
}

// Of a file with passwords.
void verifica_permissoes(const fs::path& ficheiro, Resultados& resultados) {
    const std::string nome = "permissões de " + base::texto_de(ficheiro.filename());
#ifdef _WIN32
    resultados.push_back({nome, Estado::nao_verificado,
                          "veja na página Segurança das propriedades do ficheiro que só o lê quem usa o "
                          "programa"});
#else
    std::error_code erro;
    const fs::perms permissoes = fs::status(ficheiro, erro).permissions();
    const bool fechado = (permissoes & (fs::perms::others_read | fs::perms::others_write)) == fs::perms::none;
    resultados.push_back({nome, fechado ? Estado::ok : Estado::erro,
                          fechado ? "só o lêem o dono e o grupo"
                                  : "tem palavras-passe, e está aberto a qualquer utilizador da máquina: "
                                    "chmod o= \"" +
                                        base::texto_de(ficheiro) +
                                        "\", com quem usa o programa no grupo do ficheiro."});
#endif
}

void verifica_permissoes(const startup::PastasInstalacao& pastas, Resultados& resultados) {
    const fs::path definicoes = pastas.ficheiro_definicoes();
    if (!DefinicoesBD::le(definicoes).palavra_passe.empty() ||
        !DefinicoesERP::le(definicoes).valores[DefinicoesERP::palavra_passe].empty())
        verifica_permissoes(definicoes, resultados);
    try {
        if (!DefinicoesBD::le(pastas.catalogo()).palavra_passe.empty())
            verifica_permissoes(pastas.catalogo(), resultados);
    } catch (const base::Falha&) { // not there, as in most installations
    }
}

std::optional<DefinicoesBD> verifica_bd(const startup::PastasInstalacao& pastas, Resultados& resultados) {
    constexpr const char* nome = "definições da base de dados";
    const fs::path ficheiro = pastas.ficheiro_definicoes();
    const fs::path catalogo = pastas.catalogo();
    const DefinicoesBD proprias = DefinicoesBD::le(ficheiro);
    std::string porque;
    try {
        const DefinicoesBD usadas = startup::definicoes_bd(ficheiro, catalogo, platform::proteccao::abre);
        if (!usadas.incompletas()) {
            const std::string de = proprias.incompletas() ? " (de " + base::texto_de(catalogo) + ")" : "";
            resultados.push_back(
                {nome, Estado::ok,
                 "servidor " + usadas.servidor + ", base " + usadas.base + ", " + quem_entra(usadas) + de});
            return usadas;
        }
        porque = "«" + base::texto_de(catalogo) + "» também está incompleto.";
    } catch (const base::Falha& falha) {
        porque = falha.what();
    }
    if (!proprias.incompletas()) { // what fails of them is the password
        resultados.push_back({nome, Estado::erro, porque});
        return std::nullopt;
    }
    resultados.push_back({nome, Estado::erro,
                          "Preencha em [BD] de «" + base::texto_de(ficheiro) + "»: " +
                              em_falta({{"Servidor", proprias.servidor},
                                        {"Base", proprias.base},
                                        {"Utilizador", proprias.utilizador}}) +
                              ". " + porque});
    return std::nullopt;
}

std::optional<DefinicoesERP> verifica_erp(const fs::path& ficheiro, Resultados& resultados) {
    try {
        return startup::definicoes_erp(ficheiro, platform::proteccao::abre);
    } catch (const base::Falha& falha) { // the password's
        resultados.push_back({"definições do ERP", Estado::erro, falha.what()});
        return std::nullopt;
    }
}

} // namespace

Definicoes verifica_definicoes(const startup::PastasInstalacao& pastas, Resultados& resultados) {
    Definicoes definicoes{pastas.ficheiro_definicoes(), {}, {}};
    if (!verifica_ficheiro(definicoes.ficheiro, resultados)) return definicoes;
    verifica_permissoes(pastas, resultados);
    definicoes.bd = verifica_bd(pastas, resultados);
    definicoes.erp = verifica_erp(definicoes.ficheiro, resultados);
    return definicoes;
}

std::string quem_entra(const DefinicoesBD& definicoes) {
    return definicoes.utilizador_do_sistema
               ? "sessão do sistema de " + platform::operacoes::utilizador_da_maquina()
               : "utilizador " + definicoes.utilizador;
}

std::string em_falta(std::initializer_list<Valor> valores) {
    std::vector<std::string> nomes;
    for (const auto& [nome, texto] : valores)
        if (texto.empty()) nomes.emplace_back(nome);
    return enumera(nomes);
}

} // namespace orvex::diagnostico
