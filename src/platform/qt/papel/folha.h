// A note on paper: the sheet of folha_guia.h, laid out page by page for a printer, a PDF or a picture. Each
// page has the band on top, the headings of the columns and its number; no line is cut, however long its
// designation.
#pragma once

#include "delivery/folha_guia.h"

#include <QFont>
#include <QRectF>
#include <QSizeF>

#include <array>
#include <vector>

class QPagedPaintDevice;
class QPaintDevice;
class QPainter;

namespace orvex::platform::qt {

class Folha {
  public:
    // `papel` is what will be painted on, and `espaco` how much of it may be, in its own pixels.
    Folha(delivery::FolhaGuia guia, QPaintDevice& papel, QSizeF espaco);

    int paginas() const { return static_cast<int>(paginas_.size()); }
    // From the painter's origin.
    void pinta(QPainter& pintor, int pagina) const;

  private:
    using Linha = delivery::FolhaGuia::Linha;
    struct Pagina {
        std::size_t primeira, fim; // of the lines
    };
    struct Celula {
        QRectF lugar;
        QString texto;
        bool a_direita = false;
    };
    using Celulas = std::vector<Celula>;

    qreal pt(qreal pontos) const { return pontos * por_ponto_; }
    qreal altura(const QFont& letra, const QString& texto, qreal largura) const;
    void pagina();
    QFont letra(const Linha& linha) const;
    qreal altura(const Linha& linha) const;
    Celulas celulas(const Linha& linha) const; // from the top of the line
    Celulas celulas(const std::vector<delivery::FolhaGuia::Dado>& dados, qreal x, qreal largura) const;
    qreal altura_dos_dados() const;
    void escreve(QPainter& pintor, const QFont& letra, const Celulas& celulas, qreal topo) const;
    void pinta_faixa(QPainter& pintor) const;
    void pinta_dados(QPainter& pintor) const;
    void risca(QPainter& pintor, qreal y) const;

    delivery::FolhaGuia guia_;
    Linha titulos_; // of the columns
    QPaintDevice& papel_;
    QSizeF espaco_;
    qreal por_ponto_;
    QFont normal_, negrito_, texto_, grande_;
    std::array<qreal, 6> colunas_; // where each begins, and where the last ends
    std::vector<Pagina> paginas_;
};

// On what the device takes for a page.
Folha folha_em(const delivery::FolhaGuia& guia, QPagedPaintDevice& papel);
// The pages that the device was asked for, or all. False when it did not take them: the painter, which began
// with the first, is then still at work, for the end of its work may be what sends the others.
bool imprime(const delivery::FolhaGuia& guia, QPagedPaintDevice& papel, QPainter& pintor);

} // namespace orvex::platform::qt
