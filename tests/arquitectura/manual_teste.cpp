// The manual has each text of a box of the rules, the journal and the windows, and shows no picture that
// there is not.

#include "tests/apoio/pasta_temporaria.h"

#include <gtest/gtest.h>

#include <regex>

namespace {

namespace fs = std::filesystem;
using orvex::testes::conteudo_de;

// What a person reads: line breaks of a literal are blanks, and blanks at the ends and side by side nothing.
std::string lido(const std::string& texto) {
    const std::string corrido = std::regex_replace(texto, std::regex(R"((\\[rn]|\s|(?:"\s+"))+)"), " ");
    return std::regex_replace(corrido, std::regex("^ | $"), "");
}

} // namespace

TEST(Manual, TemOTextoDeCadaCaixa) {
    const std::string mensagens = lido(conteudo_de(ORVEX_FONTES "/../docs/manual/mensagens.md"));
    const std::regex texto_de_caixa(
        R"re((?:Avisa\("", ?|recusa\w*\(|Mensagem\(|Falha\w* ?\w*\(|diz\(|\.aceita\(|avisa\w*\(|mostra_\w+\(\w+, )\s*)re"
        R"re("((?:[^"\\]|\\.|"\s+")+)"|"([A-Z](?:[^"\\]|\\.|"\s+")+[!?])")re");
    int textos = 0;
    for (const char* pasta : {"adjust", "common", "confirmacao", "delivery", "livro", "startup", "transfer",
                              "platform/diario", "platform/qt"})
        for (const auto& entrada : fs::recursive_directory_iterator(fs::path(ORVEX_FONTES) / pasta)) {
            if (!entrada.is_regular_file()) continue;
            if (entrada.path().filename().string().starts_with("textos_")) continue; // the toolkit's words
            const std::string fonte = conteudo_de(entrada.path());
            for (std::sregex_iterator i(fonte.begin(), fonte.end(), texto_de_caixa), fim; i != fim; ++i) {
                const std::string texto = lido((*i)[1].matched ? (*i)[1].str() : (*i)[2].str());
                if (texto.find(' ') == std::string::npos || texto.find("&S") != std::string::npos) continue;
                EXPECT_NE(mensagens.find(texto), std::string::npos) << entrada.path() << ": " << texto;
                ++textos;
            }
        }
    EXPECT_GT(textos, 80);
}

TEST(Manual, CadaImagemECadaPaginaQueNomeiaExiste) {
    const fs::path manual = ORVEX_FONTES "/../docs/manual";
    const std::regex ligacao(R"(\]\(([^)#]+))");
    for (const auto& entrada : fs::directory_iterator(manual)) {
        if (entrada.path().extension() != ".md") continue;
        const std::string pagina = conteudo_de(entrada.path());
        for (std::sregex_iterator i(pagina.begin(), pagina.end(), ligacao), fim; i != fim; ++i)
            EXPECT_TRUE(fs::exists(manual / (*i)[1].str())) << entrada.path() << ": " << (*i)[1];
    }
}
