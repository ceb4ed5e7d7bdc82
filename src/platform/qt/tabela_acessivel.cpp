#include "platform/qt/tabela_acessivel.h"

#include <QAccessibleTableCellInterface>
#include <QAccessibleTableInterface>
#include <QAccessibleWidget>
#include <QHash>
#include <QHeaderView>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTableView>

namespace orvex::platform::qt {
namespace {

// A heading, or a cell of a row.
class Celula : public QAccessibleInterface, public QAccessibleTableCellInterface {
  public:
    Celula(QTableView& vista, int linha, int coluna)
        : vista_(&vista), indice_(vista.model()->index(linha, coluna)), titulo_(linha < 0), coluna_(coluna) {}

    bool isValid() const override { return vista_ && (titulo_ || indice_.isValid()); }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(vista_); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override {
        return titulo_ ? QAccessible::ColumnHeader : QAccessible::Cell;
    }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text qual) const override {
        if (isValid() && !titulo_ && qual == QAccessible::Description)
            return indice_.data(Qt::AccessibleDescriptionRole).toString();
        if (!isValid() || (qual != QAccessible::Name && qual != QAccessible::Value)) return {};
        if (titulo_) return vista_->model()->headerData(coluna_, Qt::Horizontal).toString();
        if (const QVariant marca = indice_.data(Qt::CheckStateRole); marca.isValid())
            return marca.toInt() == Qt::Checked ? "Sim" : "Não";
        return indice_.data(Qt::DisplayRole).toString();
    }

    QRect rect() const override {
        if (!isValid()) return {};
        const QHeaderView& titulos = *vista_->horizontalHeader();
        const QRect dentro = titulo_ ? QRect(titulos.sectionViewportPosition(coluna_), 0,
                                             titulos.sectionSize(coluna_), titulos.height())
                                     : vista_->visualRect(indice_);
        const QWidget& tela = titulo_ ? *titulos.viewport() : *vista_->viewport();
        return {tela.mapToGlobal(dentro.topLeft()), dentro.size()};
    }

    QAccessible::State state() const override {
        QAccessible::State estado;
        if (!isValid()) return estado;
        const QRect tela(vista_->mapToGlobal(QPoint()), vista_->size());
        estado.invisible = estado.offscreen = !tela.intersects(rect());
        if (titulo_) return estado;
        const QVariant marca = indice_.data(Qt::CheckStateRole);
        estado.checkable = marca.isValid();
        estado.checked = marca.toInt() == Qt::Checked;
        estado.selectable = estado.focusable = true;
        estado.selected = isSelected();
        estado.focused = vista_->hasFocus() && vista_->currentIndex() == indice_;
        return estado;
    }

    void* interface_cast(QAccessible::InterfaceType tipo) override {
        return tipo == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this)
                                                       : nullptr;
    }

    bool isSelected() const override { return vista_->selectionModel()->isSelected(indice_); }
    QList<QAccessibleInterface*> columnHeaderCells() const override { return {parent()->child(coluna_ + 1)}; }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { // of those in sight
        int antes = 0;
        for (int c = 0; c < coluna_; ++c)
            antes += vista_->isColumnHidden(c) ? 0 : 1;
        return antes;
    }
    int rowIndex() const override { return indice_.row(); }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

  private:
    QPointer<QTableView> vista_;
    QPersistentModelIndex indice_;
    bool titulo_;
    int coluna_;
};

class Tabela : public QAccessibleWidget, public QAccessibleTableInterface {
  public:
    explicit Tabela(QTableView& vista) : QAccessibleWidget(&vista, QAccessible::Table), vista_(&vista) {}
    ~Tabela() override { esquece(); }

    void* interface_cast(QAccessible::InterfaceType tipo) override {
        if (tipo == QAccessible::TableInterface) return static_cast<QAccessibleTableInterface*>(this);
        return QAccessibleWidget::interface_cast(tipo);
    }

