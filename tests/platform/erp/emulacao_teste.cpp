// The ERP emulation at work on the small company, with the types of document that the screens ask for, and
// documents built on it the way the screens build them.
#include "platform/sqlite/empresa.h"
#include "startup/definicoes.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/apoio/falhas.h"

namespace orvex::testes {
namespace {

using platform::erp::SessaoERPEmbebida;
using startup::DefinicoesERP;
using startup::ReferenciaERP;

// One line of a document; without an article it is a text line.
struct Linha {
    std::string artigo;
    const char* quantidade = "0";
    std::string armazem = "OR";
};

class EmpresaErp : public testing::Test {
  protected:
    EmpresaErp() {
        insere(empresa.outra(), "TiposDocumento", {"Codigo", "MovStock"},
               {{"FA", 0}, {"SB", 1}, {"QB", -1}, {"TR", 2}});
        insere(empresa.outra(), "Series", {"TpDoc", "Serie"}, {{"FA", 1}, {"SB", 1}, {"QB", 1}, {"TR", 1}});
        insere(empresa.outra(), "Artigos", {"CODIGO", "Nome", "ULTPRCOM"}, {{"SEM", "Sem stock", m("50")}});
        empresa.outra().Executa("Update Utilizadores set PalavraPasse='Segredo'");
        EXPECT_TRUE(sessao.Liga(valores()));
    }

    std::array<std::string, 5> valores() const {
        return {"E", "Segredo", "ana", "sqlite", empresa.pasta().string()};
    }

    static ReferenciaERP documento(SessaoERPEmbebida& na, const std::vector<Linha>& linhas) {
        auto novo = na.CriaObjecto("SageApiNextPlus.DocumentoComercial");
        auto cab = novo->obtem("Cab").objecto;
        for (const auto& membro :
             tabela("Ano => 2026 | Data => 05-03-2026 | Serie => 1 | TipoDocumento => GR | "
                    "TipoTerceiro => 2 | Terceiro => CL'1"))
            cab->poe(membro[0], membro[1]);
        for (const Linha& pedida : linhas) {
            auto linha = na.CriaObjecto("SageApiNextPlus.DocumentosGcLin");
            linha->poe("TipoDeLinha", 1);
            linha->poe("Artigo", pedida.artigo);
            linha->poe("Armazem", pedida.armazem);
            linha->poe("Quantidade", m(pedida.quantidade));
            novo->chama("AdicionaLinha", {linha});
        }
        return novo;
    }

    // Submits and finishes; the message of a refusal, empty when it was saved.
    static std::string emite(SessaoERPEmbebida& na, const ReferenciaERP& novo) {
        if (na.SubmeteDocumento(3, novo) != 0) return na.ResultadoUltimo().mensagem;
        const bool gravou =
            na.DocumentoSubmetido()->chama("Finalizar", {0, 0, "GR", 2026}).valor.inteiro() == 0;
        return gravou ? "" : novo->obtem("UltimaMensagem").valor.texto();
    }
    static std::int64_t numero(const ReferenciaERP& do_documento) {
        return do_documento->obtem("Cab").objecto->obtem("NossoNoDocumento").valor.inteiro();
    }
    // Of an article: what is in warehouses CL and OR, the whole and its value.
    std::string stock(const std::string& artigo) {
        return empresa.linhas("select Existenc from artarm where Artigo='" + artigo + "' order by Armazem") +
               " = " + empresa.linhas("select STDISP, VLREXIST from Artigos where CODIGO='" + artigo + "'");
    }

