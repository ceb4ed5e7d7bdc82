// The pick list: a modal window over the rows of a query. Typing filters, headings sort, Enter or a double
// click choose.
#pragma once

#include "base/formato_regional.h"
#include "common/janela.h"
#include "platform/qt/modelo_lista.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QTableView;

namespace orvex::platform::qt {

inline constexpr int twips_por_pixel = 15;

class JanelaLista : public QDialog {
  public:
    // Runs the query at once; throws what the session throws.
    JanelaLista(QWidget* pai, const common::ListaPesquisa& lista, base::FormatoRegional formato);

    const std::string& escolha() const { return escolha_; } // empty until a row was chosen

  protected:
    bool eventFilter(QObject* alvo, QEvent* evento) override;
    void accept() override;

  private:
    void constroi(const common::ListaPesquisa& lista);
    void poe_larguras(const common::ListaPesquisa& lista);
    int largura_pedida(int coluna) const;
    void filtra(const QString& texto);
    void ordena_pelo_teclado(int posicao); // visible columns count from 1
    void ordena_por(int coluna, Qt::SortOrder sentido);

    ModeloLista modelo_;
    QLineEdit* filtro_;
    QTableView* vista_;
    QLabel* contagem_;
    std::string escolha_;
};

} // namespace orvex::platform::qt
