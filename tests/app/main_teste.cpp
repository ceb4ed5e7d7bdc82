// The real programs where there is nobody to look at a window.
#include "base/caminho.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/tools/comando.h"

namespace orvex::testes {
namespace {

using namespace testing;

const std::filesystem::path& pasta_do_estado() {
    static const PastaTemporaria pasta;
    return pasta.pasta();
}

// The text is that of the error output.
Fim corre(const std::string& programa, const std::string& ambiente) {
    return testes::corre(
        "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM XDG_STATE_HOME=" + pasta_do_estado().string() +
        " " + ambiente + " timeout 60 " + programa + " 2>&1 >/dev/null");
}

TEST(Programa, SemEcraDizOQueFalhouENaoEsperaPorNinguem) {
    const EmpresaTeste empresa;
    const std::string boa = empresa.pasta().string();
    const PastaTemporaria comum;
    const struct {
        const char* argumento;
        std::string base, do_erp;
        const char* sistema;
        const char* texto;
    } casos[] = {
        {"0", "nenhuma", "", "", "Não existe uma empresa"},
        {"0", boa, "S3nha-errada", "", "Não foi possivel ligar ao 100c ..."},
        {"0", boa, "\nServidor=SRV01", "",
         "Só no Windows há a automação por que se chega ao ERP do servidor «SRV01»"},
        {"2", "nenhuma", "", "QT_QPA_PLATFORM=offscreen", "Não existe uma empresa"},
        {"2", boa, "S3nha-errada", "QT_QPA_PLATFORM=offscreen", "Não foi possivel ligar ao 100c ..."},
        {"2", boa, "", "", "precisa de um ecrã"},
        {"2", boa, "", "DISPLAY=:9999", "precisa de um ecrã"},
        {"0", boa, "", "", ""},
    };
    const auto orvex = [&](const std::string& argumento, const std::string& sistema) {
        return corre(ORVEX_PROGRAMAS "/orvex " + argumento,
                     sistema + " ORVEX_PASTA_COMUM=" + comum.pasta().string());
    };
    for (const auto& [argumento, base, do_erp, sistema, texto] : casos) {
        comum.escreve("TRAMEL/OrvexEXE.xel",
                      "[BD]\nServidor=sqlite\nUtilizador=ana\nPalavraPasse=S3nha-BD\nBase=" + base +
                          "\n[ERP]\nEmpresa=E\nPalavraPasse=" + do_erp + "\n");
        const Fim fim = orvex(argumento, sistema);
        const bool bem = *texto == '\0';
        EXPECT_EQ(fim.codigo, bem ? 0 : 1) << argumento << sistema << fim.texto;
        EXPECT_EQ(fim.texto.empty(), bem) << fim.texto;
        const std::string registo = conteudo_de(pasta_do_estado() / "orvex/operacoes.log");
        const auto este = registo.rfind(" inicio ");
        ASSERT_NE(este, std::string::npos) << "nothing in the log";
        EXPECT_THAT(registo.substr(este), HasSubstr(bem ? "" : " falha erro=\""));
        EXPECT_THAT(registo.substr(este), HasSubstr("] fim como="));
        for (const std::string& onde : {fim.texto, registo.substr(este)})
            EXPECT_THAT(onde, AllOf(HasSubstr(texto), Not(HasSubstr("S3nha"))));
    }
    const Fim mudo = orvex("0", "XDG_STATE_HOME=/dev/null");
    EXPECT_EQ(mudo.codigo, 0);
    EXPECT_THAT(mudo.texto, MatchesRegex("[^\n]*O registo de operações não pode ser escrito[^\n]*\n"));
}

TEST(Programa, TrabalhaNumaPastaComAcentosEBrancos) {
    const PastaTemporaria pasta;
    const std::string instalacao =
        "'" + base::texto_de(pasta.pasta() / base::caminho_de("Açores/Guiões ñ")) + "'";
    for (const std::string& programa :
         {ORVEX_PROGRAMAS "/orvex-empresa " + instalacao + " --clientes 2 --artigos 5 --linhas 3",
          ORVEX_PROGRAMAS "/orvex-diagnostico " + instalacao, instalacao + "/orvex-diagnostico",
          instalacao + "/orvex-auditoria", instalacao + "/orvex 0"}) {
        const Fim fim = corre(programa, "");
        EXPECT_EQ(fim.codigo, 0) << programa << fim.texto;
    }
}

} // namespace
} // namespace orvex::testes
