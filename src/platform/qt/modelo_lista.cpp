#include "platform/qt/modelo_lista.h"

#include "base/texto.h"
#include "platform/qt/textos.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace orvex::platform::qt {
namespace {

constexpr std::size_t linhas_de_uma_vez = 2000;

// Base letters of U+00C0 to U+00FF; "*" stands for itself.
constexpr std::string_view sem_acento = "aaaaaaaceeeeiiiidnooooo*ouuuuy*saaaaaaaceeeeiiiidnooooo*ouuuuy*y";

// The letters around "x" have two bytes in UTF-8: C3 and one of 80 to BF.
void dobra_em(std::string_view texto, std::string& destino) {
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const char c = texto[i];
        if (c >= 'A' && c <= 'Z') {
            destino += static_cast<char>(c - 'A' + 'a');
        } else if (static_cast<unsigned char>(c) == 0xC3 && i + 1 < texto.size()) {
            const auto segundo = static_cast<unsigned char>(texto[i + 1]);
            const char letra = segundo >= 0x80 && segundo < 0xC0 ? sem_acento[segundo - 0x80u] : '*';
            if (letra != '*') {
                destino += letra;
                ++i;
            } else {
                destino += c;
            }
        } else {
            destino += c;
        }
    }
}

bool e_numero(const base::Variante& valor) {
    return std::holds_alternative<std::int64_t>(valor.valor()) ||
           std::holds_alternative<double>(valor.valor()) ||
           std::holds_alternative<base::Moeda>(valor.valor());
}

// Numbers and dates by value, before texts; nulls first.
struct ChaveOrdenacao {
    int grupo = 0;
    double numero = 0;
    std::string texto;
    friend bool operator<(const ChaveOrdenacao& a, const ChaveOrdenacao& b) {
        if (a.grupo != b.grupo) return a.grupo < b.grupo;
        if (a.numero != b.numero) return a.numero < b.numero;
        return a.texto < b.texto;
    }
};

ChaveOrdenacao chave_de(const base::Variante& valor) {
    if (valor.nulo()) return {};
    if (e_numero(valor)) return {1, valor.real(), {}};
    if (const auto* data = std::get_if<base::DataHora>(&valor.valor())) return {2, 0, data->data_hora_iso()};
    return {3, 0, dobrado(valor.texto())};
}

} // namespace

std::string dobrado(std::string_view texto) {
    std::string resultado;
    resultado.reserve(texto.size());
    dobra_em(texto, resultado);
    return resultado;
}

ModeloLista::ModeloLista(std::unique_ptr<startup::ConjuntoRegistos> registos, base::FormatoRegional formato,
                         std::vector<bool> ocultas)
    : formato_(formato), registos_(std::move(registos)), ocultas_(std::move(ocultas)) {
    const std::size_t colunas = registos_->colunas();
    for (std::size_t c = 0; c < colunas; ++c)
        nomes_.emplace_back(registos_->nome_coluna(c));
    ocultas_.resize(colunas, false);
    le_mais();
}

void ModeloLista::le_linhas(std::size_t ate) {
    // Gone if it throws: what was read stays, and nobody asks a broken query again.
    auto registos = std::move(registos_);
    for (; total_ < ate && !registos->fim(); registos->move_seguinte(), ++total_) {
        for (std::size_t c = 0; c < nomes_.size(); ++c)
            valores_.push_back(registos->valor(c));
        ordem_.push_back(static_cast<int>(total_));
    }
    if (!registos->fim()) registos_ = std::move(registos);
}

bool ModeloLista::le_mais() {
    if (completo()) return false;
    le_linhas(total_ + linhas_de_uma_vez);
    const int antes = static_cast<int>(visiveis_.size());
    if (total() > antes) {
        beginInsertRows({}, antes, total() - 1);
        visiveis_ = ordem_;
        endInsertRows();
    }
    return !completo();
}

void ModeloLista::le_tudo() {
    if (!completo()) le_linhas(std::numeric_limits<std::size_t>::max());
}

