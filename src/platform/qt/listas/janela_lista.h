// The pick list: a modal window over the rows of a query. Typing filters, headings sort, Enter or a double
// click choose.
//
// It starts from what its field holds: on the row that this is the code of or, where there is none, filtered
// by it; a text that no row has starts nothing.
#pragma once

#include "base/formato_regional.h"
#include "common/janela.h"
#include "platform/qt/listas/modelo_lista.h"

#include <QDialog>
#include <QTimer>

#include <exception>
#include <functional>

class QLabel;
class QLineEdit;
class QTableView;

namespace orvex::platform::qt {

inline constexpr int twips_por_pixel = 15;

class JanelaLista : public QDialog {
  public:
    // Looks a code up, or none, and gives what came of it.
    using Consulta = std::function<QString(const std::optional<common::CodigoEscrito>& codigo)>;
    // Runs the query at once and reads the first rows; throws what the session throws.
    JanelaLista(QWidget* pai, const common::ListaPesquisa& lista, base::FormatoRegional formato,
                const Consulta& consulta);

    // Empty when no row was chosen. A failure that ended the list while its rows were read is thrown here.
    const std::string& escolha() const;

  protected:
    bool eventFilter(QObject* alvo, QEvent* evento) override;
    void accept() override;
    void done(int resultado) override;

  private:
    void constroi(const common::ListaPesquisa& lista);
    void prepara_consulta(common::CodigoDe codigo_de, const Consulta& consulta);
    void poe_larguras(const common::ListaPesquisa& lista);
    int largura_pedida(int coluna) const;
    void filtra(const QString& texto);
    void le_mais();
    void poe_no_exacto(); // the current row, until the user puts it elsewhere
    void comeca_do_campo();
    void larga_o_procurado();
    void conta();
    // Work that reads rows: what fails ends the list.
    void le(const std::function<void()>& trabalho);
    void ordena_pelo_teclado(int posicao); // visible columns count from 1
    void ordena_por(int coluna, Qt::SortOrder ordem);

    ModeloLista modelo_;
    QLineEdit* filtro_;
    QTableView* vista_;
    QLabel* ajuda_; // which keys work here or, until the next one, what came of a key
    QString teclas_;
    QLabel* contagem_;
    QTimer resto_;           // reads what is left, a little at a time, while nothing else is to do
    QString procurado_;      // as it stands in the filter
    QString inicial_;        // what the field holds, until it is found or the user does something
    int vistas_ = 0;         // rows in which neither was found
    bool por_achar_ = false; // the row that is the filter's text to the letter
    std::string escolha_;
    std::exception_ptr falha_;
};

} // namespace orvex::platform::qt
