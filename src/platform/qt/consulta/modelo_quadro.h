// The rows of an enquiry's table on the screen. They are kept by columns, and beside them the text to search
// in; the view sees an order of row numbers, so that neither filtering nor sorting moves a value.
//
// Rows that were added are in sight after the next `mostra_as_novas`: where rows are sorted, putting them in
// their places costs the same for one as for very many.
#pragma once

#include "platform/qt/consulta/coluna_guardada.h"
#include "platform/qt/listas/linhas_dobradas.h"

#include <QAbstractTableModel>

namespace orvex::platform::qt::consulta {

// What a cell opens, where there is something: a livro::consultas::Ligacao as a number.
inline constexpr int papel_ligacao = Qt::UserRole;

class ModeloQuadro : public QAbstractTableModel {
  public:
    explicit ModeloQuadro(livro::consultas::Quadro quadro);

    void junta(const std::vector<livro::consultas::Linha>& linhas);
    bool ha_novas() const { return mostradas_ < lidas_; }
    void mostra_as_novas();

    void filtra(const QString& texto); // those with every word of it in some column
    bool filtrado() const { return !dobradas_.passam_todas(); }
    void ordena(int coluna, Qt::SortOrder ordem); // column -1: as they came
    bool ordenado() const { return coluna_ >= 0; }

    const livro::consultas::Quadro& quadro() const { return quadro_; }
    int lidas() const { return lidas_; }
    bool com_algo(int coluna) const { return colunas_[static_cast<std::size_t>(coluna)].com_algo(); }
    // By the place in sight; and the number of the row there, as they came.
    base::Variante valor(int linha, int coluna) const { return valor_de(numero(linha), coluna); }
    livro::consultas::Linha linha(int linha) const { return linha_de(numero(linha)); }
    livro::consultas::Linha linha_de(int numero) const;
    int numero(int linha) const { return a_vista_[static_cast<std::size_t>(linha)]; }

    int rowCount(const QModelIndex& pai = {}) const override;
    int columnCount(const QModelIndex& pai = {}) const override;
    QVariant data(const QModelIndex& indice, int papel) const override;
    QVariant headerData(int seccao, Qt::Orientation orientacao, int papel) const override;

  private:
    const livro::consultas::Coluna& coluna(int qual) const {
        return quadro_.colunas[static_cast<std::size_t>(qual)];
    }
    base::Variante valor_de(int numero, int coluna) const {
        return colunas_[static_cast<std::size_t>(coluna)].valor(numero);
    }
    std::vector<int> das_novas() const; // as they came
    void so_as_que_passam(std::vector<int>& linhas) const;

    livro::consultas::Quadro quadro_;
    std::vector<ColunaGuardada> colunas_;
    LinhasDobradas dobradas_;
    int lidas_ = 0, mostradas_ = 0;
    std::vector<int> ordem_;   // every row, as sorted
    std::vector<int> a_vista_; // those that pass the filter
    int coluna_ = -1;          // sorted by; -1: as they came
    Qt::SortOrder sentido_ = Qt::AscendingOrder;
};

} // namespace orvex::platform::qt::consulta
