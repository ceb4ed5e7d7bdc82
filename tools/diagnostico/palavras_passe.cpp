#include "palavras_passe.h"

#include "base/caminho.h"
#include "base/falha.h"
#include "base/pagina_codigo.h"
#include "platform/proteccao/proteccao.h"
#include "startup/ficheiro.h"

#include <ostream>
#include <vector>

namespace orvex::diagnostico {
namespace {

using startup::LinhaINI;
using startup::linhas_ini;

bool por_proteger(const LinhaINI& linha) {
    return (linha.chave == "BD.PALAVRAPASSE" || linha.chave == "ERP.PALAVRAPASSE") && !linha.valor.empty() &&
           !startup::protegida(linha.valor);
}

// A file's encoding is told by its bytes, and some of them may have been the password's alone.
void exige_o_resto_igual(const std::string& antes, const std::string& depois) {
    const std::string textos[] = {base::texto_de_ficheiro(antes), base::texto_de_ficheiro(depois)};
    const auto antigas = linhas_ini(textos[0]), novas = linhas_ini(textos[1]);
    bool iguais = antigas.size() == novas.size();
    for (std::size_t i = 0; iguais && i < novas.size(); ++i)
        iguais = antigas[i].chave == novas[i].chave &&
                 (por_proteger(antigas[i]) || antigas[i].valor == novas[i].valor);
    if (!iguais)
        throw base::Falha(
            "Sem a palavra-passe, as outras definições seriam lidas com outros acentos: grave o "
            "ficheiro em UTF-8 e repita.");
}

// Nothing takes the place of a password but what gives it back.
std::string protege_e_abre(const std::string& claro) {
    std::string protegida = platform::proteccao::protege(claro);
    if (platform::proteccao::abre(protegida) != claro)
        throw base::Falha("O sistema não devolve a palavra-passe que protegeu: nada foi alterado.");
    return protegida;
}

struct Reescrita {
    std::filesystem::path ficheiro;
    std::string antes, depois;
};

Reescrita reescrita_de(const std::filesystem::path& ficheiro) {
    if (const std::string porque = platform::proteccao::impedimento(ficheiro); !porque.empty())
        throw base::Falha("Nada foi alterado: " + porque);
    const std::string antes = startup::le_bytes(ficheiro, "de definições");
    return {ficheiro, antes, com_palavras_passe_protegidas(antes, protege_e_abre)};
}

} // namespace

std::string com_palavras_passe_protegidas(const std::string& definicoes,
                                          const std::function<std::string(const std::string&)>& protege) {
    constexpr std::string_view marca = "\xEF\xBB\xBF"; // of the encoding; no section begins with it
    const std::string_view bytes =
        std::string_view(definicoes).substr(definicoes.starts_with(marca) ? marca.size() : 0);
    const std::string texto = base::texto_de_ficheiro(definicoes);
    const auto onde = linhas_ini(bytes), o_que = linhas_ini(texto);
    std::string resultado;
    const char* copiado = definicoes.data();
    for (std::size_t i = 0; i < onde.size(); ++i) {
        if (!por_proteger(onde[i])) continue;
        resultado.append(copiado, onde[i].valor.data());
        resultado += startup::marca_protegida;
        resultado += protege(std::string(o_que[i].valor));
        copiado = onde[i].valor.data() + onde[i].valor.size();
    }
    resultado.append(copiado, definicoes.data() + definicoes.size());
    exige_o_resto_igual(definicoes, resultado);
    return resultado;
}

void protege_palavras_passe(const startup::PastasInstalacao& pastas, std::ostream& saida) {
    std::vector<Reescrita> todas{reescrita_de(pastas.ficheiro_definicoes())};
    std::error_code erro; // a catalogue that cannot be asked for may be there, with its password
    if (std::filesystem::exists(pastas.catalogo(), erro) || erro)
        todas.push_back(reescrita_de(pastas.catalogo()));
    for (const auto& [ficheiro, antes, depois] : todas) {
        if (depois != antes) platform::proteccao::substitui(ficheiro, depois);
        saida << "«" << base::texto_de(ficheiro)
              << (depois != antes ? "»: palavras-passe protegidas; só esta máquina as abre.\n"
                                  : "»: não tem palavras-passe por proteger.\n");
    }
}

} // namespace orvex::diagnostico
