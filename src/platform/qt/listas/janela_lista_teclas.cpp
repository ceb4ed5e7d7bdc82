// The keys of the pick list.
#include "platform/qt/listas/janela_lista.h"
#include "platform/qt/teclas.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QTableView>

namespace orvex::platform::qt {

void JanelaLista::prepara_consulta(common::CodigoDe codigo_de, const Consulta& consulta) {
    auto* atalho = new QShortcut(QKeySequence("Ctrl+I"), this);
    atalho->setAutoRepeat(false); // each opens a window
    connect(atalho, &QShortcut::activated, this, [this, codigo_de, consulta] {
        const QModelIndex actual = vista_->currentIndex();
        const std::string codigo = actual.isValid() ? modelo_.escolha(actual.row()) : "";
        ajuda_->setText(consulta(codigo.empty() ? std::nullopt
                                                : std::optional(common::CodigoEscrito{codigo_de, codigo})));
    });
}

void JanelaLista::ordena_pelo_teclado(int posicao) {
    QHeaderView* titulos = vista_->horizontalHeader();
    for (int c = 0; c < modelo_.columnCount(); ++c) {
        if (vista_->isColumnHidden(c) || --posicao > 0) continue;
        const bool ascendente =
            titulos->sortIndicatorSection() == c && titulos->sortIndicatorOrder() == Qt::AscendingOrder;
        titulos->setSortIndicator(c, ascendente ? Qt::DescendingOrder : Qt::AscendingOrder);
        return;
    }
}

bool JanelaLista::eventFilter(QObject* alvo, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress) return QDialog::eventFilter(alvo, evento);
    const auto& tecla = static_cast<QKeyEvent&>(*evento);
    const int codigo = tecla.key();
    if (!so_modificador(tecla)) ajuda_->setText(teclas_);
    if (codigo == Qt::Key_Return || codigo == Qt::Key_Enter) {
        accept();
        return true;
    }
    if (tecla.modifiers().testFlag(Qt::ControlModifier) && codigo >= Qt::Key_1 && codigo <= Qt::Key_9) {
        ordena_pelo_teclado(codigo - Qt::Key_0);
        return true;
    }
    const bool move = codigo == Qt::Key_Up || codigo == Qt::Key_Down || codigo == Qt::Key_PageUp ||
                      codigo == Qt::Key_PageDown;
    if (move) larga_o_procurado();
    if (alvo == filtro_ && move) {
        QKeyEvent copia(QEvent::KeyPress, codigo, tecla.modifiers());
        vista_->removeEventFilter(this);
        QCoreApplication::sendEvent(vista_, &copia);
        vista_->installEventFilter(this);
        return true;
    }
    // Letters typed over the rows go on with the search.
    if (alvo == vista_ && !tecla.matches(QKeySequence::Copy) && !tecla.text().isEmpty() &&
        tecla.text().front().isPrint()) {
        filtro_->setFocus();
        QKeyEvent copia(QEvent::KeyPress, codigo, tecla.modifiers(), tecla.text());
        QCoreApplication::sendEvent(filtro_, &copia);
        return true;
    }
    return QDialog::eventFilter(alvo, evento);
}

} // namespace orvex::platform::qt
