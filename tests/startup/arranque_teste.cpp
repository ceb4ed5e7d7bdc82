#include "startup/arranque.h"

#include "platform/sqlite/empresa.h"
#include "startup/esquema_livro.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/apoio/falhas.h"

#include <atomic>
#include <latch>
#include <thread>

using namespace orvex;
using namespace orvex::startup;
using namespace orvex::testes;
using testing::Contains;

namespace {

// Records what start-up asks for; the database is a real one, without ledger tables at first.
struct FabricaGravada : Fabrica {
    Diario diario;
    bool erp_aceita = true;

    struct ERP : platform::erp::SessaoERPEmbebida {
        explicit ERP(FabricaGravada& f) : fabrica(f) {}
        void ModoLigacao(std::int16_t modo) override { fabrica.diario.passo("modo " + std::to_string(modo)); }
        bool Liga(const std::array<std::string, 5>& v) override {
            fabrica.diario.passo("liga " + v[0] + "|" + v[1] + "|" + v[2] + "|" + v[3]);
            return fabrica.erp_aceita;
        }
        FabricaGravada& fabrica;
    };
    struct Ecra : EcraArranque {
        explicit Ecra(Diario& d) : diario(d) {}
        void Load() override { diario.passo("Load"); }
        void Show() override { diario.passo("Show"); }
        Diario& diario;
    };

    std::string abre_protegida(const std::string& protegida) override { return protegida; }
    std::unique_ptr<SessaoERP> cria_sessao_erp(const DefinicoesERP&) override {
        return std::make_unique<ERP>(*this);
    }
    std::unique_ptr<SessaoBD> cria_sessao_bd(const DefinicoesBD& d) override {
        diario.passo("bd " + d.servidor + "|" + d.utilizador);
        return std::make_unique<SessaoDeTeste>(diario);
    }
    std::shared_ptr<EcraArranque> cria_ecra(TipoEcra tipo, SessaoBD&, SessaoERP&, int modo) override {
        constexpr const char* nomes[] = {"MovStocks", "GuiasRemessa", "TrfBobines"};
        diario.passo(nomes[static_cast<int>(tipo)] + std::string(" ") + std::to_string(modo));
        return std::make_shared<Ecra>(diario);
    }
    void mostra_caixa(const std::string& texto, const std::string&) override { diario.passo(texto); }
};

class Main : public testing::Test {
  protected:
    Main() {
        cria_empresa_vazia(pasta.pasta());
        pasta.escreve("programa/OrvexEXE.xel", definicoes("programa"));
    }
    std::string definicoes(const std::string& utilizador) const {
        return "[BD]\nServidor=sqlite\nBase=" + pasta.pasta().string() + "\nUtilizador=" + utilizador +
               "\n[ERP]\nEmpresa=E\nPalavraPasse=p\n";
    }
    bool corre(const std::string& argumento) {
        fabrica.diario.recomeca();
        return arranque.emplace(fabrica, pastas).Main(argumento) != nullptr;
    }
    void no_livro(const std::string& sql) {
        platform::sqlite::abre_base(pasta.pasta() / platform::sqlite::ficheiro_livro).exec(sql);
    }
    PastaTemporaria pasta;
    FabricaGravada fabrica;
    PastasInstalacao pastas{pasta.pasta() / "comum", pasta.pasta() / "programa"};
    std::optional<Arranque> arranque;
};

} // namespace

TEST_F(Main, EntraOuDizQueNaoAbreABaseFazOLivroESoDepoisMostraOEcra) {
    fabrica.erp_aceita = false;
    EXPECT_FALSE(corre("2"));
    EXPECT_EQ(fabrica.diario.texto(), R"(
modo 2
liga E|p|programa|sqlite
Não foi possivel ligar ao 100c ...
)");
    fabrica.erp_aceita = true;
    EXPECT_TRUE(corre("2"));
    EXPECT_EQ(fabrica.diario.texto(), R"(
modo 2
liga E|p|programa|sqlite
bd sqlite|programa
CONSULTA select NumSerie from  xel_ORVEX
EXECUTA  CREATE TABLE [dbo].[xel_ORVEX]( [NumSerie] [nvarchar](15) NOT NULL, [Registo] [int] IDENTITY(1,1) NOT NULL, [Cliente] [nvarchar](15) NULL, [Data] [datetime] NULL, [Quantidade] [decimal](18, 3) NULL, [Obs] [nvarchar](100) NULL, [Funcionario] [nvarchar](15) NULL, [CliFinal] [nvarchar](15) NULL, [Preco] [decimal](18, 2) NULL, [Ano] [smallint] NULL, [TpDoc] [nvarchar](3) NULL, [Serie] [smallint] NULL, [NNumDoc] [int] NULL, [NumLin] [smallint] NULL, CONSTRAINT [PK_xel_ORVEX] PRIMARY KEY CLUSTERED ( [NumSerie] ASC, [Registo] Asc )WITH (PAD_INDEX  = OFF, STATISTICS_NORECOMPUTE  = OFF, IGNORE_DUP_KEY = OFF, ALLOW_ROW_LOCKS  = ON, ALLOW_PAGE_LOCKS  = ON) ON [PRIMARY] ) ON [PRIMARY]
EXECUTA  CREATE TABLE [dbo].[xel_ORVEX_Mov]( [Ano] [smallint] NOT NULL, [TpDoc] [nvarchar](3) NOT NULL, [NumDoc] [int] NOT NULL, [SerieDoc] [smallint] NOT NULL, [NumLinha] [smallint] NOT NULL, [Data] [date] NULL, [Artigo] [nvarchar](15) NULL, [Cliente] [nvarchar](15) NULL, [Descritivo] [nvarchar](80) NULL, [QtdOrig] [money] NULL, [Qtd] [money] NULL, [Origem] [nvarchar](30) NULL, CONSTRAINT [PK_xel_ORVEX_Mov] PRIMARY KEY CLUSTERED ( [Ano] ASC, [TpDoc] ASC, [NumDoc] ASC, [SerieDoc] ASC, [NumLinha] Asc )WITH (PAD_INDEX  = OFF, STATISTICS_NORECOMPUTE  = OFF, IGNORE_DUP_KEY = OFF, ALLOW_ROW_LOCKS  = ON, ALLOW_PAGE_LOCKS  = ON) ON [PRIMARY] ) ON [PRIMARY]
CONSULTA select PesoBruto from  xel_ORVEX_Mov
EXECUTA ALTER TABLE  xel_ORVEX_Mov ADD PesoLiquido money null, PesoBruto money Null
GuiasRemessa 0
Load
Show
)");
}

