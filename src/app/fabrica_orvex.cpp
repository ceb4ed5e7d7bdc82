#include "app/fabrica_orvex.h"

#include "app/abre_consulta.h"
#include "app/fabrica_erp.h"
#include "app/gaveta_da_empresa.h"
#include "base/caminho.h"
#include "base/descricao.h"
#include "delivery/guias_remessa.h"
#include "platform/odbc/sessao_odbc.h"
#include "platform/operacoes/sessao_bd_ouvida.h"
#include "platform/operacoes/sessao_erp_ouvida.h"
#include "platform/operacoes/sistema.h"
#include "platform/proteccao/proteccao.h"
#include "platform/qt/aplicacao.h"
#include "platform/qt/espera.h"
#include "platform/qt/janelas/janela_guias_remessa.h"
#include "platform/qt/janelas/janela_mov_stocks.h"
#include "platform/qt/janelas/janela_trf_bobines.h"
#include "platform/qt/programa.h"
#include "platform/sqlite/sessao_sqlite.h"

namespace orvex::app {
namespace {

using platform::operacoes::RegistoOperacoes;

// A window whose boxes are in the log: what the user was told before he reads it, and his answers.
template <typename TJanela>
class JanelaRegistada : public TJanela {
  public:
    template <typename TEcra>
    JanelaRegistada(TEcra& ecra, const platform::qt::EstadoSessao& sessao, RegistoOperacoes* registo)
        : TJanela(ecra, sessao), registo_(registo) {}

    int caixa(const std::string& texto, const std::string& titulo, common::Icone icone,
              common::Botoes botoes) override {
        if (registo_ != nullptr) registo_->caixa(texto);
        const int resposta = TJanela::caixa(texto, titulo, icone, botoes);
        const bool sim = resposta == common::resposta_ok || resposta == common::resposta_sim;
        if (registo_ != nullptr && botoes != common::Botoes::ok) registo_->resposta(sim ? "sim" : "não");
        return resposta;
    }

  private:
    RegistoOperacoes* registo_;
};

// A screen and its window.
template <typename TEcra, typename TJanela>
class EcraComJanela : public startup::EcraArranque {
  public:
    template <typename... Argumentos>
    explicit EcraComJanela(const platform::qt::EstadoSessao& sessao, RegistoOperacoes* registo,
                           platform::qt::JanelaQt::AbreConsulta abre_consulta, Argumentos&&... argumentos)
        : ecra_(std::forward<Argumentos>(argumentos)...), janela_(ecra_, sessao, registo) {
        janela_.define_consulta(std::move(abre_consulta));
        janela_.define_ao_fechar([this] { ecra_.Form_Terminate(); });
    }

    TJanela& janela() { return janela_; }

    void Load() override { ecra_.Form_Load(); }
    void Show() override { janela_.abre(); }

