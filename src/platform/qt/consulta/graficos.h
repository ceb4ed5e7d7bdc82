// The charts themselves: bars of weights, each with its figures for the eye, the mouse and a screen reader.
#pragma once

#include "livro/consultas/quadro.h"

#include <QWidget>

#include <vector>

namespace orvex::platform::qt::consulta {

// A row of the table.
struct Barra {
    QString nome;     // of the band, or the month
    QString inteiro;  // "30-11-2024: 12 artigos, 1,234 t"
    QString artigos;  // "12 artigos"
    QString peso;     // "1,234 t"
    double valor = 0; // tonnes
};

class Grafico : public QWidget {
  public:
    explicit Grafico(const livro::consultas::Recolhida::Parte& parte);

  protected:
    virtual int barra_em(QPoint lugar) const = 0; // -1 where there is none
    bool event(QEvent* evento) override;
    void mouseMoveEvent(QMouseEvent* evento) override;
    void leaveEvent(QEvent* evento) override;

    std::vector<Barra> barras_;
    int apontada_ = -1; // by the mouse
};

// How long items have been out: a bar for each band, with its figures behind it.
class GraficoIdades : public Grafico {
  public:
    explicit GraficoIdades(const livro::consultas::Recolhida::Parte& parte);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* evento) override;
    int barra_em(QPoint lugar) const override;

  private:
    int altura() const; // of a band
};

// What a client held at the end of each month: columns over an axis of tonnes.
class GraficoEvolucao : public Grafico {
  public:
    explicit GraficoEvolucao(const livro::consultas::Recolhida::Parte& parte);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* evento) override;
    int barra_em(QPoint lugar) const override;

  private:
    struct Eixo {
        double menor = 0, maior = 1, passo = 1;
    };
    Eixo eixo() const;
    QRect area() const; // of the columns
    double y_de(double valor) const;
    QRectF coluna(int qual) const;
    void pinta_eixo(QPainter& pintor) const;
    void pinta_meses(QPainter& pintor) const;
};

} // namespace orvex::platform::qt::consulta
