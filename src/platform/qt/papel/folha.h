// A note on paper: the sheet of folha_guia.h, laid out page by page for a printer, a PDF or a picture. Each
// page has the band on top, the headings of the columns and its number; no line is cut, however long its
// designation.
#pragma once

#include "delivery/folha_guia.h"
#include "platform/qt/papel/paginas.h"

#include <array>

namespace orvex::platform::qt {

class Folha : public Paginas {
  public:
    Folha(delivery::FolhaGuia guia, QPaintDevice& papel, QSizeF espaco);

    int paginas() const override { return static_cast<int>(paginas_.size()); }
    void pinta(QPainter& pintor, int pagina) const override;

  private:
    using Linha = delivery::FolhaGuia::Linha;
    struct Pagina {
        std::size_t primeira, fim; // of the lines
    };
    using Paginas::altura, Paginas::letra;

    void pagina();
    QFont letra(const Linha& linha) const;
    qreal altura(const Linha& linha) const;
    Celulas celulas(const Linha& linha) const; // from the top of the line
    Celulas celulas(const std::vector<delivery::FolhaGuia::Dado>& dados, qreal x, qreal largura) const;
    qreal altura_dos_dados() const;
    void pinta_faixa(QPainter& pintor) const;
    void pinta_dados(QPainter& pintor) const;

    delivery::FolhaGuia guia_;
    Linha titulos_;                // of the columns
    QFont texto_;                  // of one who writes between the lines
    std::array<qreal, 6> colunas_; // where each begins, and where the last ends
    std::vector<Pagina> paginas_;
};

} // namespace orvex::platform::qt
