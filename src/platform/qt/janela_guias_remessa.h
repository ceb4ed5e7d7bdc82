// The delivery-note window.
#pragma once

#include "delivery/guias_remessa.h"
#include "platform/qt/janela_qt.h"

class QGridLayout;

namespace orvex::platform::qt {

class JanelaGuiasRemessa : public JanelaQt {
  public:
    JanelaGuiasRemessa(delivery::GuiasRemessa& ecra, const EstadoSessao& sessao);

  private:
    QWidget* cabecalho(delivery::GuiasRemessa& ecra);
    QWidget* corpo(delivery::GuiasRemessa& ecra);
    QWidget* movimentos(delivery::GuiasRemessa& ecra);
    QWidget* diversos(delivery::GuiasRemessa& ecra);
    QWidget* painel_devolucao(delivery::GuiasRemessa& ecra);
};

} // namespace orvex::platform::qt
