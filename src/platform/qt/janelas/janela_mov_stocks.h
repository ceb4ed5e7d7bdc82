// The stock-adjustment window.
#pragma once

#include "adjust/mov_stocks.h"
#include "platform/qt/janelas/janela_qt.h"

class QGridLayout;

namespace orvex::platform::qt {

class JanelaMovStocks : public JanelaQt {
  public:
    JanelaMovStocks(adjust::MovStocks& ecra, const EstadoSessao& sessao);

    void mostra() override;

  private:
    QWidget* artigo(adjust::MovStocks& ecra);
    QWidget* movimento(adjust::MovStocks& ecra);
    QWidget* legenda_quantidade(adjust::MovStocks& ecra);
    QWidget* quantidade();
    void mostra_diferenca();

    adjust::MovStocks& ajuste_;
    QLabel* diferenca_ = nullptr;
};

} // namespace orvex::platform::qt