TEST_F(Main, DosPrimeirosArranquesDeVariosPostosAoMesmoTempoSaiUmSoLivro) {
    for (int vez = 0; vez < 10; ++vez) {
        constexpr int quantos = 8;
        std::latch partida(quantos);
        std::atomic<int> falhas = 0;
        std::vector<std::jthread> postos;
        for (int i = 0; i < quantos; ++i)
            postos.emplace_back([&] {
                FabricaGravada deste;
                partida.arrive_and_wait();
                if (!falha([&] { Arranque(deste, pastas).Main("0"); }).empty()) ++falhas;
            });
        postos.clear();
        EXPECT_EQ(falhas, 0);
        for (const char* ficheiro : {"livro.db", "livro.db-wal", "erp.db", "erp.db-wal"})
            std::filesystem::remove(pasta.pasta() / ficheiro);
        cria_empresa_vazia(pasta.pasta());
    }
}

TEST_F(Main, OArgumentoDizALetraOEcraEOModo) {
    for (const auto& caso : tabela({"1 => MovStocks 1", "2 => GuiasRemessa 0", "3 => MovStocks 2",
                                    "4 => MovStocks 3", "5 => TrfBobines 1", "6 => TrfBobines 2"})) {
        EXPECT_TRUE(corre(caso[0]));
        EXPECT_THAT(fabrica.diario.linhas, Contains(caso[1]));
    }
    for (const char* argumento : {"", "0", "7", "1 ", " 1", "01", "12"}) {
        EXPECT_FALSE(corre(argumento)) << argumento;
        EXPECT_THAT(fabrica.diario.linhas.back(), HasSubstr("select PesoBruto")); // the start itself is done
    }
}

TEST_F(Main, AsDefinicoesVemDaPastaComumEABaseDoCatalogoQuandoEstaoIncompletas) {
    pasta.escreve("comum/TRAMEL/OrvexEXE.xel",
                  "[BD]\nServidor=sqlite\nBase=x\n[ERP]\nEmpresa=E\nUtilizador=u\n");
    pasta.escreve("programa/Catalogos/bd.sql", definicoes("catalogo"));
    EXPECT_TRUE(corre("2"));
    EXPECT_EQ(arranque->ficheiro_definicoes(), pasta.pasta() / "comum" / "TRAMEL" / "OrvexEXE.xel");
    EXPECT_THAT(fabrica.diario.linhas, Contains("liga E||u|sqlite"));
    EXPECT_THAT(fabrica.diario.linhas, Contains("bd sqlite|catalogo"));
    std::filesystem::remove(pasta.pasta() / "programa/Catalogos/bd.sql");
    EXPECT_THROW(corre("2"), base::Falha);
}

TEST_F(Main, UmLivroIncompletoAcabaOArranqueNaInstrucaoQueODescobre) {
    corre("");
    no_livro("drop table xel_ORVEX_Mov");
    EXPECT_THROW(corre("2"), base::Falha);
    EXPECT_THAT(fabrica.diario.linhas.back(), HasSubstr("ADD PesoLiquido"));
    no_livro("drop table xel_ORVEX");
    EXPECT_THROW(corre("2"), base::Falha) << "the ledger was begun, and is not begun again";
    platform::sqlite::abre_base(pasta.pasta() / platform::sqlite::ficheiro_erp).exec("pragma user_version=0");
    EXPECT_TRUE(corre("2")) << "both are made anew";
    no_livro("drop table xel_ORVEX");
    EXPECT_THROW(corre("2"), base::Falha) << "the second CREATE finds its table";
    EXPECT_TRUE(corre("2"));
    no_livro("alter table xel_ORVEX_Mov drop column PesoBruto");
    EXPECT_THROW(corre("2"), base::Falha) << "the net weight exists already";
    arranque.reset(); // a file that is open cannot be removed everywhere
    std::filesystem::remove(pasta.pasta() / platform::sqlite::ficheiro_livro);
    EXPECT_THROW(corre("2"), base::Falha) << "a session that did not open fails at the weights";
    EXPECT_THAT(fabrica.diario.linhas.back(), HasSubstr("ADD PesoLiquido"));
}
