// A table of an enquiry on the screen: rows that arrive while one reads, sorted by any column, filtered as
// one types, summed where they are marked. A code opens its own view.
#pragma once

#include "livro/consultas/quadro.h"

#include "platform/qt/consulta/leitor.h"

#include <QPersistentModelIndex>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

class QContextMenuEvent;
class QLineEdit;
class QMouseEvent;
class QTableView;

namespace orvex::platform::qt::consulta {

class DelegadoLigacao;
class ModeloQuadro;
class TotaisQuadro;

using Parte = livro::consultas::Recolhida::Parte;
using AoAbrir = std::function<void(livro::consultas::Ligacao, const std::string& texto)>;

class VistaQuadro : public QWidget {
  public:
    struct Janela {
        AoAbrir abre = [](auto, const auto&) {};
        // What came with the speed of a barcode reader, into the table or its filter.
        std::function<void(const QString& codigo)> lido = [](const auto&) {};
        std::function<void()> mudou = [] {}; // what is in sight, or marked
        std::function<void()> copia{};       // offered in the menu
    };

    // Widths are remembered by the quadro's key, and that of the view.
    VistaQuadro(const std::string& vista, const livro::consultas::Quadro& quadro);
    ~VistaQuadro() override;
    void define_janela(Janela janela);

    void junta(std::vector<livro::consultas::Linha> linhas);
    void total(const livro::consultas::Linha& este);

    int lidas() const;
    // What to say of it: how many rows, how many in sight, what the marked ones sum up to.
    QString resumo() const;
    Parte toda();       // every row read, as they came, whatever is in sight
    int quantas();      // rows `mostrada` gives
    int quantas_leva(); // and `marcada`
    Parte mostrada();   // the rows in sight, in their order, with their totals
    Parte marcada();    // of these the marked ones; all in sight where fewer than two are
    QTableView& tabela() const { return *tabela_; }
    void filtra() const; // the keyboard goes to the filter
    // Where the user was, in a table asked for again.
    QString filtro() const;
    void repoe_filtro(const QString& filtro);
    bool tocada() const { return tocada_; } // by the user, since it was made

  protected:
    bool eventFilter(QObject* alvo, QEvent* evento) override;

  private:
    void constroi();
    void mostra_as_novas();
    // Work that gives the rows other places. Marks stay; the current row is the first one again or, where
    // rows arrived, the one that it was.
    enum class Mudanca { ordem, filtro, chegada };
    void muda(const std::function<void()>& trabalho, Mudanca qual);
    void aplica_filtro();
    void poe_em_dia();                 // with what arrived, and what was typed
    std::vector<int> marcadas() const; // places in sight, in order
    int quantas_marcadas() const;
    QString somas_das_marcadas() const;
    base::Moeda soma(const std::vector<int>& linhas, int coluna) const;
    std::vector<livro::consultas::Linha> total_das_mostradas() const;

    // Columns.
    QString chave_largura(int coluna) const;
    int largura_pedida(int coluna) const;
    bool elastica(int coluna) const;
    void mede();     // what columns ask for, of the first rows
    void acomoda();  // to the width that there is
    void ressalva(); // a column of reservations is shown from the first one on
    void guarda_larguras();
    void ordena_pelo_teclado(int posicao); // columns in sight count from 1

    // Keys and mouse.
    bool tecla(bool do_filtro, const QKeyEvent& tecla);
    bool do_leitor(bool do_filtro, const QKeyEvent& tecla);
    bool no_filtro(const QKeyEvent& tecla);
    bool na_tabela(const QKeyEvent& tecla);
    bool rato(QMouseEvent& evento);
    void anda(int passo);                                            // over the columns in sight
    std::function<void()> abertura(const QModelIndex& celula) const; // of its link
    void abre_a_da_linha();
    void menu(const QContextMenuEvent& evento);

    std::string vista_;
    Janela janela_;
    std::unique_ptr<ModeloQuadro> modelo_;
    QLineEdit* filtro_;
    QTableView* tabela_;
    DelegadoLigacao* delegado_;
    TotaisQuadro* totais_;
    QString escrito_;    // in the filter
    QTimer por_filtrar_; // what is typed waits until it can be no reader's
    QTimer por_mostrar_; // rows that arrived
    std::vector<int> larguras_;
    std::set<int> alargadas_; // by the user, since they were kept
    std::set<int> fixas_;     // by the user, ever
    bool medida_ = false;     // by the first rows
    bool a_acomodar_ = false;
    Leitor leitor_;
    QString filtro_antes_; // of what the reader sends
    QWidget* teclado_antes_ = nullptr;
    QPersistentModelIndex premida_;       // the link that the button of the mouse went down on
    QPersistentModelIndex linha_premida_; // the row
    bool tocada_ = false;
};

} // namespace orvex::platform::qt::consulta
