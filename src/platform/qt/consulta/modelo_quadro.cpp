#include "platform/qt/consulta/modelo_quadro.h"

#include "platform/qt/consulta/ligacoes.h"
#include "platform/qt/textos.h"
#include "platform/saidas/saidas.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace orvex::platform::qt::consulta {
namespace {

using livro::consultas::Ligacao;
using livro::consultas::Linha;

std::vector<int> fundidas(const std::vector<int>& a, const std::vector<int>& b,
                          const std::function<bool(int, int)>& menor) {
    std::vector<int> todas;
    todas.reserve(a.size() + b.size());
    std::merge(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(todas), menor);
    return todas;
}

} // namespace

ModeloQuadro::ModeloQuadro(livro::consultas::Quadro quadro) : quadro_(std::move(quadro)) {
    for (const auto& coluna : quadro_.colunas)
        colunas_.emplace_back(coluna.tipo);
}

void ModeloQuadro::junta(const std::vector<Linha>& linhas) {
    for (const Linha& linha : linhas) {
        dobradas_.comeca();
        for (std::size_t c = 0; c < colunas_.size(); ++c) {
            const base::Variante& valor = linha.at(c);
            colunas_[c].junta(valor);
            if (const auto* texto = std::get_if<std::string>(&valor.valor()))
                dobradas_.celula(*texto);
            else
                dobradas_.celula(saidas::escrito(quadro_.colunas[c], valor));
        }
        dobradas_.acaba();
    }
    lidas_ += static_cast<int>(linhas.size());
}

std::vector<int> ModeloQuadro::das_novas() const {
    std::vector<int> novas(static_cast<std::size_t>(lidas_ - mostradas_));
    std::iota(novas.begin(), novas.end(), mostradas_);
    return novas;
}

void ModeloQuadro::so_as_que_passam(std::vector<int>& linhas) const {
    if (!dobradas_.passam_todas())
        std::erase_if(linhas, [this](int linha) { return !dobradas_.passa(linha); });
}

void ModeloQuadro::mostra_as_novas() {
    std::vector<int> novas = das_novas();
    mostradas_ = lidas_;
    if (ordenado()) {
        const auto menor = colunas_[static_cast<std::size_t>(coluna_)].menor(sentido_ == Qt::AscendingOrder);
        beginResetModel();
        std::stable_sort(novas.begin(), novas.end(), menor);
        ordem_ = fundidas(ordem_, novas, menor);
        so_as_que_passam(novas);
        a_vista_ = fundidas(a_vista_, novas, menor);
        endResetModel();
        return;
    }
    ordem_.insert(ordem_.end(), novas.begin(), novas.end());
    so_as_que_passam(novas);
    if (novas.empty()) return;
    beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(novas.size()) - 1);
    a_vista_.insert(a_vista_.end(), novas.begin(), novas.end());
    endInsertRows();
}

void ModeloQuadro::filtra(const QString& texto) {
    const bool mais = dobradas_.procura(texto);
    beginResetModel();
    if (mais) a_vista_ = ordem_;
    so_as_que_passam(a_vista_);
    endResetModel();
}

void ModeloQuadro::ordena(int coluna, Qt::SortOrder ordem) {
    if (ordenado() && coluna != coluna_) colunas_[static_cast<std::size_t>(coluna_)].esquece_ordem();
    coluna_ = coluna;
    sentido_ = ordem;
    mostradas_ = lidas_;
    beginResetModel();
    ordem_.resize(static_cast<std::size_t>(lidas_));
    std::iota(ordem_.begin(), ordem_.end(), 0);
    if (ordenado())
        std::stable_sort(ordem_.begin(), ordem_.end(),
                         colunas_[static_cast<std::size_t>(coluna)].menor(ordem == Qt::AscendingOrder));
    a_vista_ = ordem_;
    so_as_que_passam(a_vista_);
    endResetModel();
}

Linha ModeloQuadro::linha_de(int numero) const {
    Linha toda;
    for (int c = 0; c < columnCount(); ++c)
        toda.push_back(valor_de(numero, c));
    return toda;
}

int ModeloQuadro::rowCount(const QModelIndex& pai) const {
    return pai.isValid() ? 0 : static_cast<int>(a_vista_.size());
}

int ModeloQuadro::columnCount(const QModelIndex& pai) const {
    return pai.isValid() ? 0 : static_cast<int>(colunas_.size());
}

QVariant ModeloQuadro::data(const QModelIndex& indice, int papel) const {
    if (!indice.isValid() || indice.row() >= rowCount()) return {};
    const auto& esta = coluna(indice.column());
    if (papel == Qt::TextAlignmentRole)
        return int((esta.a_direita() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (papel == papel_ligacao) {
        const bool ha = esta.ligacao != Ligacao::nenhuma &&
                        !colunas_[static_cast<std::size_t>(indice.column())].nulo(numero(indice.row()));
        return ha ? QVariant(int(esta.ligacao)) : QVariant();
    }
    if (papel == Qt::AccessibleDescriptionRole) {
        const QVariant ligacao = data(indice, papel_ligacao);
        const QString texto = data(indice, Qt::DisplayRole).toString();
        return ligacao.isValid() ? abrir_em_palavras(static_cast<Ligacao>(ligacao.toInt()), texto)
                                 : QVariant();
    }
    if (papel != Qt::DisplayRole) return {};
    return qs(saidas::numa_linha(saidas::escrito(esta, valor(indice.row(), indice.column()))));
}

QVariant ModeloQuadro::headerData(int seccao, Qt::Orientation orientacao, int papel) const {
    if (orientacao != Qt::Horizontal) return {};
    if (papel == Qt::DisplayRole) return qs(coluna(seccao).titulo);
    if (papel == Qt::TextAlignmentRole)
        return int((coluna(seccao).a_direita() ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

} // namespace orvex::platform::qt::consulta
