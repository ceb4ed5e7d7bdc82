// The cells of a table tell by a tool tip what there is no room for.
#pragma once

#include <QStyledItemDelegate>

namespace orvex::platform::qt {

class DicaDoCortado : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    bool helpEvent(QHelpEvent* evento, QAbstractItemView* vista, const QStyleOptionViewItem& opcao,
                   const QModelIndex& indice) override;
};

} // namespace orvex::platform::qt
