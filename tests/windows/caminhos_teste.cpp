// Folders as users name them, and as deep as they make them.
#include "platform/diario/gaveta.h"
#include "platform/erp/sessao_erp_embebida.h"
#include "platform/operacoes/ficheiro_rotativo.h"
#include "platform/sqlite/empresa.h"
#include "tests/apoio/empresa_teste.h"

namespace orvex::testes {
namespace {

void trabalha_em(const std::string& nome) {
    SCOPED_TRACE(nome);
    const PastaTemporaria raiz;
    const auto pasta = raiz.pasta() / base::caminho_de(nome);
    std::filesystem::create_directories(pasta);
    faz_modelo(pasta);
    EXPECT_EQ(startup::Parametros(pasta).LerParametros("CLIENTEORVEX"), "ORVEX");

    SessaoDeTeste BD;
    ASSERT_TRUE(BD.Abre(ligacao(pasta)));
    BD.IniciaTransaccao();
    BD.Tranca();
    BD.Executa("Update xel_ORVEX_Mov Set Qtd=0.5 where NumDoc=123 and NumLinha=1");
    BD.ConfirmaTransaccao();
    platform::sqlite::SessaoSQLite outra;
    ASSERT_TRUE(outra.Abre(ligacao(pasta)));
    EXPECT_EQ(
        outra.Consulta("select Qtd from xel_ORVEX_Mov where NumDoc=123 and NumLinha=1")->valor(0).moeda(),
        m("0.5"));
    EXPECT_NO_THROW(platform::sqlite::abre_empresa_para_ler(pasta, 0));
    platform::erp::SessaoERPEmbebida ERP;
    EXPECT_TRUE(ERP.Liga({"E", "", "ana", "sqlite", base::texto_de(pasta)}));

    platform::diario::Gaveta gaveta(pasta / base::caminho_de("diário"));
    gaveta.cria("uma linha");
    EXPECT_EQ(gaveta.por_acabar().size(), 1u);
    platform::operacoes::FicheiroRotativo registo(pasta / base::caminho_de("registo das operações"));
    registo.escreve("uma linha\n");
    EXPECT_EQ(conteudo_de(registo.caminho(0)), "uma linha\n");
}

TEST(Caminhos, ComAcentosEBrancos) {
    trabalha_em("Instalação nº 1 (água)");
    trabalha_em("Łódź – žluťoučký – 日本");
}

TEST(Caminhos, ComMaisDe260Letras) {
    std::string nomes = "São João";
    while (nomes.size() < 330)
        nomes += "/pasta com um nome comprido";
    trabalha_em(nomes);
}

} // namespace
} // namespace orvex::testes
