// Picks the adapters and makes the screens with their windows: the one place that knows them all.
#pragma once

#include "app/diario_orvex.h"
#include "common/janela.h"
#include "platform/diario/rascunhos.h"
#include "platform/operacoes/registo_operacoes.h"
#include "platform/qt/pecas.h"
#include "startup/arranque.h"

#include <filesystem>

namespace orvex::app {

class FabricaOrvex : public startup::Fabrica {
  public:
    // `programa` is the folder of the executable, where the parameters file is. With a log, which must
    // outlive all that is made here, it is told what the sessions, the confirmations and the boxes do, and no
    // confirmation is made without a journal. Without one (a guided session, a benchmark) nothing is kept.
    explicit FabricaOrvex(std::filesystem::path programa,
                          platform::operacoes::RegistoOperacoes* registo = nullptr)
        : programa_(std::move(programa)), registo_(registo) {}

    std::string abre_protegida(const std::string& protegida) override;
    std::unique_ptr<startup::SessaoERP> cria_sessao_erp(const startup::DefinicoesERP& definicoes) override;
    std::unique_ptr<startup::SessaoBD> cria_sessao_bd(const startup::DefinicoesBD& definicoes) override;
    void recupera(startup::SessaoBD& BD, startup::SessaoERP& gERP) override;
    std::shared_ptr<startup::EcraArranque> cria_ecra(startup::TipoEcra tipo, startup::SessaoBD& BD,
                                                     startup::SessaoERP& gERP, int modo) override;
    void mostra_caixa(const std::string& texto, const std::string& titulo) override;

    bool recusou() const { return recusou_; } // start-up had something to tell

  private:
    void regista_empresa();
    platform::diario::Rascunhos& abre_rascunhos();
    std::string aviso() const; // for the status line

    bool recusou_ = false;
    std::filesystem::path programa_;
    platform::operacoes::RegistoOperacoes* registo_;
    startup::DefinicoesBD definicoes_;
    std::unique_ptr<DiarioOrvex> diario_;
    std::unique_ptr<platform::diario::Rascunhos> rascunhos_;
    confirmacao::Observadores observadores_;
    platform::qt::EstadoSessao sessao_;
};

} // namespace orvex::app
