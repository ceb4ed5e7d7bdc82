// The real programs where there is nobody to look at a window.
#include "base/caminho.h"
#include "tests/apoio/empresa_teste.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <sys/wait.h>

namespace orvex::testes {
namespace {

using namespace testing;

struct Fim {
    int codigo;
    std::string texto; // on the error output
};

const std::filesystem::path& pasta_do_estado() {
    static const PastaTemporaria pasta;
    return pasta.pasta();
}

Fim corre(const std::string& programa, const std::string& ambiente) {
    const std::string comando =
        "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM XDG_STATE_HOME=" + pasta_do_estado().string() +
        " " + ambiente + " timeout 60 " + programa + " 2>&1 >/dev/null";
    FILE* const saida = popen(comando.c_str(), "r");
    Fim fim{-1, {}};
    for (int c; saida != nullptr && (c = std::fgetc(saida)) != EOF;)
        fim.texto += static_cast<char>(c);
    if (saida != nullptr) fim.codigo = WEXITSTATUS(pclose(saida));
    return fim;
}

TEST(Programa, without_a_display_it_says_what_failed_and_waits_for_nobody) {
    const EmpresaTeste empresa;
    const auto escreve = [](const PastaTemporaria& pasta, const std::string& base, const std::string& senha) {
        pasta.escreve("TRAMEL/OrvexEXE.xel",
                      "[BD]\nServidor=sqlite\nBase=" + base +
                          "\nUtilizador=ana\nPalavraPasse=S3nha-BD\n[ERP]\nEmpresa=E\nPalavraPasse=" + senha +
                          "\n");
    };
    const PastaTemporaria boa, sem_empresa, recusada, outro_erp;
    escreve(boa, empresa.pasta().string(), "");
    escreve(sem_empresa, "nenhuma", "");
    escreve(recusada, empresa.pasta().string(), "S3nha-errada");
    escreve(outro_erp, empresa.pasta().string(), "\nServidor=SRV01");
    constexpr const char* sem_ecra = "precisa de um ecrã";
    const struct {
        const char* argumento;
        const PastaTemporaria& comum;
        const char* sistema;
        int codigo;
        const char* texto;
    } casos[] = {
        {"0", boa, "", 0, ""},
        {"0", sem_empresa, "", 1, "Não existe uma empresa"},
        {"0", recusada, "", 1, "Não foi possivel ligar ao 100c ..."},
        {"0", outro_erp, "", 1, "não a ligação ao ERP do servidor «SRV01»"},
        {"2", boa, "", 1, sem_ecra},
        {"2", boa, "DISPLAY=:9999", 1, sem_ecra},
        {"2", sem_empresa, "QT_QPA_PLATFORM=offscreen", 1, "Não existe uma empresa"},
        {"2", recusada, "QT_QPA_PLATFORM=offscreen", 1, "Não foi possivel ligar ao 100c ..."},
    };
    for (const auto& [argumento, comum, sistema, codigo, texto] : casos) {
        const Fim fim = corre(std::string(ORVEX_PROGRAMAS "/orvex ") + argumento,
                              sistema + std::string(" ORVEX_PASTA_COMUM=") + comum.pasta().string());
        EXPECT_EQ(fim.codigo, codigo) << argumento << sistema << fim.texto;
        EXPECT_THAT(fim.texto, HasSubstr(texto));
        EXPECT_EQ(fim.texto.empty(), codigo == 0) << fim.texto;
        std::ifstream ficheiro(pasta_do_estado() / "orvex/operacoes.log");
        const std::string registo{std::istreambuf_iterator<char>(ficheiro), {}};
        const auto este = registo.rfind(" inicio ");
        ASSERT_NE(este, std::string::npos) << "nothing in the log";
        EXPECT_THAT(registo.substr(este), HasSubstr(codigo == 0 ? "" : std::string(" falha erro=\"")));
        EXPECT_THAT(registo.substr(este), AllOf(HasSubstr(texto), HasSubstr("] fim como=")));
        EXPECT_THAT(registo, Not(HasSubstr("S3nha")));
    }
    const Fim mudo = corre(ORVEX_PROGRAMAS "/orvex 0",
                           "XDG_STATE_HOME=/dev/null ORVEX_PASTA_COMUM=" + boa.pasta().string());
    EXPECT_EQ(mudo.codigo, 0);
    EXPECT_THAT(mudo.texto, MatchesRegex("[^\n]*O registo de operações não pode ser escrito[^\n]*\n"));
}

TEST(Programa, works_in_a_folder_with_accents_and_blanks) {
    const PastaTemporaria pasta;
    const std::string instalacao =
        "'" + base::texto_de(pasta.pasta() / base::caminho_de("Açores/Guiões ñ")) + "'";
    for (const std::string& programa :
         {ORVEX_PROGRAMAS "/orvex-empresa " + instalacao + " --clientes 2 --artigos 5 --linhas 3",
          ORVEX_PROGRAMAS "/orvex-diagnostico " + instalacao, instalacao + "/orvex-diagnostico",
          instalacao + "/orvex 0"}) {
        const Fim fim = corre(programa, "");
        EXPECT_EQ(fim.codigo, 0) << programa << fim.texto;
    }
}

} // namespace
} // namespace orvex::testes
