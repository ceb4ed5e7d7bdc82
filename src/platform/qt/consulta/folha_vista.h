// A view on paper, page by page: the band with company, view and filters on top of each, and below it the
// cards and tables. A table that goes on has its headings again; its totals stand with its last row.
#pragma once

#include "platform/qt/consulta/blocos.h"

#include <QPageLayout>

namespace orvex::platform::qt::consulta {

struct Impressa {
    const livro::consultas::Recolhida& vista; // must outlive the sheets
    QString empresa;
    std::vector<QString> fecho{}; // of a statement: paragraphs at the end, and where to sign
};

class FolhaVista : public Paginas {
  public:
    FolhaVista(const Impressa& esta, QPaintDevice& papel, QSizeF espaco);

    int paginas() const override { return static_cast<int>(paginas_.size()); }
    void pinta(QPainter& pintor, int pagina) const override;

  private:
    struct Troco { // of a block
        const Bloco* bloco;
        std::size_t primeira, fim;
        qreal y;
    };

    void pagina();
    void pagina(const Bloco& bloco, qreal& y);
    void pinta_faixa(QPainter& pintor) const;

    QString empresa_, titulo_, filtros_;
    qreal faixa_ = 0; // where it ends
    std::vector<std::unique_ptr<Bloco>> blocos_;
    std::vector<std::vector<Troco>> paginas_;
};

// A4, lying where a table of the view needs it.
QPageLayout folha_para(const livro::consultas::Recolhida& vista);

} // namespace orvex::platform::qt::consulta
