#include "base/caminho.h"
#include "base/falha.h"
#include "base/moeda.h"
#include "platform/saidas/saidas.h"

#include "platform/saidas/xlsx.h"
#include "tests/apoio/pasta_temporaria.h"

#include <gmock/gmock.h>
#include <zlib.h>

#include <sstream>

#ifndef _WIN32
#include "tests/apoio/sem_espaco.h"
#endif

using namespace orvex;
using namespace orvex::livro::consultas;

namespace {

const Quadro quadro{"q",
                    "Quadro; \"1\"",
                    {{"codigo", "Código", Tipo::codigo},
                     {"doc", "Documento", Tipo::codigo, Ligacao::documento},
                     {"nome", "Nome"},
                     {"data", "Data", Tipo::data},
                     {"peso", "Peso (t)", Tipo::peso},
                     {"n", "N", Tipo::inteiro}}};

std::string escrita(const auto& formato, const std::vector<Linha>& linhas) {
    std::ostringstream saida;
    {
        const auto destino = formato(saida);
        destino->vista({"v", "Vista", {{"À data", "hoje"}}, false});
        destino->quadro(quadro);
        for (const Linha& linha : linhas)
            destino->linha(linha);
        destino->total({"Total", {}, {}, {}, base::Moeda::de_inteiro(3), {}});
    }
    return saida.str();
}

const Linha cheia{"000123",
                  "2019/GR/1/7",
                  "Aço; \"1ª\"",
                  base::DataHora{2019, 3, 1, 10, 20, 30},
                  base::Moeda::de_decimos_milesimos(-12500),
                  7};
const Linha vazia{{}, {}, {}, {}, {}, {}};

TEST(Csv, GuardaZerosDecimaisEAcentosENadaNeleSeExecuta) {
    const std::string cabeca = "\xEF\xBB\xBF\"Quadro; \"\"1\"\"\"\nCódigo;Documento;Nome;Data;Peso (t);N\n";
    EXPECT_EQ(escrita(platform::saidas::csv, {cheia, vazia}),
              cabeca + "\"=\"\"000123\"\"\";2019/GR/1/7;\"Aço; \"\"1ª\"\"\";01-03-2019;-1,250;7\n;;;;;\n");
    for (const auto& [codigo, celula] : {std::pair{"BA000265", "BA000265"},
                                         {"1E5", "\"=\"\"1E5\"\"\""},
                                         {"MAR-1", "\"=\"\"MAR-1\"\"\""},
                                         {"=1+1", "\"=\"\"=1+1\"\"\""},
                                         {"@A", "\"=\"\"@A\"\"\""},
                                         {"-A\"B", "\"=\"\"-A\"\"\"\"B\"\"\""}}) {
        Linha linha = vazia;
        linha[0] = codigo;
        EXPECT_EQ(escrita(platform::saidas::csv, {linha}), cabeca + celula + ";;;;;\n") << codigo;
    }
    for (const auto& [nome, muda] : {std::pair{"0012", true},
                                     {"10/12", true},
                                     {"1E5", true},
                                     {"5%", true},
                                     {"set2", true},
                                     {"1-ABR", true},
                                     {"Varão 12", false},
                                     {"SETA2", false},
                                     {"12 mm", false},
                                     {"MAR", false}}) {
        Linha linha = vazia;
        linha[2] = nome;
        const std::string celula = muda ? "\"=\"\"" + std::string(nome) + "\"\"\"" : nome;
        EXPECT_EQ(escrita(platform::saidas::csv, {linha}), cabeca + ";;" + celula + ";;;\n") << nome;
    }
}

TEST(Json, TemNumerosDatasENulosESaiInteiroMesmoComTextosEstragados) {
    Linha estragada = vazia;
    estragada[2] = "a\xFF\n";
    EXPECT_THAT(escrita(platform::saidas::json, {cheia, estragada}),
                testing::AllOf(
                    testing::HasSubstr("{\"codigo\": \"000123\", \"doc\": \"2019/GR/1/7\", \"nome\": \"Aço; "
                                       "\\\"1ª\\\"\", \"data\": \"2019-03-01\", \"peso\": -1.25, \"n\": 7}"),
                    testing::HasSubstr("\"nome\": \"a\xEF\xBF\xBD\\n\", \"data\": null"),
                    testing::HasSubstr("\"totais\": [\n{\"codigo\": \"Total\""),
                    testing::EndsWith("\n]}\n")));
}

TEST(Texto, AlinhaPorLetrasENaoObedeceAoQueLe) {
    Linha outra = vazia;
    outra[2] = "a\x1B[2Jb";
    EXPECT_EQ(escrita(platform::saidas::texto, {cheia, outra}),
              "Vista\nÀ data: hoje\n\nQuadro; \"1\"\n"
              "  Código  Documento    Nome       Data        Peso (t)  N\n"
              "  000123  2019/GR/1/7  Aço; \"1ª\"  01-03-2019    -1,250  7\n"
              "                       a [2Jb\n"
              "  Total                                          3,000\n");
}

// A file of the archive, by its name.
std::string do_arquivo(const std::string& zip, const std::string& nome) {
    const auto numero = [&](std::size_t onde, int bytes) {
        std::size_t valor = 0;
        while (bytes-- > 0)
            valor = valor << 8 | static_cast<unsigned char>(zip.at(onde + static_cast<std::size_t>(bytes)));
        return valor;
    };
    for (std::size_t i = 0; zip.compare(i, 4, "PK\3\4") == 0;) {
        const std::size_t dados = i + 30 + numero(i + 26, 2) + numero(i + 28, 2),
                          fim = dados + numero(i + 18, 4);
        if (zip.compare(i + 30, nome.size(), nome) == 0) {
            std::string texto(numero(i + 22, 4), ' ');
            z_stream fluxo{};
            fluxo.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(&zip[dados]));
            fluxo.avail_in = static_cast<uInt>(fim - dados);
            fluxo.next_out = reinterpret_cast<Bytef*>(texto.data());
            fluxo.avail_out = static_cast<uInt>(texto.size());
            EXPECT_EQ(inflateInit2(&fluxo, -MAX_WBITS), Z_OK);
            EXPECT_EQ(inflate(&fluxo, Z_FINISH), Z_STREAM_END);
            inflateEnd(&fluxo);
            return texto;
        }
        i = fim;
    }
    return {};
}

