// The rows of a pick list: read once from a query, then filtered and sorted in memory.
//
// The first rows are there at once; the others are read as the window finds time, or when they are needed,
// so that a long list opens as fast as a short one and still lets go of its query soon.
//
// Values are kept as they were read, and beside them the text to search in. The view sees an order of row
// numbers, so that neither filtering nor sorting moves a value.
#pragma once

#include "base/formato_regional.h"
#include "platform/qt/listas/linhas_dobradas.h"
#include "startup/sessao_bd.h"

#include <QAbstractTableModel>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvex::platform::qt {

class ModeloLista : public QAbstractTableModel {
  public:
    // Reads the first rows. Columns count from 0; those hidden are not searched.
    ModeloLista(std::unique_ptr<startup::ConjuntoRegistos> registos, base::FormatoRegional formato,
                std::vector<bool> ocultas);

    // Reads some more rows, which takes a few milliseconds; false once there are none. Throws what the
    // session throws, and reads no more after that.
    bool le_mais();
    bool completo() const { return registos_ == nullptr; }

    int total() const { return static_cast<int>(total_); } // rows read
    // Keeps the rows that contain every word of the text in some visible column, of those read so far and of
    // those still to come.
    void filtra(const QString& texto);
    // The first row from this one on with a cell that is the text, but for case and accents.
    std::optional<int> linha_exacta(const QString& texto, int desde = 0) const;
    void ordena(int coluna, Qt::SortOrder ordem); // reads the rest of the rows first
    std::string escolha(int linha) const;         // first column, as it was read

    int rowCount(const QModelIndex& pai = {}) const override;
    int columnCount(const QModelIndex& pai = {}) const override;
    QVariant data(const QModelIndex& indice, int papel) const override;
    QVariant headerData(int seccao, Qt::Orientation orientacao, int papel) const override;
    void sort(int coluna, Qt::SortOrder ordem) override { ordena(coluna, ordem); }

  private:
    const base::Variante& valor(std::size_t linha, std::size_t coluna) const {
        return valores_[linha * nomes_.size() + coluna];
    }
    // A document's number, or a weight in tonnes: what a column holds shows in its first value.
    enum class Genero { por_saber, texto, inteiro, peso };
    static Genero genero_de(const base::Variante& valor);
    bool numerica(std::size_t coluna) const { return generos_[coluna] >= Genero::inteiro; }
    std::string mostrado(const base::Variante& valor) const;
    void le_linhas(std::size_t quantas);
    void dobra_a_lida(); // the last one
    void esconde_as_que_nao_passam();

    base::FormatoRegional formato_;
    std::unique_ptr<startup::ConjuntoRegistos> registos_; // until its last row has been read
    std::vector<std::string> nomes_;
    std::vector<bool> ocultas_;
    std::vector<Genero> generos_;
    std::vector<base::Variante> valores_; // row by row
    std::size_t total_ = 0;
    std::vector<int> ordem_;    // every row, as sorted
    std::vector<int> visiveis_; // those that pass the filter
    LinhasDobradas dobradas_;
};

} // namespace orvex::platform::qt
