// The window of a screen, at work on a small demo company.
#pragma once

#include "base/falha.h"
#include "platform/erp/sessao_erp_embebida.h"
#include "platform/sqlite/sessao_sqlite.h"
#include "startup/construtor_ligacao.h"
#include "startup/definicoes.h"
#include "tests/apoio/pasta_temporaria.h"
#include "tests/qt/apoio_qt.h"
#include "tools/empresa_demo.h"

#include <gtest/gtest.h>

namespace orvex::testes {

template <typename TEcra, typename TJanela>
class JanelaNaEmpresa : public ::testing::Test {
  protected:
    template <typename... Modo>
    explicit JanelaNaEmpresa(Modo... modo) {
        opcoes.pasta = pasta.pasta() / "ORVEX";
        opcoes.hoje = base::DataHora::agora();
        opcoes.clientes = 3;
        opcoes.artigos = opcoes.linhas = 60;
        demo::faz_empresa(opcoes);

        startup::ConstrutorLigacao ligacao;
        ligacao.servidor = startup::servidor_embebido;
        ligacao.base = (opcoes.pasta / demo::pasta_empresa).string();
        ligacao.utilizador = demo::utilizador;
        const auto valores = startup::DefinicoesERP::le(opcoes.pasta / "OrvexEXE.xel").valores;
        if (!BD.Abre(ligacao.constroi()) || !gERP.Liga(valores)) throw base::Falha("A empresa não abriu.");
        ecra = std::make_unique<TEcra>(
            common::ServicosEcra{BD, gERP, startup::Parametros(opcoes.pasta), {}, base::DataHora::agora},
            modo...);
        janela = std::make_unique<TJanela>(*ecra, sessao);
        ecra->Form_Load();
        janela->abre();
        activa();
    }

    void activa() { // no window manager gives the keyboard back after a box
        janela->activateWindow();
        if (!QTest::qWaitForWindowActive(janela.get())) throw base::Falha("A janela não ficou activa.");
    }

    PastaTemporaria pasta;
    demo::OpcoesEmpresa opcoes;
    platform::sqlite::SessaoSQLite BD;
    platform::erp::SessaoERPEmbebida gERP;
    platform::qt::EstadoSessao sessao{"Bobines, Lda.", "SQLite", "demo", true};
    std::unique_ptr<TEcra> ecra;
    std::unique_ptr<TJanela> janela;
};

} // namespace orvex::testes