TEST(Xlsx, TemNumerosDatasETextosESoLaFicaInteiro) {
    using testing::HasSubstr;
    const testes::PastaTemporaria pasta;
    const auto ficheiro = pasta.escreve(base::caminho_de("ç à.xlsx"), "antigo");
    const auto escreve = [&](bool acaba) {
        platform::saidas::Xlsx folhas(ficheiro);
        folhas.vista({"v", "Vista", {}, true});
        folhas.quadro(quadro);
        folhas.linha(cheia);
        folhas.total({"Total", {}, {}, {}, base::Moeda::de_inteiro(3), {}});
        if (acaba) folhas.acaba();
    };
    escreve(false);
    EXPECT_EQ(testes::conteudo_de(ficheiro), "antigo");
    escreve(true);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(pasta.pasta()), {}), 1);
    const std::string folha = do_arquivo(testes::conteudo_de(ficheiro), "xl/worksheets/sheet1.xml");
    EXPECT_THAT(folha, testing::AllOf(HasSubstr("<t>000123</t>"), HasSubstr("<v>43525</v>"),
                                      HasSubstr("<v>-1.25</v>"), HasSubstr("<v>7</v>"),
                                      HasSubstr("state=\"frozen\"")));
    EXPECT_THROW(platform::saidas::Xlsx(pasta.pasta() / "nada" / "x.xlsx"), base::Falha);
}

#ifndef _WIN32
TEST(Xlsx, SemEspacoParaAsLinhasNaoFicaCortado) {
    const testes::PastaTemporaria pasta;
    const testes::SemEspaco cheio(50'000);
    EXPECT_THROW(
        {
            platform::saidas::Xlsx folhas(pasta.pasta() / "x.xlsx");
            folhas.quadro(quadro);
            for (int i = 0; i < 1000; ++i)
                folhas.linha(cheia);
            folhas.acaba();
        },
        base::Falha);
    EXPECT_TRUE(std::filesystem::is_empty(pasta.pasta()));
}
#endif

} // namespace
