// The transfer window.
#pragma once

#include "platform/qt/janelas/janela_qt.h"
#include "transfer/trf_bobines.h"

namespace orvex::platform::qt {

class JanelaTrfBobines : public JanelaQt {
  public:
    JanelaTrfBobines(transfer::TrfBobines& ecra, const EstadoSessao& sessao);

    void mostra() override;

  private:
    QWidget* corpo();
    QWidget* botoes();

    transfer::TrfBobines& trf_;
    std::vector<QWidget*> destino_; // the row of the new client; without one it takes no room
};

} // namespace orvex::platform::qt
