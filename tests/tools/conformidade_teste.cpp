// orvex-conformidade: on an ERP that does what it says, on others that do not, and as it is called.
#include "platform/sqlite/empresa.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/ordem/erp_teimoso.h"
#include "tests/tools/comando.h"
#include "tools/conformidade/ensaio.h"
#include "tools/empresa/empresa_demo.h"

#include <sstream>

namespace orvex::testes {
namespace {

using namespace testing;
using Fabrica = std::function<std::unique_ptr<startup::SessaoERP>(const std::filesystem::path&)>;

// Lets everybody in, makes an object of any class, cancels as often as it is told to.
struct ErpFacil : platform::erp::SessaoERPEmbebida {
    bool Liga(const std::array<std::string, 5>& valores) override {
        return SessaoERPEmbebida::Liga({valores[0], "", "ana", valores[3], valores[4]});
    }
    startup::ReferenciaERP CriaObjecto(const std::string& classe) override {
        return SessaoERPEmbebida::CriaObjecto(classe.starts_with("Orvex") ? "SageApiNextPlus.DocumentosGcLin"
                                                                          : classe);
    }
    startup::ResultadoERP AnulaDocumento(std::int16_t um, const startup::ChaveDocumento& chave) override {
        SessaoERPEmbebida::AnulaDocumento(um, chave);
        return {true, ""};
    }
};

// Gives the key of another document than the one it made.
struct ErpTrocado : platform::erp::SessaoERPEmbebida {
    startup::ChaveDocumento CriaDocStock(const startup::PedidoDocStock& pedido) override {
        startup::ChaveDocumento chave = SessaoERPEmbebida::CriaDocStock(pedido);
        chave.NossoNoDocumento = 1;
        return chave;
    }
};

// Keeps something else than what it was given.
class ErpDescuidado : public platform::erp::SessaoERPEmbebida {
  public:
    explicit ErpDescuidado(std::filesystem::path empresa) : empresa_(std::move(empresa)) {}

    startup::ReferenciaERP CriaObjecto(const std::string& classe) override {
        platform::sqlite::abre_base(empresa_ / platform::sqlite::ficheiro_erp)
            .exec("update DocGcCab set LocalCarga = 'Cais 3, ?Esta' where TpDoc = 'GR';"
                  "update DocGcLin set NumLinha = NumLinha + 4 where TpDocum = 'GR' and NumLinha < 4;"
                  "insert or ignore into DocGcCab (Ano, TpDoc, Serie, NNumDoc, Data) " // a colleague's
                  "values (2019, 'GR', 1, 500, '2019-03-15 00:00:00')");
        return SessaoERPEmbebida::CriaObjecto(classe);
    }

