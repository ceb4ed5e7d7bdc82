// The delivery-note window.
#pragma once

#include "delivery/guias_remessa.h"
#include "platform/qt/janelas/faixa_rascunho.h"
#include "platform/qt/janelas/janela_qt.h"
#include "platform/qt/janelas/resumo_guia.h"

class QGridLayout;

namespace orvex::platform::qt {

class JanelaGuiasRemessa : public JanelaQt {
  public:
    JanelaGuiasRemessa(delivery::GuiasRemessa& ecra, const EstadoSessao& sessao);

    // Before it is opened. They outlive the window.
    void define_rascunhos(delivery::GuardaRascunhos& rascunhos) { rascunho_.define_rascunhos(rascunhos); }
    void mostra() override;
    void ocupado(bool sim) override;
    const ResumoDaGuia& resumo() const { return resumo_; }

  protected:
    bool eventFilter(QObject* alvo, QEvent* evento) override;

  private:
    QWidget* cabecalho(delivery::GuiasRemessa& ecra);
    QWidget* corpo(delivery::GuiasRemessa& ecra);
    QWidget* movimentos(delivery::GuiasRemessa& ecra);
    QWidget* diversos(delivery::GuiasRemessa& ecra);
    QWidget* painel_devolucao(delivery::GuiasRemessa& ecra);

    EstadoSessao sessao_;
    ResumoDaGuia resumo_;
    EtiquetaElidida* nome_cliente_ = nullptr;
    FaixaRascunho rascunho_;
};

} // namespace orvex::platform::qt
