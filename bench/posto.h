// A workstation without a window: a screen of the program on an installation.
#pragma once

#include "base/falha.h"
#include "common/janela.h"
#include "delivery/guias_remessa.h"
#include "platform/diario/diario.h"
#include "platform/erp/sessao_erp_embebida.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "startup/instalacao.h"
#include "startup/parametros.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace orvex::bench {

// A window that nobody sees and that answers every box with its first button.
class JanelaMuda : public common::Janela {
  public:
    std::string ultima_caixa;
    std::string procurado; // picked in a list: the first row that has it

    void mostra() override {}
    void da_foco(common::Controlo&) override {}
    int caixa(const std::string& texto, const std::string&, common::Icone, common::Botoes) override {
        ultima_caixa = texto;
        return common::resposta_ok;
    }
    std::string escolhe(const common::ListaPesquisa& lista) override {
        const auto linhas = lista.ligacao.Consulta(lista.sql);
        for (; !linhas->fim(); linhas->move_seguinte())
            for (std::size_t i = 0; i < linhas->colunas(); ++i)
                if (linhas->valor(i).texto() == procurado) return linhas->valor(0).texto();
        return {};
    }
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

// Takes the first lines of a list into the note.
inline void escolhe_linhas(delivery::GuiasRemessa& ecra, int linhas) {
    for (int linha = 1; linha <= linhas; ++linha) {
        ecra.utilizador_celula(ecra.Detalhe, linha, 0);
        ecra.utilizador_duplo_clique(ecra.Detalhe);
    }
}

// The rows of a grid that hold something; the others are blank, and come after.
inline int linhas_usadas(const common::Grelha& grelha) {
    int usadas = 0;
    while (usadas < grelha.linhas() && !grelha.valor(usadas, "Artigo").vazio())
        ++usadas;
    return usadas;
}

} // namespace orvex::bench