  private:
    std::filesystem::path empresa_;
};

// Is gone once it is asked for something unusual.
struct ErpQueCai : platform::erp::SessaoERPEmbebida {
    startup::ReferenciaERP CriaObjecto(const std::string& classe) override {
        if (classe.starts_with("Orvex")) Desliga();
        return SessaoERPEmbebida::CriaObjecto(classe);
    }
};

struct Ensaiado {
    std::string linhas, por_anular, errados;
    bool stock_como_antes = false;
};
Ensaiado ensaia(const Fabrica& fabrica, bool com_tabelas = true) {
    EmpresaTeste empresa;
    empresa.com_ajustes_e_transferencias();
    platform::erp::SessaoERPEmbebida antes; // a document of the day's year: another's, never to be cancelled
    antes.Liga({"E", "", "ana", "sqlite", base::texto_de(empresa.pasta())});
    antes.CriaDocStock({.tipo_documento = "SB",
                        .serie = 1,
                        .data = relogio.data(),
                        .armazem = "CL",
                        .artigos = {"", "BOB2"},
                        .quantidades = {0, 1},
                        .precos = {0, 1}});
    const std::string stock = empresa.stock();
    std::ostringstream saida;
    conformidade::Relatorio relatorio(saida);
    const auto por_anular =
        conformidade::ensaia({.nova_sessao = [&] { return fabrica(empresa.pasta()); },
                              .entrada = {"E", "", "ana", "sqlite", base::texto_de(empresa.pasta())},
                              .empresa = "Empresa",
                              .casa = conformidade::Casa::le(startup::Parametros(empresa.pasta())),
                              .cliente = "CL'1",
                              .artigo = "BOB'1",
                              .agora = relogio,
                              .BD = com_tabelas ? &empresa.outra() : nullptr,
                              .sem_BD = "sem base de dados"},
                             relatorio);
    Ensaiado feito{saida.str(), {}, {}, empresa.stock() == stock};
    for (const auto& chave : por_anular)
        feito.por_anular += chave.texto() + " ";
    for (const std::string& linha : partes(feito.linhas, "\n"))
        if (linha.starts_with("errado")) feito.errados += linha + "\n";
    return feito;
}

TEST(Conformidade, UmErpQueFazOQueDizEstaTodoCertoENadaFica) {
    for (const bool com_tabelas : {true, false}) {
        const Ensaiado feito =
            ensaia([](const auto& pasta) { return std::make_unique<ErpTeimoso>(Manha::nenhuma, pasta); },
                   com_tabelas);
        EXPECT_EQ(feito.errados, "");
        EXPECT_EQ(feito.por_anular, "");
        EXPECT_TRUE(feito.stock_como_antes);
        for (const char* tipo : {"SB/1/", "GR/1/", "GV/1/", "QB/2/", "CI/3/", "TR/6/"}) {
            const auto anulado =
                ContainsRegex(std::string("certo +") + tipo + "[0-9]+/2019: AnulaDocumento\n");
            if (com_tabelas)
                EXPECT_THAT(feito.linhas, anulado);
            else
                EXPECT_THAT(feito.linhas, Not(anulado)) << "whose it is, nobody could tell";
        }
        EXPECT_EQ(feito.linhas.find("não experimentado") == std::string::npos, com_tabelas) << feito.linhas;
    }
}

TEST(Conformidade, OQueUmErpFazMalEDitoNaSuaLinhaEOQueFicaENomeado) {
    const auto teimoso = [](Manha manha) {
        return [manha](const auto& pasta) { return std::make_unique<ErpTeimoso>(manha, pasta); };
    };
    const Fabrica descuidado = [](const auto& pasta) { return std::make_unique<ErpDescuidado>(pasta); };
    const Fabrica facil = [](const auto&) { return std::make_unique<ErpFacil>(); };
    const struct {
        Fabrica fabrica;
        const char *errado, *por_anular;
    } casos[] = {
        {teimoso(Manha::cria_e_lanca), "sobra: esperado «sem falhas», encontrado «O ERP não respondeu.»",
         "SB/1/9/2019 "},
        {teimoso(Manha::recusa_e_cria), "sobra: esperado «criada», encontrado «recusada, O ERP recusou.»",
         "SB/1/9/2019 "},
        {descuidado, "cabeçalho, LocalCarga: esperado «Cais 3, «Estação» d'Água», encontrado «Cais 3, ?Esta»",
         ""},
        {descuidado, "que apareceram durante o ensaio: GR/1/500/2019 não tem as linhas do ensaio", ""},
        {descuidado, "linhas, NumeroDaLinha da linha 2: esperado «2», encontrado «6»", ""},
        {teimoso(Manha::recusa_anular),
         "AnulaDocumento: esperado «verdadeiro», encontrado «falso, O ERP recusou.»", "TR/6/"},
        {teimoso(Manha::diz_que_anula), "AnulaDocumento, nas tabelas do ERP: esperado «anulado»", "TR/6/"},
        {teimoso(Manha::anula_e_lanca),
         "guia de remessa: esperado «sem falhas», encontrado «O ERP não respondeu.»", ""},
        {facil, "Liga com um utilizador desconhecido: esperado «falso», encontrado «verdadeiro»", ""},
        {facil, "falha de classe desconhecida: esperado «uma falha», encontrado «nenhuma»", ""},
        {facil, "anular outra vez: esperado «recusado», encontrado «aceite", ""},
        {[](const auto&) { return std::make_unique<ErpQueCai>(); },
         "recusa de Ler um documento que não existe: esperado «recusado, e a sessão continua»", ""},
        {[](const auto&) { return std::make_unique<ErpTrocado>(); },
         "número do documento criado: esperado «maior do que 1», encontrado «1»", "SB/1/2/2019 "}};
    for (const auto& caso : casos) {
        const Ensaiado feito = ensaia(caso.fabrica);
        EXPECT_THAT(feito.linhas, HasSubstr(caso.errado));
        EXPECT_THAT(feito.por_anular, HasSubstr(caso.por_anular));
        EXPECT_EQ(feito.por_anular.empty(), *caso.por_anular == '\0') << feito.por_anular;
        EXPECT_EQ(feito.por_anular.find("SB/1/1/2019"), std::string::npos) << "of somebody else";
        EXPECT_EQ(feito.stock_como_antes, feito.por_anular.empty());
    }
}

TEST(Conformidade, SoEscreveNaEmpresaQueLheDisseramEAcabaComOQuePromete) {
    const PastaTemporaria raiz;
    const auto pasta = raiz.pasta() / "i";
    demo::faz_empresa({.pasta = pasta, .hoje = base::DataHora::agora()});
    const auto corre = [&](const std::string& argumentos) {
        const Fim fim = testes::corre("'" ORVEX_CONFORMIDADE "' '" + pasta.string() + "' " + argumentos);
        return std::pair{fim.codigo, fim.texto};
    };
    const std::string codigos = "--cliente C0001 --artigo BA000001";
    for (const auto& caso :
         tabela({" => Faltam --cliente e --artigo", "--nada => Argumento desconhecido",
                 "--cliente C0001 --artigo BA000001 => repita com --empresa-de-ensaio \"ORVEX (empresa de "
                 "treino)\"",
                 "--cliente C0001 --artigo BA000001 --empresa-de-ensaio ORVEX => e não em «ORVEX»"}))
        EXPECT_THAT(corre(caso[0]), Pair(1, AllOf(HasSubstr(caso[1]), HasSubstr("Nada foi experimentado."))));
    const std::string nomeada = " --empresa-de-ensaio 'ORVEX (empresa de treino)'";
    EXPECT_THAT(corre(codigos + nomeada), Pair(0, HasSubstr(" certo, 0 errado, 0 não experimentado.")));
    EXPECT_THAT(corre("--cliente NENHUM --artigo BA000001" + nomeada),
                Pair(2, HasSubstr("«criada», encontrado «recusada, O cliente")));
    raiz.escreve("i/OrvexEXE.xel",
                 "[BD]\nServidor=sqlite\nBase=outra\nUtilizador=demo\n[ERP]\nEmpresa=ORVEX\nUtilizador=demo\n"
                 "Servidor=sqlite\nBase=Empresa\n");
    EXPECT_THAT(corre(codigos + nomeada),
                Pair(1, HasSubstr("não experimentado as tabelas do ERP e as existências: ")));
}

} // namespace
} // namespace orvex::testes
