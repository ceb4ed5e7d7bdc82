// The dialog of the labels: size, copies, where a sheet begins, and how the first label will look.
#pragma once

#include "platform/qt/consulta/folha_etiquetas.h"

#include <QDialog>
#include <QElapsedTimer>

#include <utility>

class QComboBox;
class QKeyEvent;
class QLabel;
class QPushButton;
class QSpinBox;

namespace orvex::platform::qt {
struct Impresso;
}

namespace orvex::platform::qt::consulta {

class JanelaEtiquetas : public QDialog {
  public:
    JanelaEtiquetas(QWidget& pai, std::vector<Etiqueta> etiquetas);

    QString feito() const { return feito_; } // what to say of it; empty for nothing

  protected:
    bool eventFilter(QObject* alvo, QEvent* evento) override;

  private:
    void constroi();
    bool de_leitor(const QObject& alvo, const QKeyEvent& tecla);
    void desfaz(); // what a reader wrote
    void mostra();
    void mostra_amostra();
    const TamanhoDeEtiqueta& tamanho() const;
    std::vector<Etiqueta> que_cabem() const;
    QString de_fora(Cabe porque) const; // their codes
    Impresso impresso() const;
    void imprime();
    void guarda();
    void acaba(const QString& feito);

    std::vector<Etiqueta> etiquetas_;
    QString feito_;
    QComboBox* tamanho_;
    QSpinBox* copias_;
    QSpinBox* primeira_;
    QLabel *amostra_, *contagem_, *aviso_;
    QPushButton *imprimir_, *pdf_;
    QElapsedTimer desde_a_ultima_;    // since a character
    int letras_ = 0;                  // that came one upon the other
    std::pair<int, int> antes_{1, 1}; // copies and first place, before the first of them
};

// A label as a printer of 203 dots an inch makes it, whole.
QImage amostra_da_etiqueta(const TamanhoDeEtiqueta& tamanho, const Etiqueta& etiqueta);

} // namespace orvex::platform::qt::consulta
