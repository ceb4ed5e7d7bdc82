#include "platform/qt/dica_do_cortado.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>

namespace orvex::platform::qt {

bool DicaDoCortado::helpEvent(QHelpEvent* evento, QAbstractItemView* vista, const QStyleOptionViewItem& opcao,
                              const QModelIndex& indice) {
    if (evento->type() != QEvent::ToolTip || !indice.isValid())
        return QStyledItemDelegate::helpEvent(evento, vista, opcao, indice);
    const bool cortado = sizeHint(opcao, indice).width() > opcao.rect.width();
    const QString texto = cortado ? indice.data(Qt::DisplayRole).toString() : QString();
    QToolTip::showText(evento->globalPos(), texto.isEmpty() ? texto : Qt::convertFromPlainText(texto),
                       vista->viewport(), opcao.rect);
    return true;
}

} // namespace orvex::platform::qt
