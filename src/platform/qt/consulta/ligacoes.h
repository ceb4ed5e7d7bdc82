// What codes open: the links of a table's rows and of a card, alike to the eye and in words.
#pragma once

#include "livro/consultas/quadro.h"
#include "platform/qt/dica_do_cortado.h"

#include <QString>

#include <vector>

class QTableView;

namespace orvex::platform::qt::consulta {

// "Abrir artigo BA000265"
QString abrir_em_palavras(livro::consultas::Ligacao qual, const QString& texto);

// Of a table of a ModeloQuadro: columns in sight, from the left, whose cell in this row opens something.
std::vector<int> colunas_com_ligacao(const QTableView& vista, int linha);

// Draws links as such, and a ring around the current cell, wherever the keyboard is.
class DelegadoLigacao : public DicaDoCortado {
  public:
    explicit DelegadoLigacao(QTableView& vista);

    void paint(QPainter* pintor, const QStyleOptionViewItem& opcao, const QModelIndex& indice) const override;
    // The link whose text is there; none elsewhere in its cell, where a click marks the row.
    QModelIndex ligacao_em(QPoint lugar) const;

  protected:
    void initStyleOption(QStyleOptionViewItem* opcao, const QModelIndex& indice) const override;

  private:
    QTableView& vista_;
};

} // namespace orvex::platform::qt::consulta
