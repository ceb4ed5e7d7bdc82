#include "definicoes.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "direitos.h"
#include "platform/operacoes/sistema.h"
#include "platform/proteccao/proteccao.h"
#include "startup/palavra_passe.h"

namespace orvex::diagnostico {
namespace {

namespace fs = std::filesystem;
using startup::DefinicoesBD;
using startup::DefinicoesERP;

bool verifica_ficheiro(const fs::path& ficheiro, Resultados& resultados) {
    constexpr const char* nome = "definições";
    try {
        DefinicoesBD::le(ficheiro);
        DefinicoesERP::le(ficheiro);
    } catch (const base::Falha& falha) {
        resultados.push_back({nome, Estado::erro, std::string(falha.what()) + " Crie-o, ou corrija-o."});
        return false;
    }
    resultados.push_back({nome, Estado::ok, base::texto_de(ficheiro)});
    return true;
}

// A password as it stands in the file.
struct Escrita {
    const char* seccao;
    std::string valor;
};

enum class Guardadas { nenhuma, protegidas, por_extenso };

Guardadas verifica_palavras_passe(const fs::path& ficheiro, std::initializer_list<Escrita> todas,
                                  Resultados& resultados) {
    std::vector<std::string> protegidas, por_extenso;
    for (const auto& [seccao, valor] : todas)
        if (!valor.empty()) (startup::protegida(valor) ? protegidas : por_extenso).emplace_back(seccao);
    if (protegidas.empty() && por_extenso.empty()) return Guardadas::nenhuma;
    Resultado este{"palavras-passe de " + base::texto_de(ficheiro.filename()), Estado::ok, ""};
    if (!protegidas.empty()) este.texto = "protegidas em " + enumera(protegidas);
    if (!por_extenso.empty()) {
        este.texto += (protegidas.empty() ? "por extenso em " : "; por extenso em ") + enumera(por_extenso);
#ifdef _WIN32
        este.estado = Estado::aviso;
        este.texto += ". Proteja-as: orvex-diagnostico --protege-palavras-passe";
#else
        este.estado = Estado::informacao; // there is no other way
#endif
    }
    resultados.push_back(este);
    return por_extenso.empty() ? Guardadas::protegidas : Guardadas::por_extenso;
}

#ifdef _WIN32
// Whoever uses the program has to read the settings; who may change them sends the others where he likes.
void verifica_permissoes(const fs::path& ficheiro, Guardadas guardadas, Resultados& resultados) {
    const auto todos = direitos_de_todos(ficheiro);
    Resultado este{"permissões de " + base::texto_de(ficheiro.filename()), Estado::ok,
                   "os utilizadores em geral não o podem alterar"};
    if (!todos)
        este = {este.o_que, Estado::nao_verificado,
                "veja na página Segurança das propriedades do ficheiro quem o pode ler e alterar"};
    else if (todos->muda)
        este = {este.o_que, Estado::aviso,
                "qualquer utilizador da máquina o pode alterar, e com ele a empresa em que os outros gravam: "
                "na página Segurança das propriedades do ficheiro, deixe a escrita só a quem administra."};
    else if (todos->le && guardadas == Guardadas::por_extenso)
        este = {este.o_que, Estado::aviso,
                "qualquer utilizador da máquina lê as palavras-passe que lá estão por extenso."};
    resultados.push_back(este);
}
#else
void verifica_permissoes(const fs::path& ficheiro, Guardadas guardadas, Resultados& resultados) {
    if (guardadas == Guardadas::nenhuma) return;
    std::error_code erro;
    const fs::perms permissoes = fs::status(ficheiro, erro).permissions();
    const bool fechado = (permissoes & (fs::perms::others_read | fs::perms::others_write)) == fs::perms::none;
    resultados.push_back(
        {"permissões de " + base::texto_de(ficheiro.filename()), fechado ? Estado::ok : Estado::erro,
         fechado ? "só o lêem o dono e o grupo"
                 : "tem palavras-passe, e está aberto a qualquer utilizador da máquina: "
                   "chmod o= \"" +
                       base::texto_de(ficheiro) + "\", com quem usa o programa no grupo do ficheiro."});
}
#endif

void verifica_quem_le(const startup::PastasInstalacao& pastas, Resultados& resultados) {
    const auto verifica = [&](const fs::path& ficheiro, std::initializer_list<Escrita> palavras_passe) {
        verifica_permissoes(ficheiro, verifica_palavras_passe(ficheiro, palavras_passe, resultados),
                            resultados);
    };
    const fs::path definicoes = pastas.ficheiro_definicoes();
    verifica(definicoes, {{"[BD]", DefinicoesBD::le(definicoes).palavra_passe},
                          {"[ERP]", DefinicoesERP::le(definicoes).valores[DefinicoesERP::palavra_passe]}});
    try {
        verifica(pastas.catalogo(), {{"[BD]", DefinicoesBD::le(pastas.catalogo()).palavra_passe}});
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
    verifica_quem_le(pastas, resultados);
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