void ModeloLista::dobra() {
    if (!fins_.empty()) return;
    fins_.reserve(total_);
    dobrados_.reserve(total_ * 48);
    for (std::size_t linha = 0; linha < total_; ++linha) {
        for (std::size_t c = 0; c < nomes_.size(); ++c) {
            if (ocultas_[c]) continue;
            const base::Variante& celula = valor(linha, c);
            if (const auto* texto = std::get_if<std::string>(&celula.valor()))
                dobra_em(*texto, dobrados_);
            else
                dobrados_ += formato_.texto(celula);
            dobrados_ += '\n'; // no word reaches over two columns
        }
        fins_.push_back(dobrados_.size());
    }
}

void ModeloLista::filtra(const QString& texto) {
    palavras_.clear();
    procurado_ = dobrado(texto.toStdString());
    for (const QString& palavra : texto.split(' ', Qt::SkipEmptyParts))
        palavras_.push_back(dobrado(palavra.toStdString()));
    if (!palavras_.empty()) le_tudo();
    beginResetModel();
    aplica_filtro();
    endResetModel();
}

void ModeloLista::aplica_filtro() {
    visiveis_.clear();
    exacta_ = 0;
    if (palavras_.empty()) {
        visiveis_ = ordem_;
        return;
    }
    dobra();
    const std::string_view tudo = dobrados_;
    const std::string celula = "\n" + procurado_ + "\n";
    bool ha_exacta = false;
    for (const int linha : ordem_) {
        const auto i = static_cast<std::size_t>(linha);
        const std::size_t inicio = i == 0 ? 0 : fins_[i - 1];
        const std::string_view texto = tudo.substr(inicio, fins_[i] - inicio);
        if (!std::all_of(palavras_.begin(), palavras_.end(), [&](const std::string& palavra) {
                return texto.find(palavra) != std::string_view::npos;
            }))
            continue;
        if (!ha_exacta && (texto.starts_with(std::string_view(celula).substr(1)) ||
                           texto.find(celula) != std::string_view::npos)) {
            exacta_ = static_cast<int>(visiveis_.size());
            ha_exacta = true;
        }
        visiveis_.push_back(linha);
    }
}

void ModeloLista::ordena(int coluna, Qt::SortOrder ordem) {
    if (coluna < 0 || coluna >= columnCount()) return;
    le_tudo();
    std::vector<ChaveOrdenacao> chaves(total_);
    for (std::size_t i = 0; i < total_; ++i)
        chaves[i] = chave_de(valor(i, static_cast<std::size_t>(coluna)));
    const auto menor = [&](int a, int b) {
        const auto& primeira = chaves[static_cast<std::size_t>(ordem == Qt::AscendingOrder ? a : b)];
        const auto& segunda = chaves[static_cast<std::size_t>(ordem == Qt::AscendingOrder ? b : a)];
        return primeira < segunda;
    };
    beginResetModel();
    std::iota(ordem_.begin(), ordem_.end(), 0);
    std::stable_sort(ordem_.begin(), ordem_.end(), menor);
    aplica_filtro();
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

bool ModeloLista::numerica(std::size_t coluna) const { return total_ > 0 && e_numero(valor(0, coluna)); }

QVariant ModeloLista::data(const QModelIndex& indice, int papel) const {
    if (!indice.isValid() || indice.row() >= rowCount())
        return {}; // a view asks for its current cell, if any
    const auto coluna = static_cast<std::size_t>(indice.column());
    if (papel == Qt::TextAlignmentRole)
        return int((numerica(coluna) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (papel != Qt::DisplayRole) return {};
    const auto linha = static_cast<std::size_t>(visiveis_[static_cast<std::size_t>(indice.row())]);
    return qs(formato_.texto(valor(linha, coluna)));
}

QVariant ModeloLista::headerData(int seccao, Qt::Orientation orientacao, int papel) const {
    if (orientacao != Qt::Horizontal) return {};
    const auto coluna = static_cast<std::size_t>(seccao);
    if (papel == Qt::DisplayRole) return qs(nomes_[coluna]);
    if (papel == Qt::TextAlignmentRole)
        return int((numerica(coluna) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

} // namespace orvex::platform::qt
