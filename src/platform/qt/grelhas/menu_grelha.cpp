#include "platform/qt/grelhas/menu_grelha.h"

#include "platform/qt/grelhas/vista_grelha.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>

namespace orvex::platform::qt {
namespace {

QString celula(const QModelIndex& indice) {
    if (const QVariant marca = indice.data(Qt::CheckStateRole); marca.isValid())
        return marca.toInt() == Qt::Checked ? "Sim" : "Não";
    return indice.data(Qt::DisplayRole).toString().simplified();
}

// The texts of one line: the heading's, or those of a row.
template <typename Texto>
QString linha_de(const QTableView& vista, Texto texto) {
    QStringList celulas;
    for (int c = 0; c < vista.model()->columnCount(); ++c)
        if (!vista.isColumnHidden(c)) celulas << texto(c);
    return celulas.join('\t') + '\n';
}

void copia(const QTableView& vista, int primeira, int ultima) {
    const auto& modelo = *vista.model();
    QString tudo = linha_de(vista, [&](int c) { return modelo.headerData(c, Qt::Horizontal).toString(); });
    for (int linha = primeira; linha <= ultima; ++linha)
        tudo += linha_de(vista, [&](int c) { return celula(modelo.index(linha, c)); });
    QGuiApplication::clipboard()->setText(tudo);
}

} // namespace

bool em_branco(const QTableView& vista, int linha) {
    for (int c = 0; c < vista.model()->columnCount(); ++c)
        if (!vista.model()->index(linha, c).data(Qt::DisplayRole).toString().isEmpty()) return false;
    return true;
}

void copia_linha(const QTableView& vista) {
    const int actual = vista.currentIndex().row();
    if (actual >= 0) copia(vista, actual, actual);
}

void copia_tudo(const QTableView& vista) {
    int ultima = vista.model()->rowCount() - 1;
    while (ultima >= 0 && em_branco(vista, ultima))
        --ultima;
    copia(vista, 0, ultima);
}

QMenu* novo_menu(QTableView& vista) {
    auto* menu = new QMenu(&vista);
    menu->setObjectName("menu");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction("&Copiar a linha com os títulos", &vista, [&vista] { copia_linha(vista); });
    menu->addAction("Copiar &todas as linhas com os títulos", &vista, [&vista] { copia_tudo(vista); });
    return menu;
}

void VistaGrelha::contextMenuEvent(QContextMenuEvent* evento) {
    const bool rato = evento->reason() == QContextMenuEvent::Mouse;
    abre_menu(rato ? evento->globalPos() : viewport()->mapToGlobal(visualRect(currentIndex()).center()));
}

// What is possible at this moment, by the very handlers of the double click and of the keys. What changes the
// note has no letter: a code that a reader sends while the menu is open would press it.
void VistaGrelha::abre_menu(QPoint lugar) {
    if (ecra_.foco().actual() != &grelha_ || editor_) return; // the control that would be left has refused
    QMenu* menu = novo_menu(*this);
    menu->addSeparator();
    const bool com_algo = currentIndex().isValid() && !em_branco(*this, currentIndex().row());
    if (ecra_.codigo_actual()) menu->addAction("Consultar o artigo", this, [this] { janela_.consulta(); });
    if (grelha_.DblClick && com_algo)
        menu->addAction("Escolher", this, [this] { ecra_.utilizador_duplo_clique(grelha_); });
    if (grelha_.permite_apagar && grelha_.Enabled && (!grelha_.PodeApagar || grelha_.PodeApagar()))
        menu->addAction("Apagar a linha", this, [this] { ecra_.utilizador_apaga_linha(grelha_); });
    menu->popup(lugar);
}

} // namespace orvex::platform::qt
