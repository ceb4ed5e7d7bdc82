// Labels and their values on one grid, with as many pairs beside one another as there is room for; what is
// long stands across all of it.
#pragma once

#include <QLayout>

#include <vector>

namespace orvex::platform::qt::consulta {

class GrelhaDePares : public QLayout {
  public:
    explicit GrelhaDePares(int entre_linhas = 0) : entre_linhas_(entre_linhas) {}
    ~GrelhaDePares() override;
    void junta(QWidget* legenda, QWidget* valor, bool a_toda_a_largura);

    void addItem(QLayoutItem* item) override;
    QLayoutItem* itemAt(int indice) const override;
    QLayoutItem* takeAt(int indice) override;
    int count() const override { return static_cast<int>(itens_.size()); }
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int largura) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& onde) override;

  private:
    struct Coluna {
        int legenda = 0, valor = 0;
    };
    struct Par {
        QLayoutItem* legenda;
        QLayoutItem* valor;
        bool largo;
    };
    Par par(std::size_t qual) const { return {itens_[2 * qual], itens_[2 * qual + 1], largos_[qual]}; }
    std::vector<Coluna> colunas(int quantas) const; // their widths
    std::vector<Coluna> que_cabem(int largura) const;
    int dispoe(const QRect& onde, bool a_serio) const; // its height

    std::vector<QLayoutItem*> itens_; // a label, its value, the next label
    std::vector<bool> largos_;
    int entre_linhas_;
};

} // namespace orvex::platform::qt::consulta
