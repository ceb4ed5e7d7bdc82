#include "platform/qt/grelhas/delegado_celula.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>

namespace orvex::platform::qt {

void DelegadoCelula::initStyleOption(QStyleOptionViewItem* opcao, const QModelIndex& indice) const {
    QStyledItemDelegate::initStyleOption(opcao, indice);
    opcao->features &= ~QStyleOptionViewItem::HasCheckIndicator; // drawn in the middle by paint()
    // A painted row stays recognisable when it is the current one.
    const QVariant fundo = indice.data(Qt::BackgroundRole);
    if (fundo.isValid() && opcao->state.testFlag(QStyle::State_Selected)) {
        const QColor cor = fundo.value<QBrush>().color().darker(165);
        opcao->palette.setColor(QPalette::Highlight, cor);
        opcao->palette.setColor(QPalette::HighlightedText, Qt::white);
    }
}

void DelegadoCelula::paint(QPainter* pintor, const QStyleOptionViewItem& opcao,
                           const QModelIndex& indice) const {
    QStyledItemDelegate::paint(pintor, opcao, indice);
    if (opcao.state.testFlag(
            QStyle::State_HasFocus)) { // the cell the keyboard is in, in a row that is all coloured
        pintor->save();
        pintor->setPen(QPen(opcao.palette.color(QPalette::Text), 2));
        pintor->drawRect(opcao.rect.adjusted(1, 1, -1, -1));
        pintor->restore();
    }
    const QVariant marca = indice.data(Qt::CheckStateRole);
    if (!marca.isValid()) return;
    QStyle& estilo = opcao.widget != nullptr ? *opcao.widget->style() : *QApplication::style();
    QStyleOptionViewItem caixa = opcao;
    caixa.state &= ~(QStyle::State_Selected | QStyle::State_HasFocus);
    caixa.state |= marca.toInt() == Qt::Checked ? QStyle::State_On : QStyle::State_Off;
    const QSize tamanho(estilo.pixelMetric(QStyle::PM_IndicatorWidth, &caixa, opcao.widget),
                        estilo.pixelMetric(QStyle::PM_IndicatorHeight, &caixa, opcao.widget));
    caixa.rect = QStyle::alignedRect(opcao.direction, Qt::AlignCenter, tamanho, opcao.rect);
    estilo.drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &caixa, pintor, opcao.widget);
}

QWidget* DelegadoCelula::createEditor(QWidget* pai, const QStyleOptionViewItem&,
                                      const QModelIndex& indice) const {
    auto* editor = new QLineEdit(pai);
    editor->setObjectName("editor");
    editor->setAccessibleName(indice.model()->headerData(indice.column(), Qt::Horizontal).toString());
    editor->setFrame(false);
    editor->setAutoFillBackground(true);
    editor->setAlignment(Qt::Alignment(indice.data(Qt::TextAlignmentRole).toInt()));
    return editor;
}

void DelegadoCelula::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& opcao,
                                          const QModelIndex&) const {
    editor->setGeometry(opcao.rect);
}

bool DelegadoCelula::eventFilter(QObject*, QEvent* evento) {
    return evento->type() == QEvent::KeyPress && tecla_do_editor_(static_cast<QKeyEvent&>(*evento));
}

} // namespace orvex::platform::qt
