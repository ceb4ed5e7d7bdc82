#include "startup/ficheiro.h"

#include "base/falha.h"
#include "base/pagina_codigo.h"
#include "base/texto.h"

#include <fstream>
#include <iterator>

namespace orvex::startup {

std::vector<std::string> le_linhas(const std::filesystem::path& ficheiro, const std::string& especie) {
    // Opening a folder as a file succeeds on some systems and then reads nothing.
    std::ifstream entrada;
    if (!std::filesystem::is_directory(ficheiro)) entrada.open(ficheiro, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(entrada)), std::istreambuf_iterator<char>());
    if (!entrada.is_open() || entrada.bad())
        throw base::Falha("Não foi possível abrir o ficheiro " + especie + " «" + ficheiro.string() + "».");

    std::vector<std::string> linhas = base::divide(base::texto_de_ficheiro(bytes), '\n');
    for (std::string& linha : linhas)
        if (!linha.empty() && linha.back() == '\r') linha.pop_back();
    return linhas;
}

std::map<std::string, std::string> le_ini(const std::filesystem::path& ficheiro) {
    std::map<std::string, std::string> valores;
    std::string seccao;
    for (const std::string& linha : le_linhas(ficheiro, "de definições")) {
        const std::string_view util = base::apara(linha);
        if (util.empty() || util.front() == ';' || util.front() == '#') continue;
        if (util.front() == '[' && util.back() == ']') {
            seccao = base::maiusculas(util.substr(1, util.size() - 2)) + ".";
            continue;
        }
        const std::size_t igual = util.find('=');
        if (igual == std::string_view::npos) continue;
        valores.try_emplace(seccao + base::maiusculas(base::apara(util.substr(0, igual))),
                            base::apara(util.substr(igual + 1)));
    }
    return valores;
}

} // namespace orvex::startup
