// Lets a table view read a grid's matrix where it lies.
#pragma once

#include "base/formato_regional.h"
#include "common/grelha.h"

#include <QAbstractTableModel>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace orvex::platform::qt {

// A column that the window adds behind the grid's own: the matrix has no part in it.
struct ColunaDaJanela {
    common::ColunaGrelha descricao;
    std::function<std::string(int linha)> texto;
};

class ModeloGrelha : public QAbstractTableModel {
  public:
    ModeloGrelha(const common::Grelha& grelha, base::FormatoRegional formato)
        : grelha_(grelha), formato_(formato) {}

    // Before anything is shown.
    void junta(ColunaDaJanela coluna) { juntas_.push_back(std::move(coluna)); }
    // A word beside the caption of a column.
    void acrescenta_a_legenda(std::string chave, std::string palavra) {
        palavras_.emplace_back(std::move(chave), std::move(palavra));
    }

    // Tells the views what changed since the last call. True when the columns are others than before.
    bool actualiza();

    const common::ColunaGrelha& coluna(int indice) const {
        const auto i = static_cast<std::size_t>(indice);
        return da_janela(indice) ? juntas_[i - chaves_.size()].descricao : grelha_.colunas()[i];
    }
    bool editavel(const QModelIndex& indice) const;

    int rowCount(const QModelIndex& pai = {}) const override { return pai.isValid() ? 0 : linhas_; }
    int columnCount(const QModelIndex& pai = {}) const override {
        return pai.isValid() || chaves_.empty() ? 0 : static_cast<int>(chaves_.size() + juntas_.size());
    }
    QVariant data(const QModelIndex& indice, int papel) const override;
    QVariant headerData(int seccao, Qt::Orientation orientacao, int papel) const override;
    Qt::ItemFlags flags(const QModelIndex& indice) const override;

  private:
    bool da_janela(int coluna) const { return static_cast<std::size_t>(coluna) >= chaves_.size(); }
    std::string texto(int linha, int coluna) const;

    const common::Grelha& grelha_;
    base::FormatoRegional formato_;
    std::uint64_t versao_ = 0;
    int linhas_ = 0; // as the views know them
    std::vector<std::string> chaves_;
    std::vector<ColunaDaJanela> juntas_;
    std::vector<std::pair<std::string, std::string>> palavras_;
};

} // namespace orvex::platform::qt
