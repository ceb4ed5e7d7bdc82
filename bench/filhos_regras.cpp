#include "bench/filhos.h"

#include "base/texto.h"
#include "delivery/guias_remessa.h"
#include "platform/erp/sessao_erp_embebida.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "startup/construtor_ligacao.h"

#include <chrono>
#include <cstdio>

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

// The delivery-note screen on an installation, with no window.
struct Posto {
    explicit Posto(const std::filesystem::path& instalacao)
        : ecra({BD, gERP, startup::Parametros(instalacao), {}, [] {
                    return base::DataHora{2026, 1, 2, 10};
                }}) {
        const auto definicoes = instalacao / "OrvexEXE.xel";
        const auto bd = startup::DefinicoesBD::le(definicoes);
        BD.Abre(startup::ConstrutorLigacao{.servidor = bd.servidor,
                                           .base = bd.base,
                                           .utilizador = bd.utilizador,
                                           .palavra_passe = bd.palavra_passe}
                    .constroi());
        if (!gERP.Liga(startup::DefinicoesERP::le(definicoes).valores))
            throw base::Falha("O ERP recusou a entrada.");
        ecra.define_janela(janela);
        ecra.Form_Load();
        ecra.utilizador_abre();
    }

    // Types the client and leaves the field, which lists the client's open lines.
    void escolhe_cliente(const std::string& cliente) {
        ecra.utilizador_edita(ecra.campo(0), cliente);
        ecra.utilizador_avanca(+1);
    }

    platform::sqlite::SessaoSQLite BD;
    platform::erp::SessaoERPEmbebida gERP;
    JanelaMuda janela;
    delivery::GuiasRemessa ecra;
};

template <typename Trabalho>
double milissegundos(Trabalho trabalho) {
    const auto inicio = std::chrono::steady_clock::now();
    trabalho();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - inicio).count();
}

} // namespace

int mede_facturas(const std::string& instalacao, const std::string& cliente) {
    Posto posto(instalacao);
    const double ms = milissegundos([&] { posto.escolhe_cliente(cliente); });
    int mostradas = 0;
    while (mostradas < posto.ecra.Detalhe.linhas() && !posto.ecra.Detalhe.valor(mostradas, "Artigo").vazio())
        ++mostradas;
    std::printf("%.3f %d\n", ms, mostradas);
    return 0;
}

int mede_emissao(const std::string& instalacao, const std::string& cliente, int linhas) {
    Posto posto(instalacao);
    posto.escolhe_cliente(cliente);
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

} // namespace orvex::bench
