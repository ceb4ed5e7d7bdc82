// One program works for another of its name, and whoever started that one sees no difference.
#include "app/passagem.h"
#include "base/caminho.h"
#include "tests/apoio/falhas.h"
#include "tests/apoio/pasta_temporaria.h"

#include <gmock/gmock.h>
#include <windows.h>

#include <cstdlib>

namespace orvex::testes {
namespace {

// What it was started with, in a file, as far as it can be seen: and its end.
TEST(Passagem, OOutroProgramaRecebeALinhaAPastaEASaidaEOSeuFimEODeste) {
    const PastaTemporaria pasta, de_onde;
    const auto programa = pasta.pasta() / base::caminho_de("olá.exe"),
               outro = pasta.pasta() / "32" / programa.filename();
    const std::filesystem::path proprio = base::caminho_do_programa("").parent_path() / "passa.exe";
    std::filesystem::copy_file(proprio, programa);
    pasta.escreve("OrvexEXE.xel", "[ERP]\nServidor=srv\nBase=b\nBits=32\n");
    const auto fim = [&] {
        const std::wstring linha = L"cd /d \"" + de_onde.pasta().wstring() + L"\" && \"" +
                                   programa.wstring() + L"\" \"a \\\"é\\\"\" \\ \"\" ł > dito 2>&1";
        return _wsystem(linha.c_str());
    };
    EXPECT_EQ(fim(), 3);
    EXPECT_THAT(conteudo_de(de_onde.pasta() / "dito"), testing::HasSubstr(base::texto_de(outro)));
    std::filesystem::create_directory(outro.parent_path());
    pasta.escreve(base::caminho_de("32/olá.exe"), "MZ, e mais nada");
    EXPECT_EQ(fim(), 3);
    EXPECT_THAT(conteudo_de(de_onde.pasta() / "dito"), testing::HasSubstr("não arrancou"));
    std::filesystem::copy_file(proprio, outro, std::filesystem::copy_options::overwrite_existing);
    EXPECT_EQ(fim(), 41);
    EXPECT_THAT(conteudo_de(de_onde.pasta() / "dito"),
                testing::StartsWith(base::texto_de(de_onde.pasta()) + "|a \"é\"|\\||ł|"));
}

} // namespace
} // namespace orvex::testes
