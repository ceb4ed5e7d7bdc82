// The keys of the search field, and of its answers.
#include "platform/qt/consulta/procura.h"
#include "platform/qt/teclas.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTreeWidget>

namespace orvex::platform::qt::consulta {

void Procura::escreve(QKeyEvent& tecla) {
    foca();
    QKeyEvent copia(QEvent::KeyPress, tecla.key(), tecla.modifiers(), tecla.text());
    QCoreApplication::sendEvent(campo_, &copia);
}

bool Procura::eventFilter(QObject* alvo, QEvent* evento) {
    if (evento->type() != QEvent::KeyPress) return false;
    auto& tecla = static_cast<QKeyEvent&>(*evento);
    return alvo == campo_ ? tecla_no_campo(tecla) : tecla_na_lista(tecla);
}

bool Procura::tecla_no_campo(const QKeyEvent& tecla) {
    if (e_enter(tecla)) {
        entra();
        return true;
    }
    if (tecla.key() != Qt::Key_Down && tecla.key() != Qt::Key_PageDown) return false;
    if (!a_vista_)
        janela_.desce();
    else if (!achados_.empty())
        lista_->setFocus();
    return true;
}

bool Procura::tecla_na_lista(QKeyEvent& tecla) {
    if (e_enter(tecla)) {
        if (desde_o_enter_.isValid() && desde_o_enter_.elapsed() < pausa_de_leitor_ms) return true;
        for (const Achado& este : achados_)
            if (este.linha == lista_->currentItem()) {
                abre(Achado(este));
                break;
            }
        return true;
    }
    if (tecla.key() == Qt::Key_Up && !achados_.empty() && lista_->currentItem() == achados_.front().linha) {
        campo_->setFocus();
        return true;
    }
    if (tecla.key() == Qt::Key_Backspace || !escrito(tecla).isEmpty()) {
        campo_->setFocus();
        QKeyEvent copia(QEvent::KeyPress, tecla.key(), tecla.modifiers(), tecla.text());
        QCoreApplication::sendEvent(campo_, &copia);
        return true;
    }
    return false;
}

} // namespace orvex::platform::qt::consulta
