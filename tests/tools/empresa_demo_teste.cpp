#include "delivery/guias_remessa.h"
#include "platform/sqlite/empresa.h"
#include "startup/definicoes.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/apoio/sem_espaco.h"
#include "tools/empresa/empresa_demo.h"
#include "tools/empresa/linha_comando.h"

#include <gtest/gtest.h>

namespace orvex::testes {
namespace {

namespace fs = std::filesystem;
using demo::OpcoesEmpresa;

OpcoesEmpresa opcoes(const fs::path& pasta) { return {.pasta = pasta, .hoje = {2026, 5, 20, 10, 0, 0}}; }

int conta(const fs::path& instalacao, const std::string& de) {
    const fs::path pasta = instalacao / demo::pasta_empresa;
    auto bd = platform::sqlite::abre_base(pasta / platform::sqlite::ficheiro_livro);
    bd.exec("attach '" + (pasta / platform::sqlite::ficheiro_erp).string() + "' as erp");
    return bd.execAndGet("select count(*) from " + de).getInt();
}

TEST(EmpresaDemo, AMesmaSementeFazAMesmaEmpresaEOutraFazOutra) {
    const PastaTemporaria pasta;
    const auto bytes = [&](const std::string& qual, std::uint64_t semente) {
        auto pedida = opcoes(pasta.pasta() / qual);
        pedida.semente = semente;
        demo::faz_empresa(pedida);
        return conteudo_de(pedida.pasta / demo::pasta_empresa / platform::sqlite::ficheiro_livro) +
               conteudo_de(pedida.pasta / demo::pasta_empresa / platform::sqlite::ficheiro_erp);
    };
    const std::string primeira = bytes("1", 1);
    EXPECT_TRUE(bytes("2", 1) == primeira);
    EXPECT_FALSE(bytes("3", 2) == primeira);
}

// That the ledger agrees with itself and with the ERP is for the auditor to tell, of a company made like
// this.
TEST(EmpresaDemo, OStockChegaETemTudoOQueSePediu) {
    const PastaTemporaria pasta;
    demo::faz_empresa(opcoes(pasta.pasta()));
    for (const auto& [quantos, de] :
         {std::pair{
              0,
              R"((select a.STDISP stock, (select sum(Existenc) from artarm where Artigo = a.CODIGO) armazens,
                    (select sum(Quantidade) from xel_ORVEX where NumSerie = a.CODIGO) livro
                from Artigos a where a.artoudes = 0
                    and (round(armazens - stock, 4) is not 0 or round(livro - stock, 4) is not 0)))"},
          // An adjustment took up to 0.045 of what is open.
          {0, R"((select sum(m.Qtd) aberta from xel_ORVEX_Mov m join artarm r on r.Artigo = m.Artigo
                where m.TpDoc in ('FA', 'FR') group by m.Artigo having aberta > r.Existenc + 0.05))"},
          {0, R"((select * from xel_ORVEX_Mov m
                left join DocGcCab c on c.Ano = m.Ano and c.TpDoc = m.TpDoc and c.NNumDoc = m.NumDoc
                left join U_DocGcLin1 u on u.Ano = m.Ano and u.TpDocUM = m.TpDoc and u.NNumDoc = m.NumDoc
                    and u.NumLinha = m.NumLinha
                where c.Terceiro is not m.Cliente or u.PesoBruto is null or u.PesoBruto < m.QtdOrig))"},
          {600, "xel_ORVEX_Mov where TpDoc in ('FA', 'FR')"},
          {300, "Artigos where STDISP <> 0"},
          {1, "Clientes where Inactivo = -1"},
          {demo::guias_emitidas, "DocGcCab where TpDoc = 'GR' and Ano = 2026"},
          {demo::guias_emitidas - 1, "(select distinct NumDoc from xel_ORVEX_Mov where TpDoc = 'GR')"},
          {1, "DocGcCab where TpDoc = 'GR' and NVias = -1"},
          {1, "DocGcCab where TpDoc = 'GR' and [Convert] = -1"},
          {2, "(select distinct Armazem from DocGcLin where TpDocum = 'GR' and Artigo <> '')"}})
        EXPECT_EQ(conta(pasta.pasta(), de), quantos) << de;
}

