// What the delivery-note window does about drafts: hands the note on after every event, offers one that was
// left unfinished, and takes steps back with Ctrl+Z.
//
// The offer lies over the window's title, so that nothing moves when it comes or goes, and takes no keyboard.
// It is there while nothing on the screen would be lost by it.
#pragma once

#include "delivery/guias_remessa.h"

#include <QPointer>

class QFrame;
class QKeyEvent;
class QLabel;
class QObject;
class QPushButton;

namespace orvex::platform::qt {

class JanelaQt;

class FaixaRascunho {
  public:
    FaixaRascunho(JanelaQt& janela, delivery::GuiasRemessa& ecra) : janela_(janela), ecra_(ecra) {}

    // They outlive it.
    void define_rascunhos(delivery::GuardaRascunhos& rascunhos) { rascunhos_ = &rascunhos; }
    void poe_sobre(QLabel& titulo);
    void actualiza(); // after each event
    // Ctrl+Z where the text that has the keyboard has nothing of its own to take back. True when it was used
    // up.
    bool tecla(const QObject& alvo, const QKeyEvent& evento);

  private:
    void mostra();
    void retoma();
    void deita_fora();

    JanelaQt& janela_;
    delivery::GuiasRemessa& ecra_;
    delivery::GuardaRascunhos* rascunhos_ = nullptr;
    QPointer<QFrame> faixa_;
    QLabel* texto_ = nullptr;
    QPushButton* retoma_ = nullptr;
    bool a_retomar_ = false; // the note on the screen is still the offer's
};

} // namespace orvex::platform::qt
