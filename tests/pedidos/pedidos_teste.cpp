// How many requests each job makes of a server, from the first key that needs it to the last: what a branch
// office feels is that many times the delay of its line. Always through the driver and the wire, where the
// requests are counted; each job on a connection of its own, which knows nothing yet.
#include "startup/arranque.h"
#include "tests/apoio/fluxos.h"
#include "tests/apoio/programas.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

using namespace orvex;
using namespace orvex::testes;

namespace {

const bool pelo_fio_sempre = setenv("ORVEX_TESTE_MOTOR", "fio", 1) == 0;

constexpr int linhas_listadas = 1'000;
constexpr int linhas_da_guia = 30;
constexpr int artigos_seguidos = 20; // a note has some of them twice

// Open lines of one invoice each: CL2 has those of the notes; the ledger lacks the gross weights of CL3's.
void poe_linhas(EmpresaTeste& empresa) {
    using Linhas = std::vector<std::vector<base::Variante>>;
    Linhas artigos, stock, abertas, no_erp, pesos;
    for (int i = 1; i <= artigos_seguidos; ++i) {
        artigos.push_back({"R" + std::to_string(i), "Bobina d'aço", "TON", 0, m("2000"), m("20"), m("90")});
        stock.push_back({"R" + std::to_string(i), "OR", m("10")});
    }
    int numero = 1000;
    for (const auto& [cliente, linhas, com_peso] : {std::tuple{"CL'1", linhas_listadas, true},
                                                    {"CL2", 2 * linhas_da_guia, true},
                                                    {"CL3", linhas_listadas, false}}) {
        ++numero;
        for (int linha = 1; linha <= linhas; ++linha) {
            const std::string artigo = "R" + std::to_string(linha % artigos_seguidos + 1);
            const base::Variante peso = com_peso ? base::Variante(m("2.5")) : base::Variante();
            abertas.push_back({2019, "FA", numero, 1, linha, base::DataHora{2019, 3, 1}, artigo, cliente,
                               "Bobina d'aço", m("2.5"), m("2.5"), peso, peso});
            no_erp.push_back({2019, "FA", 1, numero, linha, artigo, "OR"});
            if (!com_peso) pesos.push_back({2019, "FA", 1, numero, linha, m("2.6")});
        }
    }
    startup::SessaoBD& BD = empresa.outra();
    BD.IniciaTransaccao();
    BD.Executa("Delete xel_ORVEX_MOV");
    insere(BD, "Artigos", {"CODIGO", "Nome", "UnBase", "artoudes", "VLREXIST", "STDISP", "ULTPRCOM"},
           artigos);
    insere(BD, "artarm", {"Artigo", "Armazem", "Existenc"}, stock);
    insere(BD, "xel_ORVEX_MOV",
           {"Ano", "TpDoc", "NumDoc", "SerieDoc", "NumLinha", "Data", "Artigo", "Cliente", "Descritivo",
            "QtdOrig", "Qtd", "PesoLiquido", "PesoBruto"},
           abertas);
    insere(BD, "DocGcLin", {"Ano", "TpDocum", "Serie", "NNumDoc", "NumLinha", "Artigo", "Armazem"}, no_erp);
    insere(BD, "U_DocGcLin1", {"Ano", "TpDocUM", "Serie", "NNumDoc", "NumLinha", "PesoBruto"}, pesos);
    BD.ConfirmaTransaccao();
}

EmpresaTeste& com_linhas() {
    static EmpresaTeste empresa;
    static const bool feita = (poe_linhas(empresa), true);
    static_cast<void>(feita);
    return empresa;
}

int pedidos(SessaoDeTeste& BD, const std::function<void()>& trabalho) {
    BD.servidor().recomeca();
    trabalho();
    return BD.servidor().pedidos();
}

void cabe(const std::string& trabalho, int feitos, int marca) {
    std::cout << trabalho << ": " << feitos << ", " << marca << " at most\n";
    EXPECT_LE(feitos, marca) << trabalho;
    EXPECT_GT(feitos, 0) << trabalho << " was not done on the wire";
}

int pedidos_da_lista(const char* cliente, int linhas) {
    EcraGuias guias(com_linhas());
    const int feitos = pedidos(guias.BD, [&] { guias.cliente(cliente); });
    EXPECT_EQ(guias.caixas(), "");
    EXPECT_FALSE(guias.ecra.Detalhe.texto(linhas - 1, "Artigo").empty());
    EXPECT_EQ(guias.ecra.Detalhe.texto(0, "PesoBruto"), cliente[2] == '3' ? "2.6" : "2.5");
    return feitos;
}

struct PedidosDaGuia {
    int emitir, carregar, anular, devolver;
};

PedidosDaGuia pedidos_da_guia(int linhas) {
    EmpresaTeste empresa(com_linhas().pasta());
    const auto emite = [&] {
        EcraGuias guias(empresa);
        guias.cliente("CL2");
        for (int linha = 1; linha <= linhas; ++linha)
            guias.escolhe(linha);
        const int feitos = pedidos(guias.BD, [&] { guias.confirma(); });
        EXPECT_THAT(guias.caixas(), StartsWith("Foi criado o documento"));
        return feitos;
    };
    PedidosDaGuia feitos{};
    feitos.emitir = emite();
    {
        EcraGuias guias(empresa);
        feitos.carregar = pedidos(guias.BD, [&] { guias.carrega("1"); });
        feitos.anular = pedidos(guias.BD, [&] { guias.anula(); });
        EXPECT_EQ(empresa.linhas("select count(*) from xel_ORVEX_Mov where TpDoc='GR'"), "0");
    }
    emite();
    EcraGuias guias(empresa);
    guias.carrega("2");
    guias.abre_devolucao();
    for (int linha = 1; linha <= linhas; ++linha)
        guias.marca(linha);
    feitos.devolver = pedidos(guias.BD, [&] { guias.op.prime(guias.ecra.btGV(1)); });
    EXPECT_EQ(empresa.linhas("select count(*) from xel_ORVEX_Mov where TpDoc='GV'"), std::to_string(linhas));
    return feitos;
}

// The program's start with one of its screens.
template <typename TEcra>
struct Abertura : startup::Fabrica, startup::EcraArranque {
    explicit Abertura(auto... modo)
        : faz([=](const common::ServicosEcra& servicos) {
              return std::make_unique<TEcra>(servicos, static_cast<std::int16_t>(modo)...);
          }) {}