TEST(EmpresaDemo, FazEmpresasDeQualquerTamanhoEAsLinhasPedidasParaOPrimeiroCliente) {
    const PastaTemporaria pasta;
    auto minima = opcoes(pasta.pasta() / "minima");
    minima.clientes = minima.artigos = 1;
    minima.linhas = 0;
    minima.hoje = {2024, 2, 29, 0, 0, 0};
    demo::faz_empresa(minima);
    EXPECT_EQ(conta(minima.pasta, "xel_ORVEX_Mov"), 0);

    auto grande = opcoes(pasta.pasta() / "grande");
    grande.clientes = 12'000;
    grande.linhas = 900;
    grande.linhas_primeiro_cliente = 700;
    demo::faz_empresa(grande);
    EXPECT_EQ(demo::codigo_cliente(1, grande), "C00001");
    EXPECT_EQ(conta(grande.pasta, "xel_ORVEX_Mov where Qtd > 0 and Cliente = 'C00001'"), 700);
    EXPECT_EQ(conta(grande.pasta, "Clientes"), 12'001);
}

TEST(EmpresaDemo, AbreSeComoAInstalacaoDizENelaSaiUmaGuia) {
    const PastaTemporaria pasta;
    auto pedida = opcoes(pasta.pasta() / "ORVEX");
    demo::faz_empresa(pedida);
    platform::sqlite::SessaoSQLite BD;
    platform::erp::SessaoERPEmbebida ERP;
    ASSERT_TRUE(BD.Abre(ligacao(pedida.pasta / demo::pasta_empresa)));
    ASSERT_TRUE(ERP.Liga(startup::DefinicoesERP::le(pedida.pasta / "OrvexEXE.xel").valores));
    delivery::GuiasRemessa ecra(
        {BD, ERP, startup::Parametros(pedida.pasta), {}, [&] { return pedida.hoje; }});
    JanelaGuiao janela;
    ecra.define_janela(janela);
    ecra.Form_Load();
    ecra.utilizador_abre();
    Operador op(ecra);
    op.preenche(ecra.campo(0), demo::codigo_cliente(1, pedida));
    op.duplo_clique(ecra.Detalhe, 1);
    op.prime(ecra.btConf(0));
    EXPECT_EQ(janela.retira_caixas(), "Foi criado o documento Nº  12");
}

TEST(EmpresaDemo, NaoTocaNoQueJaExisteESemEspacoParaAcabarNaoDeixaRestos) {
    const PastaTemporaria pasta;
    const auto alheio = pasta.escreve("cheia/alheio.txt", "");
    for (const auto& onde : {alheio.parent_path(), alheio})
        EXPECT_THROW(demo::faz_empresa(opcoes(onde)), base::Falha);
    EXPECT_EQ(std::distance(fs::directory_iterator(alheio.parent_path()), {}), 1);

    const auto nova = pasta.pasta() / "nova";
    fs::create_directory(nova);
    const SemEspaco cheio(100'000);
    EXPECT_THROW(demo::faz_empresa(opcoes(nova)), base::Falha);
    EXPECT_TRUE(fs::is_empty(nova));
}

TEST(EmpresaDemo, LeALinhaDeComandoERecusaOQueNaoPercebe) {
    const auto le = [](const std::string& linha) { return demo::le_argumentos(partes(linha, " ")); };
    const OpcoesEmpresa lidas = le("Pasta --clientes 7 --artigos 8 --linhas 9 --semente 10");
    EXPECT_EQ(std::tuple(lidas.pasta.string(), lidas.clientes, lidas.artigos, lidas.linhas, lidas.semente),
              std::tuple("Pasta", 7, 8, 9, 10u));
    for (const char* errada :
         {"", "--linhas 5", "P Q", "P --linhas", "P --linhas muitas", "P --clientes 0", "P --outra 1"})
        EXPECT_THROW(le(errada), base::Falha) << errada;
}

} // namespace
} // namespace orvex::testes