  private:
    TEcra ecra_;
    JanelaRegistada<TJanela> janela_;
};

using EcraGuiasRemessa = EcraComJanela<delivery::GuiasRemessa, platform::qt::JanelaGuiasRemessa>;
using EcraMovStocks = EcraComJanela<adjust::MovStocks, platform::qt::JanelaMovStocks>;
using EcraTrfBobines = EcraComJanela<transfer::TrfBobines, platform::qt::JanelaTrfBobines>;

bool embebida(const startup::DefinicoesBD& definicoes) {
    return definicoes.servidor == startup::servidor_embebido;
}

std::unique_ptr<platform::registos::Sessao> nova_sessao(const startup::DefinicoesBD& definicoes) {
    const platform::espera::Espera espera = platform::qt::espera_nas_janelas();
    if (embebida(definicoes)) return std::make_unique<platform::sqlite::SessaoSQLite>(espera);
    return std::make_unique<platform::odbc::SessaoODBC>(platform::odbc::Esperas{.a_vista = espera});
}

std::unique_ptr<startup::SessaoBD> abre_outra(const startup::DefinicoesBD& definicoes) {
    auto sessao = nova_sessao(definicoes);
    sessao->Abre(startup::texto_ligacao(definicoes)); // one that did not open says so when it is asked
    return sessao;
}

} // namespace

std::string FabricaOrvex::abre_protegida(const std::string& protegida) {
    return platform::proteccao::abre(protegida);
}

std::unique_ptr<startup::SessaoERP> FabricaOrvex::cria_sessao_erp(const startup::DefinicoesERP& definicoes) {
    sessao_.demonstracao = definicoes.tipo() == startup::TipoERP::emulacao;
    auto sessao = app::cria_sessao_erp(definicoes, platform::qt::espera_nas_janelas());
    if (registo_ == nullptr) return sessao;
    return std::make_unique<platform::operacoes::SessaoERPOuvida>(std::move(sessao), *registo_);
}

std::unique_ptr<startup::SessaoBD> FabricaOrvex::cria_sessao_bd(const startup::DefinicoesBD& definicoes) {
    definicoes_ = definicoes;
    sessao_.motor = embebida(definicoes) ? "SQLite" : "SQL Server";
    sessao_.utilizador = definicoes.utilizador_do_sistema ? platform::operacoes::utilizador_da_maquina()
                                                          : definicoes.utilizador;
    auto sessao = nova_sessao(definicoes);
    if (registo_ == nullptr) return sessao;
    sessao->define_ao_engolir(
        [this](const std::exception& falha) { registo_->engolida(base::descricao(falha)); });
    return std::make_unique<platform::operacoes::SessaoBDOuvida>(std::move(sessao), *registo_);
}

void FabricaOrvex::recupera(startup::SessaoBD& BD, startup::SessaoERP& gERP) {
    if (const startup::ReferenciaERP empresa = gERP.Empresa())
        sessao_.empresa = empresa->obtem("Nome").valor.texto();
    if (registo_ == nullptr) return;
    sessao_.pasta_do_registo = base::texto_de(platform::operacoes::pasta_do_registo());
    regista_empresa();
    diario_ = std::make_unique<DiarioOrvex>(
        DiarioOrvex::Meios{.BD = BD,
                           .gERP = gERP,
                           .gaveta = gaveta_da_empresa(definicoes_),
                           .programa = programa_,
                           .empresa = sessao_.empresa,
                           .abre_sessao = [definicoes = definicoes_] { return abre_outra(definicoes); },
                           .registo = *registo_});
    observadores_.junta(diario_->observador());
    diario_->recupera();
}

std::shared_ptr<startup::EcraArranque> FabricaOrvex::cria_ecra(startup::TipoEcra tipo, startup::SessaoBD& BD,
                                                               startup::SessaoERP& gERP, int modo) {
    common::ServicosEcra servicos{BD,
                                  gERP,
                                  startup::Parametros(programa_),
                                  platform::qt::formato_do_sistema(),
                                  base::DataHora::agora,
                                  observadores_};
    const auto consulta = [instalacao = programa_](const common::CodigoEscrito& codigo) {
        return abre_consulta(codigo, instalacao);
    };
    const auto Modo = static_cast<std::int16_t>(modo);
    switch (tipo) {
    case startup::TipoEcra::GuiasRemessa: {
        auto guias = std::make_shared<EcraGuiasRemessa>(sessao_, registo_, consulta, servicos);
        if (diario_ != nullptr && !platform::operacoes::pasta_do_registo().empty())
            guias->janela().define_rascunhos(abre_rascunhos());
        return guias;
    }
    case startup::TipoEcra::MovStocks:
        return std::make_shared<EcraMovStocks>(sessao_, registo_, consulta, servicos, Modo);
    case startup::TipoEcra::TrfBobines:
        return std::make_shared<EcraTrfBobines>(sessao_, registo_, consulta, servicos, Modo);
    }
    throw base::Falha("Ecrã desconhecido.");
}

void FabricaOrvex::regista_empresa() {
    observadores_.junta(*registo_);
    registo_->empresa(sessao_.empresa, sessao_.motor, definicoes_.controlador);
    sessao_.aviso = [this] { return aviso(); };
}

std::string FabricaOrvex::aviso() const {
    if (registo_->avariado()) return "SEM REGISTO DE OPERAÇÕES";
    return rascunhos_ != nullptr && rascunhos_->avariado() ? "GUIA POR ACABAR SEM CÓPIA" : "";
}

// After recovery, which tells of the notes that were being confirmed. Told of confirmations after the
// journal.
platform::diario::Rascunhos& FabricaOrvex::abre_rascunhos() {
    auto diarios = gaveta_da_empresa(definicoes_);
    const auto pasta = platform::operacoes::pasta_do_registo() / "rascunhos" / diarios.pasta().filename();
    rascunhos_ = std::make_unique<platform::diario::Rascunhos>(platform::diario::Rascunhos::Meios{
        .pasta = pasta,
        .empresa = sessao_.empresa,
        .diarios = std::move(diarios),
        .em_curso = [this] { return diario_->em_curso(); },
        .engole = [this](const std::string& texto) { registo_->engolida(texto); }});
    observadores_.junta(*rascunhos_);
    return *rascunhos_;
}

void FabricaOrvex::mostra_caixa(const std::string& texto, const std::string& titulo) {
    recusou_ = true;
    if (registo_ != nullptr) registo_->falha(texto);
    platform::qt::diz(texto, titulo, common::Icone::nenhum);
}

} // namespace orvex::app
