#include "platform/qt/consulta/ligacoes.h"
#include "platform/qt/consulta/modelo_quadro.h"
#include "platform/qt/consulta/vista_quadro.h"
#include "platform/qt/teclas.h"
#include "platform/qt/textos.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>

#include <algorithm>

namespace orvex::platform::qt::consulta {
namespace {

using livro::consultas::Ligacao;

bool anda_nas_linhas(int codigo) {
    return codigo == Qt::Key_Up || codigo == Qt::Key_Down || codigo == Qt::Key_PageUp ||
           codigo == Qt::Key_PageDown;
}

} // namespace

bool VistaQuadro::eventFilter(QObject* alvo, QEvent* evento) {
    if (evento->type() == QEvent::ContextMenu && alvo != filtro_) {
        menu(static_cast<QContextMenuEvent&>(*evento));
        return true;
    }
    if (evento->type() == QEvent::KeyPress || evento->type() == QEvent::MouseButtonPress ||
        evento->type() == QEvent::Wheel)
        tocada_ = true;
    if (alvo == tabela_->viewport()) {
        if (evento->type() == QEvent::Resize) acomoda();
        if (evento->type() == QEvent::MouseMove || evento->type() == QEvent::MouseButtonPress ||
            evento->type() == QEvent::MouseButtonRelease || evento->type() == QEvent::MouseButtonDblClick)
            return rato(static_cast<QMouseEvent&>(*evento));
        return false;
    }
    // Esc in the filter is the filter's, whatever the window does with it elsewhere.
    if (alvo == filtro_ && evento->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent&>(*evento).key() == Qt::Key_Escape) {
        evento->accept();
        return true;
    }
    if (evento->type() == QEvent::Hide) {
        guarda_larguras();
        linha_premida_ = QModelIndex();
    }
    return evento->type() == QEvent::KeyPress && tecla(alvo == filtro_, static_cast<QKeyEvent&>(*evento));
}

bool VistaQuadro::tecla(bool do_filtro, const QKeyEvent& tecla) {
    if (e_enter(tecla) && tecla.isAutoRepeat()) return true; // held down, it would run through the views
    if (do_leitor(do_filtro, tecla)) return true;
    const int codigo = tecla.key();
    if (tecla.modifiers() == Qt::ControlModifier && codigo >= Qt::Key_1 && codigo <= Qt::Key_9) {
        ordena_pelo_teclado(codigo - Qt::Key_0);
        return true;
    }
    if (e_enter(tecla)) {
        if (por_filtrar_.isActive()) aplica_filtro();
        abre_a_da_linha();
        return true;
    }
    return do_filtro ? no_filtro(tecla) : na_tabela(tecla);
}

bool VistaQuadro::do_leitor(bool do_filtro, const QKeyEvent& tecla) {
    switch (leitor_.ve(tecla)) {
    case Leitor::Que::comeca:
        if (por_filtrar_.isActive()) aplica_filtro();
        filtro_antes_ = filtro_->text();
        teclado_antes_ = do_filtro ? static_cast<QWidget*>(filtro_) : tabela_;
        return false;
    case Leitor::Que::acaba:
        if (leitor_.codigo().isEmpty()) return true;
        filtro_->setText(filtro_antes_);
        por_filtrar_.stop(); // it never was anything else
        teclado_antes_->setFocus();
        janela_.lido(leitor_.codigo());
        return true;
    default:
        return false;
    }
}

bool VistaQuadro::no_filtro(const QKeyEvent& tecla) {
    if (tecla.key() == Qt::Key_Escape) {
        filtro_->clear();
        aplica_filtro();
        tabela_->setFocus();
        return true;
    }
    if (!anda_nas_linhas(tecla.key())) return false;
    if (por_filtrar_.isActive()) aplica_filtro();
    QKeyEvent copia(QEvent::KeyPress, tecla.key(), tecla.modifiers());
    QCoreApplication::sendEvent(tabela_, &copia);
    return true;
}

bool VistaQuadro::na_tabela(const QKeyEvent& tecla) {
    if (tecla.modifiers() == Qt::NoModifier &&
        (tecla.key() == Qt::Key_Left || tecla.key() == Qt::Key_Right)) {
        anda(tecla.key() == Qt::Key_Left ? -1 : 1);
        return true;
    }
    // Letters go on in the filter; a blank marks.
    if (escrito(tecla).isEmpty() || tecla.key() == Qt::Key_Space) return false;
    filtro_->setFocus();
    filtro_->end(false);
    filtro_->insert(tecla.text());
    return true;
}

void VistaQuadro::anda(int passo) {
    const QModelIndex actual = tabela_->currentIndex();
    if (!actual.isValid()) return;
    int coluna = actual.column() + passo;
    while (coluna >= 0 && coluna < modelo_->columnCount() && tabela_->isColumnHidden(coluna))
        coluna += passo;
    if (coluna < 0 || coluna >= modelo_->columnCount()) return;
    const QModelIndex nova = actual.siblingAtColumn(coluna);
    tabela_->selectionModel()->setCurrentIndex(nova, QItemSelectionModel::NoUpdate); // marks stay
    tabela_->scrollTo(nova);
}

// With the text as it is: while it waits the rows may take other places.
std::function<void()> VistaQuadro::abertura(const QModelIndex& celula) const {
    return [this, qual = static_cast<Ligacao>(celula.data(papel_ligacao).toInt()),
            texto = modelo_->valor(celula.row(), celula.column()).texto()] { janela_.abre(qual, texto); };
}

void VistaQuadro::abre_a_da_linha() {
    const QModelIndex actual = tabela_->currentIndex();
    if (!actual.isValid()) return;
    if (actual.data(papel_ligacao).isValid()) return abertura(actual)();
    const std::vector<int> colunas = colunas_com_ligacao(*tabela_, actual.row());
    if (!colunas.empty()) abertura(actual.siblingAtColumn(colunas.front()))();
}

bool VistaQuadro::rato(QMouseEvent& evento) {
    if (evento.button() == Qt::BackButton || evento.button() == Qt::ForwardButton) {
        evento.ignore(); // the window's
        return true;
    }
    const QModelIndex aqui = delegado_->ligacao_em(evento.position().toPoint());
    const bool simples = evento.button() == Qt::LeftButton && evento.modifiers() == Qt::NoModifier;
    switch (evento.type()) {
    case QEvent::MouseMove:
        tabela_->viewport()->setCursor(aqui.isValid() ? Qt::PointingHandCursor : Qt::ArrowCursor);
        break;
    case QEvent::MouseButtonPress:
        premida_ = simples ? aqui : QModelIndex();
        linha_premida_ = tabela_->indexAt(evento.position().toPoint()).siblingAtColumn(0);
        break;
    case QEvent::MouseButtonRelease:
        // After the table is done with the button: its page may go out of sight.
        if (simples && aqui.isValid() && premida_ == aqui)
            QMetaObject::invokeMethod(this, abertura(aqui), Qt::QueuedConnection);
        premida_ = QModelIndex();
        break;
    default: // A double click elsewhere is the row's, where both its presses were: the first may have
             // opened this view.
        if (simples && !aqui.isValid() && linha_premida_.isValid() &&
            linha_premida_ == tabela_->indexAt(evento.position().toPoint()).siblingAtColumn(0))
            QMetaObject::invokeMethod(
                this, [this] { abre_a_da_linha(); }, Qt::QueuedConnection);
        break;
    }
    return false;
}

void VistaQuadro::menu(const QContextMenuEvent& evento) {
    const bool do_rato = evento.reason() == QContextMenuEvent::Mouse;
    const QPoint lugar = do_rato ? evento.globalPos() - tabela_->viewport()->mapToGlobal(QPoint())
                                 : tabela_->visualRect(tabela_->currentIndex()).center();
    const QModelIndex aqui = do_rato ? tabela_->indexAt(lugar) : tabela_->currentIndex();
    if (!aqui.isValid()) return;
    auto* menu = new QMenu(this);
    menu->setObjectName("menu");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QStringList todas; // the same code may stand in two columns
    for (const int coluna : colunas_com_ligacao(*tabela_, aqui.row())) {
        const QModelIndex celula = aqui.siblingAtColumn(coluna);
        const QString texto = celula.data(Qt::AccessibleDescriptionRole).toString();
        if (todas.contains(texto)) continue;
        todas << texto;
        menu->addAction(QString(texto).replace('&', "&&"), this, abertura(celula));
    }
    if (janela_.copia) {
        menu->addSeparator();
        menu->addAction("Copiar", this, [this] { janela_.copia(); });
    }
    if (menu->isEmpty()) return delete menu;
    menu->popup(tabela_->viewport()->mapToGlobal(lugar));
}

} // namespace orvex::platform::qt::consulta
