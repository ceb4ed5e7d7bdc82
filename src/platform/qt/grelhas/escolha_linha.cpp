#include "platform/qt/grelhas/escolha_linha.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace orvex::platform::qt {
namespace {

constexpr int largura = 620;
constexpr int altura = 220;

// One that is not picked yet, rather than one that is.
int primeira_por_escolher(const QAbstractItemModel& modelo, const std::vector<int>& linhas) {
    const auto por_escolher = std::find_if(linhas.begin(), linhas.end(), [&](int linha) {
        if (modelo.index(linha, 0).data(Qt::BackgroundRole).isValid()) return false;
        for (int c = 0; c < modelo.columnCount(); ++c)
            if (modelo.index(linha, c).data(Qt::CheckStateRole) == Qt::Checked) return false;
        return true;
    });
    return por_escolher == linhas.end() ? 0 : static_cast<int>(por_escolher - linhas.begin());
}

void copia(const QTableView& vista, int coluna, const std::vector<int>& linhas, QTableWidget& tabela) {
    const QAbstractItemModel& modelo = *vista.model();
    const int c = tabela.columnCount();
    tabela.setColumnCount(c + 1);
    auto* titulo = new QTableWidgetItem;
    for (const int papel : {Qt::DisplayRole, Qt::TextAlignmentRole})
        titulo->setData(papel, modelo.headerData(coluna, Qt::Horizontal, papel));
    tabela.setHorizontalHeaderItem(c, titulo);
    for (int i = 0; const int linha : linhas) {
        auto* celula = new QTableWidgetItem;
        celula->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        for (const int papel : {Qt::DisplayRole, Qt::TextAlignmentRole, Qt::BackgroundRole,
                                Qt::ForegroundRole, Qt::CheckStateRole})
            celula->setData(papel, modelo.index(linha, coluna).data(papel));
        tabela.setItem(i++, c, celula);
    }
}

} // namespace

std::optional<int> pergunta_linha(const QTableView& vista, const QString& texto,
                                  const std::vector<int>& linhas) {
    QDialog caixa(vista.window());
    caixa.setObjectName("EscolhaLinha");
    caixa.setWindowTitle("Escolher a linha");
    caixa.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                         Qt::WindowCloseButtonHint);
    auto* tabela = new QTableWidget(static_cast<int>(linhas.size()), 0);
    tabela->setObjectName("linhas");
    tabela->setAccessibleName(texto);
    tabela->setSelectionBehavior(QAbstractItemView::SelectRows);
    tabela->setSelectionMode(QAbstractItemView::SingleSelection);
    tabela->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tabela->setTabKeyNavigation(false);
    tabela->setAlternatingRowColors(true);
    tabela->verticalHeader()->hide();
    tabela->verticalHeader()->setDefaultSectionSize(tabela->fontMetrics().height() + 8);
    tabela->horizontalHeader()->setHighlightSections(false);
    for (int c = 0; c < vista.model()->columnCount(); ++c)
        if (!vista.isColumnHidden(c)) copia(vista, c, linhas, *tabela);
    tabela->resizeColumnsToContents();
    tabela->horizontalHeader()->setStretchLastSection(true);
    tabela->selectRow(primeira_por_escolher(*vista.model(), linhas));

    auto* botoes = new QDialogButtonBox;
    botoes->addButton("&Escolher", QDialogButtonBox::AcceptRole)->setDefault(true);
    botoes->addButton("&Cancelar", QDialogButtonBox::RejectRole);
    QObject::connect(botoes, &QDialogButtonBox::accepted, &caixa, &QDialog::accept);
    QObject::connect(botoes, &QDialogButtonBox::rejected, &caixa, &QDialog::reject);
    QObject::connect(tabela, &QTableWidget::doubleClicked, &caixa, &QDialog::accept);
    auto* disposicao = new QVBoxLayout(&caixa);
    disposicao->addWidget(new QLabel(texto));
    disposicao->addWidget(tabela, 1);
    disposicao->addWidget(botoes);
    caixa.resize(largura, altura);
    tabela->setFocus();
    if (caixa.exec() != QDialog::Accepted || tabela->currentRow() < 0) return {};
    return linhas[static_cast<std::size_t>(tabela->currentRow())];
}

} // namespace orvex::platform::qt
