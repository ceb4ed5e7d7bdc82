// Paper for the note on the screen: the system's printers, and a PDF.
#pragma once

#include "platform/qt/pecas.h"

#include <QWidget>

#include <functional>
#include <optional>

namespace orvex::delivery {
class GuiasRemessa;
struct FolhaGuia;
} // namespace orvex::delivery

namespace orvex::platform::qt {

class JanelaQt;
struct Impresso;

// Two small buttons, which also work by their keys from anywhere in the window. The keyboard stays where it
// is.
class BotoesPapel : public QWidget {
  public:
    // Screen, window and status line must outlive it.
    BotoesPapel(JanelaQt& janela, delivery::GuiasRemessa& ecra, const EstadoSessao& sessao,
                LinhaEstado& linha);

  private:
    void novo_botao(const QString& texto, const QString& dica, const QKeySequence& teclas,
                    void (BotoesPapel::*faz)());
    bool aceita_o_digitado();
    std::optional<delivery::FolhaGuia> folha(); // none where there is nothing to put on it, which is said
    void imprime_guia();
    void guarda_pdf();
    void leva(const std::function<void(const Impresso&)>& faz); // what fails is said
    void diz(const std::string& texto);

    JanelaQt& janela_;
    delivery::GuiasRemessa& ecra_;
    LinhaEstado& linha_;
    std::string empresa_;
};

} // namespace orvex::platform::qt
