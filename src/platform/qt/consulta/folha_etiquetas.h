// Labels on paper: one a page for a label printer, or many on a sheet.
#pragma once

#include "platform/qt/consulta/etiquetas.h"
#include "platform/qt/papel/paginas.h"

#include <QPageLayout>

#include <vector>

namespace orvex::platform::qt::consulta {

// All in millimetres.
struct TamanhoDeEtiqueta {
    QString nome;
    QSizeF etiqueta;
    qreal margem; // within the label: what printers leave, or cannot reach
    int colunas = 1, linhas = 1;
    QPointF primeira{}; // where the first label of a sheet begins
    qreal entre_colunas = 0;

    int por_folha() const { return colunas * linhas; }
};
const std::vector<TamanhoDeEtiqueta>& tamanhos_de_etiqueta();
// The label itself, or a sheet of A4: to its edges.
QPageLayout folha_de(const TamanhoDeEtiqueta& tamanho);

enum class Cabe { sim, nao, letras }; // letras: it has some that the barcode does not carry
// On the coarsest of the usual label printers.
Cabe cabe(const TamanhoDeEtiqueta& tamanho, const Etiqueta& etiqueta);

class FolhaEtiquetas : public Paginas {
  public:
    // Labels that fit; so many places of the first sheet are left as they are.
    FolhaEtiquetas(const TamanhoDeEtiqueta& tamanho, std::vector<Etiqueta> etiquetas, int usadas,
                   QPaintDevice& papel, QSizeF espaco);

    int paginas() const override;
    void pinta(QPainter& pintor, int pagina) const override;

  private:
    qreal mm(qreal milimetros) const { return pt(milimetros * 72 / 25.4); }
    void pinta(QPainter& pintor, const Etiqueta& etiqueta, QPointF canto) const;
    void pinta_barras(QPainter& pintor, const std::vector<bool>& modulos, const QRectF& lugar) const;

    const TamanhoDeEtiqueta& tamanho_;
    std::vector<Etiqueta> etiquetas_;
    int usadas_;
};

} // namespace orvex::platform::qt::consulta
