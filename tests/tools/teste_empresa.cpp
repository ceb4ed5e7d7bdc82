#include "delivery/guias_remessa.h"
#include "platform/sqlite/empresa.h"
#include "startup/definicoes.h"
#include "tests/apoio/empresa_teste.h"
#include "tools/diagnostico/diagnostico.h"
#include "tools/empresa/empresa_demo.h"
#include "tools/empresa/linha_comando.h"

#include <SQLiteCpp/Statement.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace orvex::testes {
namespace {

namespace fs = std::filesystem;
using demo::OpcoesEmpresa;

OpcoesEmpresa opcoes(const fs::path& pasta) {
    OpcoesEmpresa novas;
    novas.pasta = pasta;
    novas.hoje = {2026, 5, 20, 10, 0, 0};
    return novas;
}

// Both files of a company behind one connection: the ledger's tables, and the ERP's.
struct Empresa {
    SQLite::Database bd;

    explicit Empresa(const fs::path& pasta)
        : bd(platform::sqlite::abre_base(pasta / demo::pasta_empresa / platform::sqlite::ficheiro_livro)) {
        bd.exec("attach '" + (pasta / demo::pasta_empresa / platform::sqlite::ficheiro_erp).string() +
                "' as erp");
    }
    int conta(const std::string& de) { return bd.execAndGet("select count(*) from " + de).getInt(); }
};

// Made once: the tests that only look share it.
struct EmpresaFeita : testing::Test {
    static const fs::path& pasta() {
        static const PastaTemporaria feita;
        if (fs::is_empty(feita.pasta())) demo::faz_empresa(opcoes(feita.pasta()));
        return feita.pasta();
    }
    // Looks for what must not be.
    void nao_ha(const std::string& sql) { EXPECT_EQ(empresa.conta("(" + sql + ")"), 0) << sql; }

