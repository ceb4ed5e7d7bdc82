// Draws the cells of a grid and makes the editor of one. When an edit ends is the grid's affair, not the
// toolkit's: the keys of the editor are handed to it, and losing the keyboard (to a box, say) ends nothing.
#pragma once

#include "platform/qt/dica_do_cortado.h"

#include <functional>

class QKeyEvent;
class QLineEdit;

namespace orvex::platform::qt {

class DelegadoCelula : public DicaDoCortado {
  public:
    using Tecla = std::function<bool(QKeyEvent&)>; // true when the key was used up

    DelegadoCelula(QObject* pai, Tecla tecla_do_editor)
        : DicaDoCortado(pai), tecla_do_editor_(std::move(tecla_do_editor)) {}

    void paint(QPainter* pintor, const QStyleOptionViewItem& opcao, const QModelIndex& indice) const override;
    QWidget* createEditor(QWidget* pai, const QStyleOptionViewItem& opcao,
                          const QModelIndex& indice) const override;
    void setEditorData(QWidget*, const QModelIndex&) const override {}
    void setModelData(QWidget*, QAbstractItemModel*, const QModelIndex&) const override {}
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& opcao,
                              const QModelIndex& indice) const override;

  protected:
    bool eventFilter(QObject* editor, QEvent* evento) override;
    void initStyleOption(QStyleOptionViewItem* opcao, const QModelIndex& indice) const override;

  private:
    Tecla tecla_do_editor_;
};

} // namespace orvex::platform::qt
