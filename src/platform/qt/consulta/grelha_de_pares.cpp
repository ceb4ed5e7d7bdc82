#include "platform/qt/consulta/grelha_de_pares.h"

#include <QWidget>

#include <algorithm>

namespace orvex::platform::qt::consulta {
namespace {

constexpr int entre_par = 5;      // a label and its value
constexpr int entre_colunas = 28; // pairs beside one another
constexpr int mais_colunas = 4;   // an eye finds no more

} // namespace

GrelhaDePares::~GrelhaDePares() {
    for (QLayoutItem* item : itens_)
        delete item;
}

void GrelhaDePares::junta(QWidget* legenda, QWidget* valor, bool a_toda_a_largura) {
    largos_.push_back(a_toda_a_largura);
    addWidget(legenda);
    addWidget(valor);
}

void GrelhaDePares::addItem(QLayoutItem* item) { itens_.push_back(item); }

QLayoutItem* GrelhaDePares::itemAt(int indice) const {
    return indice >= 0 && indice < count() ? itens_[static_cast<std::size_t>(indice)] : nullptr;
}

// Only the end of its widget takes from it.
QLayoutItem* GrelhaDePares::takeAt(int indice) {
    QLayoutItem* item = itemAt(indice);
    if (item != nullptr) itens_.erase(itens_.begin() + indice);
    return item;
}

std::vector<GrelhaDePares::Coluna> GrelhaDePares::colunas(int quantas) const {
    std::vector<Coluna> todas(static_cast<std::size_t>(quantas));
    std::size_t em = 0;
    for (std::size_t i = 0; i < largos_.size(); ++i) {
        const Par este = par(i);
        if (este.largo) em = 0; // it begins a row of its own
        Coluna& coluna = todas[em];
        coluna.legenda = std::max(coluna.legenda, este.legenda->sizeHint().width());
        if (!este.largo) {
            coluna.valor = std::max(coluna.valor, este.valor->sizeHint().width());
            em = (em + 1) % todas.size();
        }
    }
    return todas;
}

std::vector<GrelhaDePares::Coluna> GrelhaDePares::que_cabem(int largura) const {
    for (int quantas = mais_colunas; quantas > 1; --quantas) {
        const std::vector<Coluna> estas = colunas(quantas);
        int soma = (quantas - 1) * entre_colunas;
        for (const Coluna& coluna : estas)
            soma += coluna.legenda + entre_par + coluna.valor;
        if (soma <= largura) return estas;
    }
    std::vector<Coluna> uma = colunas(1);
    uma[0].valor = std::max(20, largura - uma[0].legenda - entre_par);
    return uma;
}

int GrelhaDePares::dispoe(const QRect& onde, bool a_serio) const {
    const std::vector<Coluna> estas = que_cabem(onde.width());
    int x = onde.left(), y = onde.top(), altura = 0;
    std::size_t em = 0;
    const auto outra_linha = [&] {
        if (altura > 0) y += altura + entre_linhas_;
        x = onde.left();
        altura = 0;
        em = 0;
    };
    for (std::size_t i = 0; i < largos_.size(); ++i) {
        const Par este = par(i);
        if (este.largo || em == estas.size()) outra_linha();
        const int legenda = estas[em].legenda;
        const int valor = este.largo ? onde.right() + 1 - x - legenda - entre_par : estas[em].valor;
        const int alta = este.valor->hasHeightForWidth() ? este.valor->heightForWidth(valor)
                                                         : este.valor->sizeHint().height();
        const int da_legenda = este.legenda->sizeHint().height();
        if (a_serio) {
            este.legenda->setGeometry({x, y, legenda, da_legenda});
            este.valor->setGeometry({x + legenda + entre_par, y, valor, alta});
        }
        altura = std::max({altura, alta, da_legenda});
        x += legenda + entre_par + valor + entre_colunas;
        if (este.largo)
            outra_linha();
        else
            ++em;
    }
    if (altura > 0) y += altura + entre_linhas_;
    return std::max(0, y - entre_linhas_ - onde.top());
}

int GrelhaDePares::heightForWidth(int largura) const {
    const QMargins margens = contentsMargins();
    return dispoe({0, 0, largura - margens.left() - margens.right(), 0}, false) + margens.top() +
           margens.bottom();
}

void GrelhaDePares::setGeometry(const QRect& onde) {
    QLayout::setGeometry(onde);
    dispoe(onde.marginsRemoved(contentsMargins()), true);
}

QSize GrelhaDePares::sizeHint() const {
    constexpr int habitual = 640;
    return {habitual, heightForWidth(habitual)};
}

QSize GrelhaDePares::minimumSize() const {
    constexpr int menor = 260;
    return {menor, 0};
}

} // namespace orvex::platform::qt::consulta
