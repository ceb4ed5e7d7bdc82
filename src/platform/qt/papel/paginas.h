// What goes to paper page by page, to a printer, a PDF or a picture: fonts, cells of text, and the foot of
// each page. What stands on the pages is of the classes below.
#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <vector>

class QPagedPaintDevice;
class QPainter;

namespace orvex::platform::qt {

// The fonts of a device, texts measured and written with them, and rules: lengths in its own pixels.
class Tinta {
  public:
    struct Celula {
        QRectF lugar;
        QString texto;
        bool a_direita = false;
    };
    using Celulas = std::vector<Celula>;

    static constexpr qreal rodape = 22, folga = 3; // in points; folga: around the text of a cell

    // `papel` is what will be painted on, and `espaco` how much of it may be.
    Tinta(QPaintDevice& papel, QSizeF espaco);
    Tinta(const Tinta&) = delete;
    Tinta& operator=(const Tinta&) = delete;

    qreal pt(qreal pontos) const { return pontos * por_ponto_; }
    qreal largura() const { return espaco_.width(); }
    qreal fundo() const { return espaco_.height() - pt(rodape); } // where the foot begins
    QFont letra(qreal pontos, bool negrito = false, bool italico = false) const;
    QFontMetricsF medidas(const QFont& letra) const { return {letra, &papel_}; }
    qreal altura(const QFont& letra, const QString& texto, qreal largura) const;
    // A word that is longer than its column may be broken too.
    static QString quebravel(QString texto);

    void caneta(QPainter& pintor) const; // for text and rules
    void escreve(QPainter& pintor, const QFont& letra, const Celulas& celulas, qreal topo) const;
    void risca(QPainter& pintor, qreal y) const;
    void risca_leve(QPainter& pintor, qreal y) const; // between rows

  private:
    // With places to break at in the words that are wider than that by themselves.
    QString a_caber(const QFont& letra, const QString& texto, qreal largura) const;

    QPaintDevice& papel_;
    QSizeF espaco_;
    qreal por_ponto_;

  public:
    const QFont normal, negrito, grande;
};

class Paginas : public Tinta {
  public:
    using Tinta::Tinta;
    virtual ~Paginas() = default;

    virtual int paginas() const = 0;
    // From the painter's origin.
    virtual void pinta(QPainter& pintor, int pagina) const = 0;

  protected:
    void pinta_rodape(QPainter& pintor, int pagina) const;
};

// How much of a page the device paints on.
QSizeF espaco_de(const QPagedPaintDevice& papel);

// The pages that the device was asked for, or all. False when it did not take them: the painter, which began
// with the first, is then still at work, for the end of its work may be what sends the others.
bool imprime(const Paginas& paginas, QPagedPaintDevice& papel, QPainter& pintor);

} // namespace orvex::platform::qt
