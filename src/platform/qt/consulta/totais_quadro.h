// The totals at the foot of a table, each under its column, however these are widened or scrolled. What there
// is no room for scrolls.
#pragma once

#include "livro/consultas/quadro.h"

#include <QAbstractScrollArea>

#include <vector>

class QTableView;

namespace orvex::platform::qt::consulta {

class TotaisQuadro : public QAbstractScrollArea {
  public:
    TotaisQuadro(QTableView& tabela, const livro::consultas::Quadro& quadro);
    void junta(const livro::consultas::Linha& total);
    // Of the rows only some are in sight: the totals, which are of all, say so.
    void define_parcial(bool parcial);
    const std::vector<livro::consultas::Linha>& todos() const { return totais_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* evento) override;
    void resizeEvent(QResizeEvent* evento) override;
    bool viewportEvent(QEvent* evento) override;

  private:
    int altura_da_linha() const;
    QString texto(std::size_t linha, int coluna) const;
    QRect lugar(std::size_t linha, int coluna) const;
    void diz();
    QString em_palavras(std::size_t linha) const; // "Total: 12 artigos, Peso (t) 1,234"

    QTableView& tabela_;
    const livro::consultas::Quadro& quadro_;
    std::vector<livro::consultas::Linha> totais_;
    bool parcial_ = false;
};

} // namespace orvex::platform::qt::consulta
