#include "platform/qt/grelhas/modelo_grelha.h"

#include "platform/qt/textos.h"

#include <QBrush>
#include <QColor>

#include <algorithm>

namespace orvex::platform::qt {
namespace {

int alinhamento(common::TipoCelula tipo) {
    switch (tipo) {
    case common::TipoCelula::decimal:
    case common::TipoCelula::inteiro:
        return int(Qt::AlignRight | Qt::AlignVCenter);
    case common::TipoCelula::logico:
        return int(Qt::AlignCenter);
    case common::TipoCelula::texto:
        break;
    }
    return int(Qt::AlignLeft | Qt::AlignVCenter);
}

std::vector<std::string> chaves_de(const common::Grelha& grelha) {
    std::vector<std::string> chaves;
    for (const common::ColunaGrelha& coluna : grelha.colunas())
        chaves.push_back(coluna.chave);
    return chaves;
}

// A line of text has no weight, whatever the ERP keeps for it.
bool sem_peso(const common::Grelha& grelha, int linha, const common::ColunaGrelha& coluna) {
    if (!coluna.formato_peso) return false;
    return std::any_of(grelha.colunas().begin(), grelha.colunas().end(), [&](const common::ColunaGrelha& c) {
        return c.chave == "Artigo" && grelha.valor(linha, c.chave).vazio();
    });
}

} // namespace

std::string ModeloGrelha::texto(int linha, int c) const {
    if (da_janela(c)) return juntas_[static_cast<std::size_t>(c) - chaves_.size()].texto(linha);
    return sem_peso(grelha_, linha, coluna(c)) ? "" : grelha_.texto_mostrado(linha, c, formato_);
}

bool ModeloGrelha::actualiza() {
    if (!grelha_.redesenha || versao_ == grelha_.versao()) return false;
    versao_ = grelha_.versao();
    if (std::vector<std::string> chaves = chaves_de(grelha_); chaves != chaves_) {
        beginResetModel();
        chaves_ = std::move(chaves);
        linhas_ = grelha_.linhas();
        endResetModel();
        return true;
    }
    // Rows come and go at the end: which values they hold is read again in any case.
    const int linhas = grelha_.linhas();
    if (linhas > linhas_) {
        beginInsertRows({}, linhas_, linhas - 1);
        linhas_ = linhas;
        endInsertRows();
    } else if (linhas < linhas_) {
        beginRemoveRows({}, linhas, linhas_ - 1);
        linhas_ = linhas;
        endRemoveRows();
    }
    if (linhas_ > 0 && !chaves_.empty()) emit dataChanged(index(0, 0), index(linhas_ - 1, columnCount() - 1));
    return false;
}

bool ModeloGrelha::editavel(const QModelIndex& indice) const {
    return indice.isValid() && grelha_.Enabled && !coluna(indice.column()).so_leitura;
}

QVariant ModeloGrelha::data(const QModelIndex& indice, int papel) const {
    // A rule may be filling the matrix at this moment: a row that has just gone shows nothing.
    if (!indice.isValid() || indice.row() >= grelha_.linhas()) return {};
    const common::ColunaGrelha& desta = coluna(indice.column());
    switch (papel) {
    case Qt::DisplayRole:
        if (desta.tipo == common::TipoCelula::logico) return {};
        return qs(texto(indice.row(), indice.column()));
    case Qt::TextAlignmentRole:
        return alinhamento(desta.tipo);
    case Qt::CheckStateRole:
        if (desta.tipo != common::TipoCelula::logico) return {};
        if (const base::Variante& valor = grelha_.valor(indice.row(), indice.column()); !valor.vazio())
            return int(valor.logico() ? Qt::Checked : Qt::Unchecked);
        return {};
    case Qt::BackgroundRole:
        if (grelha_.pintada(indice.row())) return QBrush(QColor::fromRgb(grelha_.estilo->cor_fundo));
        return {};
    case Qt::ForegroundRole:
        if (!grelha_.pintada(indice.row())) return {};
        return QBrush(qGray(grelha_.estilo->cor_fundo) > 110 ? Qt::black : Qt::white);
    default:
        return {};
    }
}

QVariant ModeloGrelha::headerData(int seccao, Qt::Orientation orientacao, int papel) const {
    if (orientacao != Qt::Horizontal || seccao >= columnCount()) return {};
    const common::ColunaGrelha& desta = coluna(seccao);
    if (papel == Qt::TextAlignmentRole) return alinhamento(desta.tipo);
    if (papel != Qt::DisplayRole) return {};
    QString legenda = qs(desta.legenda);
    for (const auto& [chave, palavra] : palavras_)
        if (chave == desta.chave) legenda += " " + qs(palavra);
    return legenda + (desta.formato_peso ? " (t)" : "");
}

Qt::ItemFlags ModeloGrelha::flags(const QModelIndex& indice) const {
    Qt::ItemFlags marcas = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (editavel(indice) && coluna(indice.column()).tipo != common::TipoCelula::logico)
        marcas |= Qt::ItemIsEditable;
    return marcas;
}

} // namespace orvex::platform::qt
