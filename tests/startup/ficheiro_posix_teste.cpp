// Files that only a POSIX system has.
#include "startup/definicoes.h"
#include "startup/instalacao.h"
#include "tests/apoio/falhas.h"
#include "tests/apoio/pasta_temporaria.h"
#include "tests/apoio/tabela.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace orvex::startup;
using namespace orvex::testes;
using testing::HasSubstr;

TEST(Ficheiro, UmCanoUmaLigacaoEmVoltaEOQueNaoSePodeLerDizemSeComoTais) {
    const PastaTemporaria pasta;
    const auto em = [&](const std::string& nome) { return pasta.pasta() / nome; };
    const auto recusa = [&](const std::string& nome) { return falha([&] { DefinicoesBD::le(em(nome)); }); };
    mkfifo(em("cano").c_str(), 0600);
    std::filesystem::create_symlink("volta", em("volta"));
    for (const auto& caso : tabela("cano => não é um ficheiro comum | /dev/zero => não é um ficheiro comum | "
                                   "volta => volta a si mesma"))
        EXPECT_THAT(recusa(caso[0]), HasSubstr(caso[1]));
    EXPECT_THAT(recusa(std::string(300, 'x')), HasSubstr("demasiado longo"));
    // A common folder that cannot be asked for is not the program's own.
    const PastasInstalacao em_volta{em("volta"), em(".")};
    EXPECT_THAT(falha([&] { em_volta.ficheiro_definicoes(); }), HasSubstr("volta a si mesma"));
    pasta.escreve("fechado", "x");
    if (geteuid() == 0 && seteuid(65534) == 0) {
        EXPECT_THAT(recusa("fechado"), HasSubstr("não há permissão"));
        ASSERT_EQ(seteuid(0), 0);
    }
}
