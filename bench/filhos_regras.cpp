#include "bench/filhos.h"

#include "adjust/mov_stocks.h"
#include "base/texto.h"
#include "delivery/guias_remessa.h"
#include "platform/diario/diario.h"
#include "platform/erp/sessao_erp_embebida.h"
#include "platform/odbc/sessao_odbc.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "startup/instalacao.h"

#include <chrono>
#include <cstdio>
#include <optional>

namespace orvex::bench {
namespace {

// A window that nobody sees and that answers every box with its first button.
class JanelaMuda : public common::Janela {
  public:
    std::string ultima_caixa;

    void mostra() override {}
    void da_foco(common::Controlo&) override {}
    int caixa(const std::string& texto, const std::string&, common::Icone, common::Botoes) override {
        ultima_caixa = texto;
        return common::resposta_ok;
    }
    std::string escolhe(const common::ListaPesquisa&) override { return {}; }
    void ocupado(bool) override {}
    void descarrega() override {}
};

// A screen on an installation, with no window.
template <typename TEcra, typename TSessao = platform::sqlite::SessaoSQLite>
struct Posto {
    template <typename... Argumentos>
    explicit Posto(const std::filesystem::path& instalacao, Argumentos... argumentos)
        : ecra({BD,
                gERP,
                startup::Parametros(instalacao),
                {},
                [] {
                    return base::DataHora{2026, 1, 2, 10};
                },
                observadores},
               argumentos...) {
        const auto definicoes = instalacao / "OrvexEXE.xel";
        BD.Abre(startup::texto_ligacao(startup::DefinicoesBD::le(definicoes)));
        if (!gERP.Liga(startup::DefinicoesERP::le(definicoes).valores))
            throw base::Falha("O ERP recusou a entrada.");
        ecra.define_janela(janela);
        ecra.Form_Load();
        ecra.utilizador_abre();
    }

    // Beside the company, so that it is flushed to the same disk.
    void com_diario(const std::filesystem::path& instalacao) {
        gaveta.emplace(instalacao / "diarios");
        diario.emplace(*gaveta, platform::diario::Diario::Meios{
                                    .identidade = {"E", "u", "m"},
                                    .abre_sessao =
                                        [instalacao] {
                                            auto outra = std::make_unique<TSessao>();
                                            outra->Abre(startup::texto_ligacao(
                                                startup::DefinicoesBD::le(instalacao / "OrvexEXE.xel")));
                                            return outra;
                                        },
                                    .resolve = [](auto&) { return platform::diario::Tratamento(); },
                                    .engole = [](const std::string& texto) { throw base::Falha(texto); }});
        observadores.junta(*diario);
    }

    // Types into the first field and leaves it: the client, which lists its open lines, or the item.
    void escolhe(const std::string& codigo) {
        ecra.utilizador_edita(ecra.campo(0), codigo);
        ecra.utilizador_avanca(+1);
    }

    confirmacao::Observadores observadores;
    std::optional<platform::diario::Gaveta> gaveta;
    std::optional<platform::diario::Diario> diario;
    TSessao BD;
    platform::erp::SessaoERPEmbebida gERP;
    JanelaMuda janela;
    TEcra ecra;
};

template <typename Trabalho>
double milissegundos(Trabalho trabalho) {
    const auto inicio = std::chrono::steady_clock::now();
    trabalho();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - inicio).count();
}

} // namespace

namespace {

template <typename TSessao>
int mede_facturas_de(const std::filesystem::path& instalacao, const std::string& cliente) {
    Posto<delivery::GuiasRemessa, TSessao> posto(instalacao);
    const double ms = milissegundos([&] { posto.escolhe(cliente); });
    int mostradas = 0;
    while (mostradas < posto.ecra.Detalhe.linhas() && !posto.ecra.Detalhe.valor(mostradas, "Artigo").vazio())
        ++mostradas;
    std::printf("%.3f %d\n", ms, mostradas);
    return 0;
}

} // namespace

int mede_facturas(const std::filesystem::path& instalacao, const std::string& cliente) {
    return mede_facturas_de<platform::sqlite::SessaoSQLite>(instalacao, cliente);
}

int mede_facturas_fio(const std::filesystem::path& instalacao, const std::string& cliente) {
    return mede_facturas_de<platform::odbc::SessaoODBC>(instalacao, cliente);
}

int mede_emissao(const std::filesystem::path& instalacao, const std::string& cliente, int linhas,
                 bool com_diario) {
    Posto<delivery::GuiasRemessa> posto(instalacao);
    if (com_diario) posto.com_diario(instalacao);
    posto.escolhe(cliente);
    for (int linha = 1; linha <= linhas; ++linha) {
        posto.ecra.utilizador_celula(posto.ecra.Detalhe, linha, 0);
        posto.ecra.utilizador_duplo_clique(posto.ecra.Detalhe);
    }
    const double ms = milissegundos([&] { posto.ecra.utilizador_prime(posto.ecra.btConf(0)); });
    if (posto.janela.ultima_caixa.rfind("Foi criado o documento", 0) != 0) {
        std::fprintf(stderr, "%s\n", posto.janela.ultima_caixa.c_str());
        return 1;
    }
    std::printf("%.3f %d\n", ms, linhas);
    return 0;
}

int mede_ajuste(const std::filesystem::path& instalacao, int vezes, bool com_diario) {
    Posto<adjust::MovStocks> posto(instalacao, std::int16_t{3});
    if (com_diario) posto.com_diario(instalacao);
    const std::string artigo =
        posto.BD.Consulta("Select top 1 * from xel_ORVEX order by Registo desc")->valor("NumSerie").texto();
    double ms = 0;
    for (int i = 0; i < vezes; ++i) {
        posto.escolhe(artigo);
        posto.ecra.utilizador_foca(posto.ecra.campo(3));
        posto.ecra.utilizador_edita(posto.ecra.campo(3), "0,001");
        posto.ecra.utilizador_foca(posto.ecra.btConf); // leaving the field checks it
        ms += milissegundos([&] { posto.ecra.utilizador_prime(posto.ecra.btConf); });
        if (posto.janela.ultima_caixa.rfind("Foi gerado o Documento", 0) != 0) {
            std::fprintf(stderr, "%s\n", posto.janela.ultima_caixa.c_str());
            return 1;
        }
    }
    std::printf("%.3f %d\n", ms / vezes, vezes);
    return 0;
}

} // namespace orvex::bench
