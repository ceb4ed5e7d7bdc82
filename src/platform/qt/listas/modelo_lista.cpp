#include "platform/qt/listas/modelo_lista.h"

#include "base/ordem.h"
#include "platform/qt/textos.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <numeric>
#include <utility>

namespace orvex::platform::qt {
namespace {

constexpr std::size_t linhas_de_uma_vez = 2000;

} // namespace

ModeloLista::ModeloLista(std::unique_ptr<startup::ConjuntoRegistos> registos, base::FormatoRegional formato,
                         std::vector<bool> ocultas)
    : formato_(formato), registos_(std::move(registos)), ocultas_(std::move(ocultas)) {
    const std::size_t colunas = registos_->colunas();
    for (std::size_t c = 0; c < colunas; ++c)
        nomes_.emplace_back(registos_->nome_coluna(c));
    ocultas_.resize(colunas, false);
    generos_.resize(colunas, Genero::por_saber);
    le_mais();
}

void ModeloLista::le_linhas(std::size_t quantas) {
    // Gone if it throws: what was read stays, and nobody asks a broken query again.
    auto registos = std::move(registos_);
    for (; quantas > 0 && !registos->fim(); registos->move_seguinte(), --quantas) {
        for (std::size_t c = 0; c < nomes_.size(); ++c) {
            valores_.push_back(registos->valor(c));
            if (generos_[c] == Genero::por_saber) generos_[c] = genero_de(valores_.back());
        }
        ordem_.push_back(static_cast<int>(total_));
        ++total_;
        dobra_a_lida();
    }
    if (!registos->fim()) registos_ = std::move(registos);
}

bool ModeloLista::le_mais() {
    if (completo()) return false;
    const auto antes = static_cast<std::ptrdiff_t>(ordem_.size());
    le_linhas(linhas_de_uma_vez);
    std::vector<int> novas;
    std::copy_if(ordem_.begin() + antes, ordem_.end(), std::back_inserter(novas),
                 [this](int linha) { return dobradas_.passa(linha); });
    if (!novas.empty()) {
        beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(novas.size()) - 1);
        visiveis_.insert(visiveis_.end(), novas.begin(), novas.end());
        endInsertRows();
    }
    return !completo();
}

void ModeloLista::dobra_a_lida() {
    dobradas_.comeca();
    for (std::size_t c = 0; c < nomes_.size(); ++c)
        if (!ocultas_[c]) dobradas_.celula(mostrado(valor(total_ - 1, c)));
    dobradas_.acaba();
}

void ModeloLista::filtra(const QString& texto) {
    const bool mais = dobradas_.procura(texto);
    beginResetModel();
    if (mais) visiveis_ = ordem_;
    esconde_as_que_nao_passam();
    endResetModel();
}

void ModeloLista::esconde_as_que_nao_passam() {
    if (!dobradas_.passam_todas())
        std::erase_if(visiveis_, [this](int linha) { return !dobradas_.passa(linha); });
}

std::optional<int> ModeloLista::linha_exacta(const QString& texto, int desde) const {
    const std::string celula = LinhasDobradas::como_celula(texto);
    for (int linha = desde; linha < rowCount(); ++linha)
        if (dobradas_.tem(visiveis_[static_cast<std::size_t>(linha)], celula)) return linha;
    return {};
}

void ModeloLista::ordena(int coluna, Qt::SortOrder ordem) {
    if (coluna < 0 || coluna >= columnCount()) return;
    if (!completo()) le_linhas(std::numeric_limits<std::size_t>::max());
    std::vector<base::ChaveOrdem> chaves(total_);
    for (std::size_t i = 0; i < total_; ++i)
        chaves[i] = base::ChaveOrdem(valor(i, static_cast<std::size_t>(coluna)));
    const auto menor = [&](int a, int b) {
        const auto& primeira = chaves[static_cast<std::size_t>(ordem == Qt::AscendingOrder ? a : b)];
        const auto& segunda = chaves[static_cast<std::size_t>(ordem == Qt::AscendingOrder ? b : a)];
        return primeira < segunda;
    };
    beginResetModel();
    std::iota(ordem_.begin(), ordem_.end(), 0);
    std::stable_sort(ordem_.begin(), ordem_.end(), menor);
    visiveis_ = ordem_;
    esconde_as_que_nao_passam();
    endResetModel();
}

std::string ModeloLista::escolha(int linha) const {
    return valor(static_cast<std::size_t>(visiveis_.at(static_cast<std::size_t>(linha))), 0).texto();
}

int ModeloLista::rowCount(const QModelIndex& pai) const {
    return pai.isValid() ? 0 : static_cast<int>(visiveis_.size());
}

int ModeloLista::columnCount(const QModelIndex& pai) const {
    return pai.isValid() ? 0 : static_cast<int>(nomes_.size());
}

ModeloLista::Genero ModeloLista::genero_de(const base::Variante& valor) {
    if (valor.nulo()) return Genero::por_saber;
    if (!e_numero(valor)) return Genero::texto;
    return std::holds_alternative<std::int64_t>(valor.valor()) ? Genero::inteiro : Genero::peso;
}

std::string ModeloLista::mostrado(const base::Variante& valor) const {
    return genero_de(valor) == Genero::peso ? formato_.peso_inteiro(valor.moeda()) : formato_.texto(valor);
}

QVariant ModeloLista::data(const QModelIndex& indice, int papel) const {
    if (!indice.isValid() || indice.row() >= rowCount())
        return {}; // a view asks for its current cell, if any
    const auto coluna = static_cast<std::size_t>(indice.column());
    if (papel == Qt::TextAlignmentRole)
        return int((numerica(coluna) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (papel != Qt::DisplayRole) return {};
    const auto linha = static_cast<std::size_t>(visiveis_[static_cast<std::size_t>(indice.row())]);
    return qs(mostrado(valor(linha, coluna)));
}

QVariant ModeloLista::headerData(int seccao, Qt::Orientation orientacao, int papel) const {
    if (orientacao != Qt::Horizontal) return {};
    const auto coluna = static_cast<std::size_t>(seccao);
    if (papel == Qt::DisplayRole)
        return qs(nomes_[coluna] + (generos_[coluna] == Genero::peso ? " (t)" : ""));
    if (papel == Qt::TextAlignmentRole)
        return int((numerica(coluna) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

} // namespace orvex::platform::qt
