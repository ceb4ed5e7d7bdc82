// The layers, as the #include lines of src/ show them: arrows point one way only, and the core stands on the
// standard C++ and its library alone. And the version, which is said once and told in the change log.

#include "tests/apoio/tabela.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

namespace fs = std::filesystem;

// "delivery", or "platform/qt".
std::string camada(const std::string& ficheiro) {
    const auto barra = ficheiro.find('/');
    const bool plataforma = ficheiro.starts_with("platform/");
    return ficheiro.substr(0, plataforma ? ficheiro.find('/', barra + 1) : barra);
}

// What a layer may include besides itself.
const std::pair<const char*, const char*> permitidas[] = {
    {"base", ""},
    {"startup", "base"},
    {"livro", "base startup"},
    {"confirmacao", "base startup livro"},
    {"common", "base startup livro confirmacao"},
    {"delivery adjust transfer", "base startup livro confirmacao common"},
    {"platform/consola platform/espera", ""},
    {"platform/registos", "base startup"},
    {"platform/saidas", "base startup livro"},
    {"platform/proteccao", "base"},
    {"platform/operacoes", "base startup livro confirmacao"},
    // A draft is kept like a journal, and marked with the one of its confirmation.
    {"platform/diario", "base startup livro confirmacao delivery/rascunho.h"},
    {"platform/automacao", "base startup platform/espera"},
    {"platform/sqlite platform/odbc", "base startup common platform/registos platform/espera"},
    // The emulation's file lies beside the ledger's and is opened and spoken to the same way.
    {"platform/erp",
     "base startup common platform/espera platform/sqlite/empresa.h platform/sqlite/guardadas.h"},
    // The windows lay out the screens' controls and the answers of the ledger, and show who waits.
    {"platform/qt", "base startup livro common delivery adjust transfer platform/espera platform/saidas"}};

bool um_de(const std::string& qual, const std::string& nomes) {
    const auto todos = orvex::testes::partes(nomes + " ", " ");
    return std::find(todos.begin(), todos.end(), qual) != todos.end();
}

// Windows' own headers stay in the parts that are compiled for it alone; ODBC's and the environment need
// them.
bool de_windows_fora_dele(const std::string& ficheiro, const std::string& incluido) {
    static const char* const de_windows =
        "objbase.h ole2.h oleauto.h shellapi.h shlobj.h wincrypt.h windows.h winreg.h";
    return um_de(incluido, de_windows) && camada(ficheiro) != "platform/automacao" &&
           !ficheiro.ends_with("_windows.cpp") && ficheiro != "platform/odbc/odbc.h" &&
           ficheiro != "base/caminho.cpp";
}

bool aceite(const std::string& ficheiro, const std::string& incluido, bool do_sistema) {
    const std::string de = camada(ficheiro);
    if (do_sistema && de_windows_fora_dele(ficheiro, incluido)) return false;
    if (de == "app") return true;
    if (ficheiro == "base/caminho.cpp" && do_sistema && (incluido == "windows.h" || incluido == "shellapi.h"))
        return true;
    // No standard header has a capital, a dot or a folder in its name; those of the libraries all do.
    if (do_sistema)
        return de.starts_with("platform/") ||
               incluido.find_first_not_of("abcdefghijklmnopqrstuvwxyz_") == std::string::npos;
    return std::any_of(std::begin(permitidas), std::end(permitidas), [&](const auto& regra) {
        return um_de(de, regra.first) && (camada(incluido) == de || um_de(incluido, regra.second) ||
                                          um_de(camada(incluido), regra.second));
    });
}

// The core is the same on every compiler and system, but for the two files that ask the system.
bool so_de_um_compilador(const std::string& ficheiro, const std::string& sem_brancos) {
    return !ficheiro.starts_with("platform/") && ficheiro != "base/caminho.cpp" &&
           ficheiro != "base/datahora.cpp" &&
           (sem_brancos.find("__") != std::string::npos || sem_brancos.starts_with("#if") ||
            (sem_brancos.starts_with("#pragma") && sem_brancos != "#pragmaonce"));
}

std::string violacoes(const std::string& ficheiro, std::istream& texto) {
    std::string resultado;
    for (std::string linha; std::getline(texto, linha);) {
        std::erase(linha, ' ');
        if (so_de_um_compilador(ficheiro, linha)) resultado += ficheiro + ": " + linha + "\n";
        if (!linha.starts_with("#include")) continue;
        const std::string incluido = linha.substr(9, linha.find_first_of(">\"", 9) - 9);
        if (!aceite(ficheiro, incluido, linha[8] == '<')) resultado += ficheiro + " -> " + incluido + "\n";
    }
    return resultado;
}

} // namespace

TEST(Camadas, UmIncludeProibidoEncontraSe) {
    for (const auto& caso : orvex::testes::tabela(
             "delivery/a.h =>   # include <QString> | delivery/a.h => #include \"adjust/a.h\" | "
             "platform/qt/a.h => #include \"platform/sqlite/empresa.h\" | base/a.h => #pragma GCC poison x | "
             "base/a.cpp =>  if (__builtin_expect(1, 1)) | novo/a.h => #include \"base/moeda.h\" | "
             "app/a.cpp => #include <windows.h> | platform/qt/a.h => #include <oleauto.h>")) {
        std::istringstream texto(caso[1]);
        EXPECT_NE(violacoes(caso[0], texto), "") << caso[0] << " " << caso[1];
    }
}

TEST(Camadas, TodosOsIncludesDasFontesApontamNoSentidoPermitido) {
    int ficheiros = 0;
    for (const auto& entrada : fs::recursive_directory_iterator(ORVEX_FONTES)) {
        if (entrada.path().extension() != ".h" && entrada.path().extension() != ".cpp") continue;
        std::ifstream texto(entrada.path());
        EXPECT_EQ(violacoes(fs::relative(entrada.path(), ORVEX_FONTES).generic_string(), texto), "");
        ++ficheiros;
    }
    EXPECT_GT(ficheiros, 50);
}

TEST(Versao, AEntradaMaisRecenteDasMudancasEAVersaoQueSeConstroi) {
    std::ifstream texto(ORVEX_FONTES "/../CHANGELOG.md");
    std::string linha;
    while (std::getline(texto, linha) && !linha.starts_with("## ["))
        continue;
    EXPECT_TRUE(linha.starts_with("## [" ORVEX_VERSAO "]")) << linha;
}