    EmpresaTeste empresa;
    SessaoERPEmbebida sessao{50};
};

TEST_F(EmpresaErp, DaONumeroAQuemGravaPrimeiroENaoORepeteComDoisPostosAoMesmoTempo) {
    SessaoERPEmbebida outra;
    ASSERT_TRUE(outra.Liga(valores()));
    auto daqui = documento(sessao, {{"BOB2", "1"}});
    auto dali = documento(outra, {{"BOB2", "1"}});
    ASSERT_EQ(sessao.SubmeteDocumento(3, daqui), 0);
    EXPECT_EQ(emite(outra, dali), "");
    EXPECT_EQ(emite(sessao, daqui), "");
    EXPECT_EQ(numero(dali), 1);
    EXPECT_EQ(numero(daqui), 2);
}

TEST_F(EmpresaErp, RecusaComMensagemOQueNaoPodeGravarENadaFicaGravado) {
    const auto antes = empresa.stock();
    // Article, quantity, warehouse => a member of the header => what it gets => the message.
    for (const auto& caso :
         tabela({" => Sector => SG => O documento não tem linhas.",
                 "X|1|OR => Sector => SG => O artigo «X» não existe.",
                 "BOB2|-1|OR => Sector => SG => A quantidade não pode ser negativa.",
                 "BOB2|1|A7 => Sector => SG => O armazém «A7» não existe.",
                 "BOB2|1|OR => Terceiro => X => O cliente «X» não existe ou está inactivo.",
                 "BOB2|1|OR => Terceiro => INA => O cliente «INA» não existe ou está inactivo.",
                 "BOB2|1|OR => Terceiro =>  => Falta o cliente do documento.",
                 "BOB2|1|OR => Serie => 2 => O tipo de documento «GR» não existe na série 2.",
                 "BOB2|1|OR => Data =>  => Falta a data do documento.",
                 "BOB2|1|OR => Processo => 1234567890123456789012345678901 => O campo Processo não pode ter "
                 "mais de 30 caracteres."})) {
        std::vector<Linha> linhas;
        const auto p = partes(caso[0], "|"); // the lines point into it
        if (p.size() > 1) linhas = {{p[0], p[1].c_str(), p[2]}};
        auto novo = documento(sessao, linhas);
        novo->obtem("Cab").objecto->poe(caso[1], caso[2]);
        EXPECT_EQ(sessao.SubmeteDocumento(3, novo), -1) << caso[3];
        EXPECT_EQ(sessao.ResultadoUltimo().mensagem, caso[3]);
        EXPECT_EQ(sessao.DocumentoSubmetido(), nullptr);
    }
    EXPECT_EQ(empresa.linhas("select * from DocGcCab") + empresa.stock(), antes);
}

TEST_F(EmpresaErp, UmaFalhaAMeioOuUmErpOcupadoNaoDeixaNadaGravadoNemGastaONumero) {
    auto outra =
        platform::sqlite::abre_base(empresa.pasta() / platform::sqlite::ficheiro_erp, SQLite::OPEN_READWRITE);
    std::int64_t seguinte = 0;
    for (const auto& caso :
         tabela({"alter table artarm rename to longe => alter table longe rename to artarm => ",
                 "begin immediate => rollback => ocupada por outro posto"})) {
        auto novo = documento(sessao, {{"BOB2", "1"}});
        outra.exec(caso[0]);
        const std::string mensagem = emite(sessao, novo);
        EXPECT_THAT(mensagem, testing::AllOf(testing::Ne(""), HasSubstr(caso[2])));
        EXPECT_FALSE(sessao.AnulaDocumento(1, {2026, "GR", 1, 1}).sucesso);
        outra.exec(caso[1]);
        EXPECT_EQ(numero(novo), 0) << "um número que não ficou gravado não fica no documento";
        EXPECT_EQ(emite(sessao, novo), "");
        EXPECT_EQ(numero(novo), ++seguinte);
    }
}

TEST_F(EmpresaErp, DeixamOStockNegativoAoUltimoPrecoEOCustoVoltaASerOQueEraAoAnular) {
    EXPECT_EQ(emite(sessao, documento(sessao, {{"SEM", "2"}})), "");
    EXPECT_EQ(stock("SEM"), "-2 = -2|-100");
    EXPECT_EQ(emite(sessao, documento(sessao, {{"BOB2", "20"}})), "");
    EXPECT_EQ(stock("BOB2"), "10; -10 = 0|0");
    for (const int numero : {1, 2})
        EXPECT_TRUE(sessao.AnulaDocumento(1, {2026, "GR", 1, numero}).sucesso);
    EXPECT_EQ(stock("SEM"), "0 = 0|0");
    EXPECT_EQ(stock("BOB2"), "10; 10 = 20|2000");
    EXPECT_EQ(sessao.AnulaDocumento(1, {2026, "SB", 1, 9}).mensagem, "O documento SB/1/9/2026 não existe.");
}

TEST_F(EmpresaErp, RecusaODocumentoDeStockQueNaoPodeCriarENaoGastaNumero) {
    startup::PedidoDocStock pedido{.sector = "1", .serie = 1, .processo = "P1", .armazem = "OR"};
    pedido.artigos = {"", "BOB2"};
    pedido.textos_15 = pedido.textos_18 = {"", ""};
    pedido.precos = {0, 100};
    for (const auto& caso :
         tabela("TR => 1 => 05-03-2026 => A7 | SB => 1 => ontem => CL | FA => 1 => 05-03-2026 => CL | "
                "ZZ => 1 => 05-03-2026 => CL | QB => -1 => 05-03-2026 => CL | SB => 1 => 05-03-2026 => CL")) {
        EXPECT_EQ(empresa.linhas("select * from DocGcCab"), "");
        pedido.tipo_documento = caso[0];
        pedido.quantidades = {0, std::stod(caso[1])};
        pedido.data = caso[2];
        pedido.destino = caso[3];
        const bool criado = sessao.CriaDocStock(pedido) == startup::ChaveDocumento{2026, "SB", 1, 1};
        EXPECT_EQ(sessao.ResultadoUltimo().sucesso, criado) << caso[0];
        EXPECT_EQ(sessao.ResultadoUltimo().mensagem.empty(), criado) << caso[0];
    }
    EXPECT_EQ(empresa.linhas("select TpTerc, Processo, Data, NVias from DocGcCab"),
              "1|P1|2026-03-05 00:00:00|0");
}

TEST_F(EmpresaErp, RecusaAEntradaSemDizerQualDosValoresEstaErrado) {
    for (const auto& [posicao, errado] : {std::pair{DefinicoesERP::empresa, "outra"},
                                          {DefinicoesERP::utilizador, "outro"},
                                          {DefinicoesERP::palavra_passe, "outra"},
                                          {DefinicoesERP::palavra_passe, "SEGREDO"}}) {
        auto errados = valores();
        errados[posicao] = errado;
        EXPECT_FALSE(sessao.Liga(errados));
        EXPECT_EQ(sessao.Empresa(), nullptr);
        EXPECT_EQ(sessao.ResultadoUltimo().mensagem, "O ERP recusou a entrada.");
    }
}

TEST_F(EmpresaErp, DizOQueFaltaQuandoAEmpresaNaoAbre) {
    const PastaTemporaria pasta;
    pasta.escreve("danificada/erp.db", std::string(4096, 'x'));
    pasta.escreve("vazia/erp.db", "");
    for (const auto& [onde, texto] :
         {std::pair{"", "Falta a pasta da empresa do ERP."}, // not the folder we are in
          {"nenhuma", "Não existe uma empresa na pasta"},
          {"danificada", "A empresa do ERP está danificada"},
          {"vazia", "Falha na empresa do ERP"}}) {
        auto outros = valores();
        outros[DefinicoesERP::base] = *onde == '\0' ? "" : (pasta.pasta() / onde).string();
        EXPECT_THAT(falha([&] { SessaoERPEmbebida().Liga(outros); }), HasSubstr(texto));
    }
}

TEST_F(EmpresaErp, OsMembrosNaoDistinguemMaiusculasEOQueNaoSeConheceOuNaoCabeFalhaComOSeuNome) {
    auto novo = documento(sessao, {{"BOB2", "1"}});
    auto cab = novo->obtem("CAB").objecto;
    cab->poe("PROCESSO", "P7");
    EXPECT_EQ(cab->obtem("processo").valor.texto(), "P7");
    for (const auto& [membro, errado] : {std::pair<const char*, base::Variante>{"Procesos", "P7"},
                                         {"Serie", "um"},
                                         {"Serie", 40000},
                                         {"Data", "31-02-2026"},
                                         {"Ano", base::Variante()}})
        EXPECT_THAT(falha([&] { cab->poe(membro, errado); }), HasSubstr(membro));
    const auto falham = [](const std::vector<std::pair<const char*, std::function<void()>>>& chamadas) {
        for (const auto& [texto, chamada] : chamadas)
            EXPECT_THAT(falha(chamada), testing::AllOf(testing::Ne(""), HasSubstr(texto)));
    };
    const auto cria = [&](const char* classe) { return sessao.CriaObjecto(classe); };
    falham({{"O membro «Terceiro» não recebe um objecto.", [&] { cab->poe("Terceiro", novo); }},
            {"Origem", [&] { novo->poe("Origem", cab); }},
            {"só recebe o cabeçalho de um documento", [&] { novo->poe("Cab", novo); }},
            {"só recebe o cabeçalho de um documento", [&] { novo->poe("Cab", "GR"); }},
            {"Linhas", [&] { cab->obtem("Linhas"); }},
            {"Gravar", [&] { novo->chama("Gravar", {}); }},
            {"",
             [&] {
                 novo->chama("Finalizar", {0, 0});
             }}, // too few arguments
            {"", [&] { novo->obtem("Linhas").objecto->chama("Item", {2}); }},
            {"SageApiNextPlus.Outro", [&] { cria("SageApiNextPlus.Outro"); }}});
    EXPECT_EQ(sessao.Empresa()->obtem("nome").valor.texto(), "Empresa");
    sessao.Desliga();
    EXPECT_EQ(sessao.Empresa(), nullptr);
    falham({{"", [&] { cria("SageApiNextPlus.DocumentoComercial"); }},
            {"", [&] { sessao.SubmeteDocumento(3, novo); }}}); // an object of the session that was
}

TEST_F(EmpresaErp, UmDocumentoRecebeOCabecalhoDeOutroEFinalizarDevolveONumeroNoSeuArgumento) {
    auto novo = documento(sessao, {{"BOB2", "1"}});
    auto copia = sessao.CriaObjecto("SageApiNextPlus.DocumentoComercial");
    copia->poe("Cab", novo->obtem("Cab"));
    copia->chama("AdicionaLinha", {novo->chama("Linhas", {1})});
    ASSERT_EQ(sessao.SubmeteDocumento(3, copia), 0) << sessao.ResultadoUltimo().mensagem;
    startup::ObjectoERP::Argumentos argumentos{0, 0, "GR", 2026};
    EXPECT_EQ(copia->chama("Finalizar", argumentos).valor.inteiro(), 0);
    EXPECT_GT(numero(copia), 0);
    EXPECT_EQ(argumentos[0].valor.inteiro(), numero(copia));
    EXPECT_EQ(numero(novo), 0); // its header was taken by value
}

} // namespace
} // namespace orvex::testes