    std::string abre_protegida(const std::string& protegida) override { return protegida; }
    std::unique_ptr<startup::SessaoERP> cria_sessao_erp(const startup::DefinicoesERP&) override {
        return std::make_unique<platform::erp::SessaoERPEmbebida>();
    }
    std::unique_ptr<startup::SessaoBD> cria_sessao_bd(const startup::DefinicoesBD&) override {
        auto nova = std::make_unique<SessaoDeTeste>();
        BD = nova.get();
        return nova;
    }
    std::shared_ptr<startup::EcraArranque> cria_ecra(startup::TipoEcra, startup::SessaoBD& sessao,
                                                     startup::SessaoERP& gERP, int) override {
        ecra = faz({sessao, gERP, startup::Parametros(empresa.pasta()), {}, [] { return relogio; }});
        ecra->define_janela(janela);
        return {std::shared_ptr<void>(), this};
    }
    void mostra_caixa(const std::string&, const std::string&) override {}
    void Load() override { ecra->Form_Load(); }
    void Show() override { ecra->utilizador_abre(); }

    // Every text that the server got since it began.
    int pedidos(const char* argumento) {
        empresa.com_ajustes_e_transferencias();
        std::ofstream(empresa.pasta() / "OrvexEXE.xel")
            << "[BD]\nServidor=sqlite\nBase=" << base::texto_de(empresa.pasta())
            << "\nUtilizador=ana\n[ERP]\nEmpresa=E\n";
        startup::Arranque arranque(*this, startup::PastasInstalacao::de(empresa.pasta()));
        EXPECT_NE(arranque.Main(argumento), nullptr);
        EXPECT_NE(janela.foco, nullptr);
        return static_cast<int>(BD->servidor().textos().size());
    }

    EmpresaTeste empresa;
    JanelaGuiao janela;
    std::unique_ptr<TEcra> ecra;
    SessaoDeTeste* BD = nullptr;
    std::function<std::unique_ptr<TEcra>(const common::ServicosEcra&)> faz;
};

} // namespace

TEST(Pedidos, ListarNaoOsFazPorLinha) {
    const int poucas = pedidos_da_lista("CL2", 2 * linhas_da_guia);
    const int mil = pedidos_da_lista("CL'1", linhas_listadas);
    cabe("1,000 open lines listed", mil, 15);
    cabe("the same beside 60, which are one block of 500", mil, poucas + 1);
    cabe("1,000 open lines repaired and listed", pedidos_da_lista("CL3", linhas_listadas), 25);
}