    // Children are numbered as the view's own events count them: the headings first, a row heading before
    // each row, and hidden columns too; but none of these is there.
    int childCount() const override { return (rowCount() + 1) * por_linha(); }
    QAccessibleInterface* child(int i) const override {
        const int coluna = i % por_linha() - 1;
        if (i < 0 || i >= childCount() || coluna < 0 || vista_->isColumnHidden(coluna)) return nullptr;
        auto& id = celulas_[i];
        if (id == 0)
            id = QAccessible::registerAccessibleInterface(new Celula(*vista_, i / por_linha() - 1, coluna));
        return QAccessible::accessibleInterface(id);
    }
    int indexOfChild(const QAccessibleInterface* filho) const override {
        for (auto i = celulas_.cbegin(); i != celulas_.cend(); ++i)
            if (QAccessible::accessibleInterface(*i) == filho) return i.key();
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        const QModelIndex indice = vista_->indexAt(vista_->viewport()->mapFromGlobal(QPoint(x, y)));
        return indice.isValid() ? da(indice) : nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        return vista_->hasFocus() && vista_->currentIndex().isValid() ? da(vista_->currentIndex()) : nullptr;
    }

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    int columnCount() const override {
        int a_vista = 0;
        while (coluna_a_vista(a_vista) >= 0)
            ++a_vista;
        return a_vista;
    }
    int rowCount() const override { return vista_->model() != nullptr ? vista_->model()->rowCount() : 0; }
    QAccessibleInterface* cellAt(int linha, int coluna) const override {
        const int do_modelo = coluna_a_vista(coluna);
        return do_modelo < 0 ? nullptr : child((linha + 1) * por_linha() + do_modelo + 1);
    }
    QString columnDescription(int coluna) const override {
        return vista_->model()->headerData(coluna_a_vista(coluna), Qt::Horizontal).toString();
    }
    QString rowDescription(int) const override { return {}; }

    // Rows are chosen whole; one at a time, where a table does not let several be marked.
    QList<int> selectedRows() const override {
        const QModelIndex actual = vista_->currentIndex();
        if (vista_->selectionMode() != QAbstractItemView::ExtendedSelection)
            return actual.isValid() ? QList<int>{actual.row()} : QList<int>{};
        QList<int> linhas;
        for (const QItemSelectionRange& parte : vista_->selectionModel()->selection())
            for (int linha = parte.top(); linha <= parte.bottom(); ++linha)
                linhas << linha;
        return linhas;
    }
    int selectedRowCount() const override { return int(selectedRows().size()); }
    bool isRowSelected(int linha) const override { return selectedRows().contains(linha); }
    bool selectRow(int linha) override {
        vista_->selectRow(linha);
        return isRowSelected(linha);
    }
    bool unselectRow(int) override { return false; }
    QList<QAccessibleInterface*> selectedCells() const override {
        QList<QAccessibleInterface*> celulas;
        for (const int linha : selectedRows())
            for (int c = 0; c < columnCount(); ++c)
                celulas << cellAt(linha, c);
        return celulas;
    }
    int selectedCellCount() const override { return int(selectedCells().size()); }
    QList<int> selectedColumns() const override { return {}; }
    int selectedColumnCount() const override { return 0; }
    bool isColumnSelected(int) const override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectColumn(int) override { return false; }

    void modelChange(QAccessibleTableModelChangeEvent* evento) override {
        if (evento->modelChangeType() != QAccessibleTableModelChangeEvent::DataChanged) esquece();
    }

  private:
    int por_linha() const { return (vista_->model() != nullptr ? vista_->model()->columnCount() : 0) + 1; }
    int coluna_a_vista(int qual) const { // -1 where there are not so many
        for (int c = 0; c < por_linha() - 1; ++c)
            if (!vista_->isColumnHidden(c) && qual-- == 0) return c;
        return -1;
    }
    QAccessibleInterface* da(const QModelIndex& indice) const {
        return child((indice.row() + 1) * por_linha() + indice.column() + 1);
    }
    void esquece() {
        for (const QAccessible::Id id : std::as_const(celulas_))
            QAccessible::deleteAccessibleInterface(id);
        celulas_.clear();
    }

    QTableView* vista_;
    mutable QHash<int, QAccessible::Id> celulas_;
};

QAccessibleInterface* faz(const QString&, QObject* objecto) {
    auto* vista = qobject_cast<QTableView*>(objecto);
    // A calendar is a table with headings of its own.
    if (vista == nullptr || vista->metaObject() != &QTableView::staticMetaObject) return nullptr;
    return new Tabela(*vista);
}

} // namespace

void instala_tabelas_acessiveis() { QAccessible::installFactory(&faz); }

} // namespace orvex::platform::qt
