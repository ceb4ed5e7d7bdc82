// The question which of some rows of a table is meant, for when a code does not tell.
#pragma once

#include <QString>

#include <optional>
#include <vector>

class QTableView;

namespace orvex::platform::qt {

// Shows these rows of the table as it shows them, columns and headings; none when the user gave it up.
std::optional<int> pergunta_linha(const QTableView& vista, const QString& texto,
                                  const std::vector<int>& linhas);

} // namespace orvex::platform::qt
