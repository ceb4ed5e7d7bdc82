// The foot of the window: what may be done with the view in sight, by button and by key.
#pragma once

#include "platform/qt/consulta/pagina.h"

#include <QWidget>

class QMenu;
class QPushButton;

namespace orvex::platform::qt::consulta {

class BarraLevar : public QWidget {
  public:
    struct Janela {
        std::function<Pagina*()> pagina;   // in sight; none where there is none
        std::function<QString()> resposta; // its code, where the answers of the search are in sight
        std::function<void(const QString&)> diz;
        std::function<void()> sai;
        std::string empresa;
    };
    BarraLevar(QWidget& janela, Janela com);
    void mostra(); // which of them work now
    void copia_marcadas();

  private:
    using Recolhida = livro::consultas::Recolhida;
    using Levar = std::function<QString(const Recolhida&)>;

    QPushButton* botao(const char* nome, const QString& legenda, const QString& dica);
    void faz(QPushButton* botao, std::function<void()> accao);
    QMenu* menu(QPushButton* botao);
    // The whole view, where it is whole.
    void leva(const Levar& como, Recolhida (Pagina::*de)() const = &Pagina::recolhida);
    bool a_mais(int linhas, const QString& para); // told
    void leva_pouco(const QString& para, const Levar& como);
    void etiquetas();

    QWidget& janela_;
    Janela com_;
    QPushButton *copiar_, *guardar_, *imprimir_, *pdf_, *extracto_, *etiquetas_;
};

} // namespace orvex::platform::qt::consulta
