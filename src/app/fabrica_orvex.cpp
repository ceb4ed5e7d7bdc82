#include "app/fabrica_orvex.h"

#include "app/fabrica_erp.h"
#include "base/falha.h"
#include "delivery/guias_remessa.h"
#include "platform/odbc/sessao_odbc.h"
#include "platform/qt/aplicacao.h"
#include "platform/qt/caixa.h"
#include "platform/qt/janela_guias_remessa.h"
#include "platform/qt/janela_mov_stocks.h"
#include "platform/qt/janela_trf_bobines.h"
#include "platform/sqlite/sessao_sqlite.h"

#include <QApplication>

#include <iostream>

namespace orvex::app {
namespace {

// A screen and its window.
template <typename TEcra, typename TJanela>
class EcraComJanela : public startup::EcraArranque {
  public:
    template <typename... Argumentos>
    explicit EcraComJanela(const platform::qt::EstadoSessao& sessao, Argumentos&&... argumentos)
        : ecra_(std::forward<Argumentos>(argumentos)...), janela_(ecra_, sessao) {
        janela_.define_ao_fechar([this] { ecra_.Form_Terminate(); });
    }

    void Load() override { ecra_.Form_Load(); }
    void Show() override { janela_.abre(); }

  private:
    TEcra ecra_;
    TJanela janela_;
};

using EcraGuiasRemessa = EcraComJanela<delivery::GuiasRemessa, platform::qt::JanelaGuiasRemessa>;
using EcraMovStocks = EcraComJanela<adjust::MovStocks, platform::qt::JanelaMovStocks>;
using EcraTrfBobines = EcraComJanela<transfer::TrfBobines, platform::qt::JanelaTrfBobines>;

bool alguem_ve() {
    if (QCoreApplication::startingUp() ||
        qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr)
        return false;
    const QString sistema = QGuiApplication::platformName();
    return sistema != "offscreen" && sistema != "minimal";
}

} // namespace

void diz(const std::string& texto, const std::string& titulo, common::Icone icone) {
    if (alguem_ve()) {
        platform::qt::mostra_caixa(nullptr, texto, titulo, icone, common::Botoes::ok);
    } else {
        std::cerr << titulo << ": " << texto << '\n';
    }
}

std::unique_ptr<startup::SessaoERP> FabricaOrvex::cria_sessao_erp(const startup::DefinicoesERP& definicoes) {
    sessao_.demonstracao = definicoes.tipo() == startup::TipoERP::emulacao;
    return app::cria_sessao_erp(definicoes);
}

std::unique_ptr<startup::SessaoBD> FabricaOrvex::cria_sessao_bd(const startup::DefinicoesBD& definicoes) {
    const bool embebida = definicoes.servidor == startup::servidor_embebido;
    sessao_.motor = embebida ? "SQLite" : "SQL Server";
    sessao_.utilizador = definicoes.utilizador;
    if (embebida) return std::make_unique<platform::sqlite::SessaoSQLite>();
    return std::make_unique<platform::odbc::SessaoODBC>();
}

std::shared_ptr<startup::EcraArranque> FabricaOrvex::cria_ecra(startup::TipoEcra tipo, startup::SessaoBD& BD,
                                                               startup::SessaoERP& gERP, int modo) {
    if (const startup::ReferenciaERP empresa = gERP.Empresa())
        sessao_.empresa = empresa->obtem("Nome").valor.texto();
    const common::ServicosEcra servicos{BD, gERP, startup::Parametros(programa_),
                                        platform::qt::formato_do_sistema(), base::DataHora::agora};
    const auto Modo = static_cast<std::int16_t>(modo);
    switch (tipo) {
    case startup::TipoEcra::GuiasRemessa:
        return std::make_shared<EcraGuiasRemessa>(sessao_, servicos);
    case startup::TipoEcra::MovStocks:
        return std::make_shared<EcraMovStocks>(sessao_, servicos, Modo);
    case startup::TipoEcra::TrfBobines:
        return std::make_shared<EcraTrfBobines>(sessao_, servicos, Modo);
    }
    throw base::Falha("Ecrã desconhecido.");
}

void FabricaOrvex::mostra_caixa(const std::string& texto, const std::string& titulo) {
    recusou_ = true;
    diz(texto, titulo, common::Icone::nenhum);
}

} // namespace orvex::app