TEST(Pedidos, UmaGuiaNaoOsFazPorLinha) {
    const PedidosDaGuia trinta = pedidos_da_guia(linhas_da_guia);
    cabe("a note of 30 lines issued", trinta.emitir, 25);
    cabe("loaded", trinta.carregar, 5);
    cabe("cancelled", trinta.anular, 15);
    cabe("30 lines returned", trinta.devolver, 25);
    const PedidosDaGuia sessenta = pedidos_da_guia(2 * linhas_da_guia);
    constexpr int por_parametros = 1; // what is written of 60 lines takes more than one request's
    cabe("a note of 60 lines issued", sessenta.emitir, trinta.emitir + por_parametros);
    cabe("loaded", sessenta.carregar, trinta.carregar);
    cabe("cancelled", sessenta.anular, trinta.anular);
    cabe("60 lines returned", sessenta.devolver, trinta.devolver + por_parametros);
}

// Each line after the first is read again once the one before it is written.
TEST(Pedidos, SoLinhasDaMesmaLinhaDeFacturaOsFazemPorLinha) {
    EcraGuias guias;
    guias.cliente("CL'1");
    for (int linha = 1; linha <= linhas_da_guia; ++linha) {
        guias.escolhe(1);
        guias.edita(linha, "Quant", "0,05");
    }
    const int feitos = pedidos(guias.BD, [&] { guias.confirma(); });
    cabe("a note of 30 lines of one source line issued", feitos, 72);
    EXPECT_EQ(guias.empresa.linhas("select Qtd from xel_ORVEX_Mov where NumDoc=123 and NumLinha=1"), "1");
}

TEST(Pedidos, CadaConfirmacaoTemASuaMarcaEODiarioADele) {
    using Fluxo = confirmacao::Fluxo;
    for (const auto& [fluxo, marca] : {std::pair{Fluxo::emite_guia, 25},
                                       {Fluxo::anula_guia, 15},
                                       {Fluxo::devolve, 25},
                                       {Fluxo::ajusta, 12},
                                       {Fluxo::substitui_ajuste, 12},
                                       {Fluxo::anula_ajuste, 12},
                                       {Fluxo::transfere_para_orvex, 10},
                                       {Fluxo::transfere_para_cliente, 10}}) {
        EmpresaTeste empresa(empresa_disputada(linha_para({fluxo})));
        platform::diario::Gaveta gaveta(empresa.pasta() / "diario");
        Diario gravacao;
        std::vector<SessaoDeTeste*> sessoes; // the program's, and the journal's
        Posto este = posto(empresa.pasta(), gaveta, gravacao);
        este.abre_bd = [&, abre = este.abre_bd] {
            auto nova = abre();
            sessoes.push_back(dynamic_cast<SessaoDeTeste*>(nova.get()));
            return nova;
        };
        Programa programa(este, fluxo);
        ASSERT_TRUE(programa.prepara()) << nome(fluxo);
        const std::string antes = empresa.livro();
        cabe(nome(fluxo), pedidos(*sessoes.at(0), [&] { programa.prime(); }), marca);
        cabe("its journal", static_cast<int>(sessoes.at(1)->servidor().textos().size()), 3);
        EXPECT_NE(empresa.livro(), antes) << programa.janela.retira_caixas();
        EXPECT_TRUE(gaveta.por_acabar().empty());
    }
}

TEST(Pedidos, SairDeUmCampoEAbrirOProgramaFazemPoucos) {
    EcraGuias guias;
    cabe("the client left", pedidos(guias.BD, [&] { guias.cliente("CL2"); }), 4);
    fluxos::Quebras quebras;
    cabe("the item of an adjustment left", pedidos(quebras.BD, [&] { quebras.item("CEDIDA"); }), 4);
    fluxos::Trf<2> trf;
    cabe("the item of a transfer left", pedidos(trf.BD, [&] { trf.item("REEL'1"); }), 4);
    cabe("its new holder left", pedidos(trf.BD, [&] { trf.destino("CL2"); }), 4);
    cabe("delivery notes opened", Abertura<delivery::GuiasRemessa>().pedidos("2"), 8);
    cabe("adjustments opened", Abertura<adjust::MovStocks>(1).pedidos("1"), 8);
    cabe("transfers opened", Abertura<transfer::TrfBobines>(2).pedidos("6"), 8);
}
