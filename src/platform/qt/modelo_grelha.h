// Lets a table view read a grid's matrix where it lies.
#pragma once

#include "base/formato_regional.h"
#include "common/grelha.h"

#include <QAbstractTableModel>

namespace orvex::platform::qt {

class ModeloGrelha : public QAbstractTableModel {
  public:
    ModeloGrelha(const common::Grelha& grelha, base::FormatoRegional formato)
        : grelha_(grelha), formato_(formato) {}

    // Tells the views what changed since the last call. True when the columns are others than before.
    bool actualiza();

    const common::ColunaGrelha& coluna(int indice) const {
        return grelha_.colunas()[static_cast<std::size_t>(indice)];
    }
    bool editavel(const QModelIndex& indice) const;

    int rowCount(const QModelIndex& pai = {}) const override { return pai.isValid() ? 0 : linhas_; }
    int columnCount(const QModelIndex& pai = {}) const override {
        return pai.isValid() ? 0 : static_cast<int>(chaves_.size());
    }
    QVariant data(const QModelIndex& indice, int papel) const override;
    QVariant headerData(int seccao, Qt::Orientation orientacao, int papel) const override;
    Qt::ItemFlags flags(const QModelIndex& indice) const override;

  private:
    const common::Grelha& grelha_;
    base::FormatoRegional formato_;
    std::uint64_t versao_ = 0;
    int linhas_ = 0; // as the views know them
    std::vector<std::string> chaves_;
};

} // namespace orvex::platform::qt
