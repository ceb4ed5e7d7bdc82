// orvex-diagnostico --protege-palavras-passe: nothing changes but the passwords, on any system; and what each
// system makes of it.
#include "tools/diagnostico/palavras_passe.h"

#include "platform/proteccao/proteccao.h"
#include "tests/apoio/falhas.h"
#include "tests/apoio/pasta_temporaria.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>

namespace orvex::testes {
namespace {

using namespace diagnostico;
using namespace testing;
using startup::DefinicoesERP;

const std::string m(startup::marca_protegida);

TEST(PalavrasPasse, MudamSoElasByteAByte) {
    const auto vira = [](const std::string& claro) { return std::string(claro.rbegin(), claro.rend()); };
    // In the file's own encoding and with its own line ends; lines that do not count too, and no others.
    const std::pair<std::string, std::string> casos[] = {
        {"\xEF\xBB\xBF[bd]\r\n palavrapasse =  a\xC3\xA7 \r\nPalavraPasse=b\n\xC3\xA7\r",
         "\xEF\xBB\xBF[bd]\r\n palavrapasse =  " + m + "\xA7\xC3" + "a \r\nPalavraPasse=" + m +
             "b\n\xC3\xA7\r"},
        {"[ERP]\nPalavraPasse=\xE7=}\nEmpresa=\xC9vora",
         "[ERP]\nPalavraPasse=" + m + "}=\xA7\xC3\nEmpresa=\xC9vora"},
        {"PalavraPasse=x\n[BD]\n;PalavraPasse=x\nPalavraPasse=\nPalavraPasses=x\n[X]\nPalavraPasse=x", ""},
        {"[BD]\nPalavraPasse=protegida:x", "[BD]\nPalavraPasse=" + m + "x:adigetorp"},
        {"[BD]\nPalavraPasse=" + m + "x", ""},
    };
    for (const auto& [antes, depois] : casos)
        EXPECT_EQ(com_palavras_passe_protegidas(antes, vira), depois.empty() ? antes : depois);
    // The one letter that told the file's encoding would go with the password.
    const auto cala = [](const std::string&) { return "x"; };
    EXPECT_THROW(com_palavras_passe_protegidas("[BD]\nPalavraPasse=\xE7\nBase=\xC3\xA7", cala), base::Falha);
}

TEST(PalavrasPasse, OComandoProtegeAsTodasOuNaoTocaEmNada) {
    const PastaTemporaria pasta;
    const startup::PastasInstalacao pastas{pasta.pasta(), pasta.pasta()};
    const std::string definicoes = "[BD]\r\nServidor=s\r\nBase=b\r\nPalavraPasse=s\xE9gr}do;\r\n"
                                   "[ERP]\r\nPalavraPasse=protegida:sim\r\n; fim";
    const std::string catalogo = "[BD]\nServidor=s\nBase=b\nUtilizador=u\nPalavraPasse=do cat\xC3\xA1logo";
    const auto ficheiro = pasta.escreve("OrvexEXE.xel", definicoes);
    pasta.escreve("Catalogos/bd.sql", catalogo);
    std::ostringstream saida;
    const auto protege = [&] { return falha([&] { protege_palavras_passe(pastas, saida); }); };
#ifdef _WIN32
    pasta.escreve("OrvexEXE.xel.novo", "");
    EXPECT_THAT(protege(), HasSubstr("OrvexEXE.xel.novo» já existe"));
    EXPECT_EQ(conteudo_de(ficheiro), definicoes);
    std::filesystem::remove(pasta.pasta() / "OrvexEXE.xel.novo");
    EXPECT_EQ(protege(), "");
    const std::string depois = conteudo_de(ficheiro), outra_vez = (protege(), conteudo_de(ficheiro));
    EXPECT_EQ(outra_vez, depois);
    EXPECT_THAT(depois, AllOf(StartsWith("[BD]\r\nServidor=s\r\nBase=b\r\nPalavraPasse=" + m),
                              Not(HasSubstr("gr}do")), Not(HasSubstr("sim")), EndsWith("\r\n; fim")));
    using platform::proteccao::abre;
    EXPECT_EQ(startup::definicoes_erp(ficheiro, abre).valores[DefinicoesERP::palavra_passe], "protegida:sim");
    EXPECT_EQ(startup::definicoes_bd(ficheiro, pastas.catalogo(), abre).palavra_passe, "do catálogo");
    pasta.escreve("OrvexEXE.xel", depois + "\n[BD]\nUtilizador=u");
    EXPECT_EQ(startup::definicoes_bd(ficheiro, pastas.catalogo(), abre).palavra_passe, "ségr}do;");
    // Of another machine, or no longer whole.
    for (const char* estragada : {"", "AQ==", "!", "AQAAANCMnd8BFdERjHoAwE/Cl+s="}) {
        pasta.escreve("OrvexEXE.xel", "[ERP]\nPalavraPasse=" + m + estragada);
        EXPECT_THAT(falha([&] { startup::definicoes_erp(ficheiro, abre); }), HasSubstr("Escreva-a de novo"));
    }
#else
    EXPECT_THAT(protege(), HasSubstr("Nada foi alterado: só o Windows"));
    EXPECT_EQ(conteudo_de(ficheiro), definicoes);
#endif
    EXPECT_THAT(saida.str(), Not(HasSubstr("gr}do")));
}

} // namespace
} // namespace orvex::testes