    Empresa empresa{pasta()};
};

TEST_F(EmpresaFeita, a_mesma_semente_faz_a_mesma_empresa_e_outra_faz_outra) {
    const PastaTemporaria outras;
    const auto bytes = [](const fs::path& de, const char* ficheiro) {
        std::ifstream lido(de / demo::pasta_empresa / ficheiro, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(lido), {});
    };
    for (const unsigned semente : {1U, 2U}) {
        auto pedida = opcoes(outras.pasta() / std::to_string(semente));
        pedida.semente = semente;
        demo::faz_empresa(pedida);
        for (const char* ficheiro : {platform::sqlite::ficheiro_livro, platform::sqlite::ficheiro_erp})
            EXPECT_EQ(bytes(pedida.pasta, ficheiro) == bytes(pasta(), ficheiro), semente == 1) << ficheiro;
    }
}

TEST_F(EmpresaFeita, os_contribuintes_do_mercado_nacional_sao_validos_e_ha_clientes_de_fora_e_um_inactivo) {
    const std::string por_mercado = "Clientes c join RGIVA r on r.Codigo = c.RegIva where r.Mercado ";
    EXPECT_GT(empresa.conta(por_mercado + "= 1"), 30);
    SQLite::Statement nacionais(empresa.bd, "select NContrib from " + por_mercado + "= 1");
    while (nacionais.executeStep()) {
        delivery::ResultadoNIF ok{};
        delivery::ValidaNIF(nacionais.getColumn(0).getString(), ok);
        EXPECT_EQ(ok, delivery::ResultadoNIF::valido) << nacionais.getColumn(0).getString();
    }
    EXPECT_GT(empresa.conta(por_mercado + "<> 1"), 2);
    EXPECT_EQ(empresa.conta("Clientes where Inactivo = -1"), 1);
    EXPECT_GT(empresa.conta("Clientes where Nome like '%''%'"), 0);
}

TEST_F(EmpresaFeita, o_stock_dos_armazens_o_dos_artigos_e_o_do_livro_sao_o_mesmo) {
    EXPECT_GT(empresa.conta("Artigos where STDISP <> 0"), 290);
    nao_ha(R"(
        select a.CODIGO, round(a.STDISP, 4),
               (select round(sum(Existenc), 4) from artarm r where r.Artigo = a.CODIGO) armazens,
               (select round(sum(Quantidade), 4) from xel_ORVEX x where x.NumSerie = a.CODIGO) livro
        from Artigos a
        where a.artoudes = 0 and (armazens is not round(a.STDISP, 4) or livro is not round(a.STDISP, 4)))");
    nao_ha(R"(
        select r.Artigo, r.Armazem, x.Cliente from artarm r
        join xel_ORVEX x on x.Registo = (select max(Registo) from xel_ORVEX where NumSerie = r.Artigo)
        where (x.Cliente = 'ORVEX') <> (r.Armazem = 'A1'))");   // the article lies in its holder's warehouse
    nao_ha(R"(
        select m.Artigo, round(sum(m.Qtd), 4) aberta, r.Existenc from xel_ORVEX_Mov m
        join artarm r on r.Artigo = m.Artigo where m.TpDoc in ('FA', 'FR')
        group by m.Artigo having aberta > r.Existenc + 0.05)"); // an adjustment took up to 0.045
}

TEST_F(EmpresaFeita, cada_movimento_tem_a_sua_linha_no_erp_com_o_peso_bruto) {
    EXPECT_EQ(empresa.conta("xel_ORVEX_Mov where TpDoc in ('FA', 'FR')"), 600);
    nao_ha(R"(
        select m.* from xel_ORVEX_Mov m
        left join DocGcLin l on l.Ano = m.Ano and l.TpDocum = m.TpDoc and l.Serie = m.SerieDoc
                            and l.NNumDoc = m.NumDoc and l.NumLinha = m.NumLinha
        left join DocGcCab c on c.Ano = m.Ano and c.TpDoc = m.TpDoc and c.Serie = m.SerieDoc and c.NNumDoc = m.NumDoc
        left join U_DocGcLin1 u on u.Ano = m.Ano and u.TpDocUM = m.TpDoc and u.Serie = m.SerieDoc
                               and u.NNumDoc = m.NumDoc and u.NumLinha = m.NumLinha
        where l.Artigo is not m.Artigo or l.Quant is not m.QtdOrig or c.Terceiro is not m.Cliente
           or substr(c.Data, 1, 10) is not m.Data or substr(m.Data, 1, 4) <> m.Ano
           or u.PesoBruto is null or u.PesoBruto < m.QtdOrig or c.NVias = -1)");
    EXPECT_GT(
        empresa.conta("xel_ORVEX_Mov where PesoBruto is null and PesoLiquido is null and Qtd = QtdOrig"), 20);
}

TEST_F(EmpresaFeita, as_guias_reduziram_as_linhas_de_que_sairam) {
    nao_ha(R"(
        select * from (
            select m.*, round(m.QtdOrig - m.Qtd, 4) saiu,
                   coalesce((select round(sum(g.Qtd), 4) from xel_ORVEX_Mov g where g.TpDoc = 'GR' and g.Origem =
                       m.Ano || '/' || m.TpDoc || '/' || m.SerieDoc || '/' || m.NumDoc || '/' || m.NumLinha ||
                       '/00000'), 0) guias
            from xel_ORVEX_Mov m where m.TpDoc in ('FA', 'FR'))
        where saiu <> guias or Qtd < 0 or PesoBruto < 0)");
    EXPECT_EQ(empresa.conta("DocGcCab where TpDoc = 'GR' and Ano = 2026"), demo::guias_emitidas);
    EXPECT_EQ(empresa.conta("(select distinct NumDoc from xel_ORVEX_Mov where TpDoc = 'GR')"),
              demo::guias_emitidas - 1)
        << "a anulada não está no livro";
    EXPECT_EQ(empresa.conta("DocGcCab where TpDoc = 'GR' and NVias = -1"), 1);
    EXPECT_EQ(empresa.conta("DocGcCab where TpDoc = 'GR' and [Convert] = -1"), 1);
    EXPECT_EQ(empresa.conta("(select distinct Armazem from DocGcLin where TpDocum = 'GR' and Artigo <> '')"),
              2);
    // The first client has open lines of several invoices in both warehouses.
    EXPECT_EQ(empresa.conta("(select l.Armazem from xel_ORVEX_Mov m join DocGcLin l on l.Ano = m.Ano"
                            " and l.TpDocum = m.TpDoc and l.NNumDoc = m.NumDoc and l.NumLinha = m.NumLinha"
                            " where m.Cliente = 'C0001' and m.Qtd > 0 group by l.Armazem"
                            " having count(distinct m.Ano || m.TpDoc || '/' || m.NumDoc) > 1)"),
              2);
}

TEST(EmpresaDemo, faz_empresas_de_qualquer_tamanho_e_as_linhas_pedidas_para_o_primeiro_cliente) {
    const PastaTemporaria pasta;
    auto minima = opcoes(pasta.pasta() / "minima");
    minima.clientes = minima.artigos = 1;
    minima.linhas = 0;
    minima.hoje = {2024, 2, 29, 0, 0, 0};
    demo::faz_empresa(minima);
    EXPECT_EQ(Empresa(minima.pasta).conta("xel_ORVEX_Mov"), 0);

    auto grande = opcoes(pasta.pasta() / "grande");
    grande.clientes = 12'000;
    grande.linhas = 900;
    grande.linhas_primeiro_cliente = 700;
    demo::faz_empresa(grande);
    const std::string primeiro = demo::codigo_cliente(1, grande);
    EXPECT_EQ(primeiro, "C00001");
    EXPECT_EQ(Empresa(grande.pasta).conta("xel_ORVEX_Mov where Qtd > 0 and Cliente = '" + primeiro + "'"),
              700);
    EXPECT_EQ(Empresa(grande.pasta).conta("Clientes"), 12'001);
}

TEST(EmpresaDemo, abre_se_como_a_instalacao_diz_sem_erros_e_nela_sai_uma_guia) {
    const PastaTemporaria pasta;
    auto pedida = opcoes(pasta.pasta() / "ORVEX");
    demo::faz_empresa(pedida);
    const auto verificada = diagnostico::diagnostica({pedida.pasta, pedida.pasta});
    EXPECT_FALSE(diagnostico::tem_erros(verificada)) << diagnostico::texto(verificada);
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

TEST(EmpresaDemo, nao_toca_no_que_ja_existe_e_sem_espaco_para_acabar_nao_deixa_restos) {
    const PastaTemporaria pasta;
    const auto alheio = pasta.escreve("cheia/alheio.txt", "");
    EXPECT_THROW(demo::faz_empresa(opcoes(alheio.parent_path())), base::Falha);
    EXPECT_THROW(demo::faz_empresa(opcoes(alheio)), base::Falha);
    EXPECT_EQ(std::distance(fs::directory_iterator(alheio.parent_path()), {}), 1);

    const auto nova = pasta.pasta() / "nova";
    fs::create_directory(nova);
    rlimit normal{};
    getrlimit(RLIMIT_FSIZE, &normal);
    const rlimit pouco{100'000, normal.rlim_max};
    const auto antes = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &pouco);
    EXPECT_THROW(demo::faz_empresa(opcoes(nova)), base::Falha);
    setrlimit(RLIMIT_FSIZE, &normal);
    std::signal(SIGXFSZ, antes);
    EXPECT_TRUE(fs::is_empty(nova));
}

TEST(EmpresaDemo, le_a_linha_de_comando_e_recusa_o_que_nao_percebe) {
    const std::string certos[] = {"Pasta",    "--clientes", "7",         "--artigos", "8",
                                  "--linhas", "9",          "--semente", "10"};
    const OpcoesEmpresa lidas = demo::le_argumentos(certos);
    EXPECT_EQ(std::tuple(lidas.pasta.string(), lidas.clientes, lidas.artigos, lidas.linhas, lidas.semente),
              std::tuple("Pasta", 7, 8, 9, 10u));
    EXPECT_THROW(demo::le_argumentos({}), base::Falha);
    for (const auto& [primeiro, segundo] : {std::pair{"--linhas", "5"}, {"P", "Q"}, {"P", "--linhas"}})
        EXPECT_THROW(demo::le_argumentos(std::vector<std::string>{primeiro, segundo}), base::Falha);
    for (const auto& [opcao, valor] :
         {std::pair{"--linhas", "muitas"}, {"--clientes", "0"}, {"--outra", "1"}})
        EXPECT_THROW(demo::le_argumentos(std::vector<std::string>{"P", opcao, valor}), base::Falha);
}

} // namespace
} // namespace orvex::testes
