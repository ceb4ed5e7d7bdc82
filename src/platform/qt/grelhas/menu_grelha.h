// What the context menu of a table copies: rows with their headings, as tables are pasted elsewhere.
#pragma once

class QMenu;
class QTableView;

namespace orvex::platform::qt {

// The columns in sight, tab by tab, of one row or of all down to the last one with something in it.
void copia_linha(const QTableView& vista);
void copia_tudo(const QTableView& vista);

bool em_branco(const QTableView& vista, int linha);

// A menu with both, to which the table adds what else it can do. It goes with its first use.
QMenu* novo_menu(QTableView& vista);

} // namespace orvex::platform::qt
