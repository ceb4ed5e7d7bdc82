#include "platform/qt/consulta/modelo_quadro.h"
#include "platform/qt/consulta/vista_quadro.h"
#include "platform/qt/memoria.h"
#include "platform/qt/textos.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>

namespace orvex::platform::qt::consulta {
namespace {

using livro::consultas::Tipo;

constexpr int linhas_medidas = 100;
constexpr int folga = 20;           // of a cell's margins, and of the arrow in a heading
constexpr int letras_de_texto = 40; // more than that a column asks for no room

} // namespace

QString VistaQuadro::chave_largura(int coluna) const {
    const auto& quadro = modelo_->quadro();
    return qs("consulta." + vista_ + "." + quadro.chave + "." +
              quadro.colunas[static_cast<std::size_t>(coluna)].chave);
}

bool VistaQuadro::elastica(int coluna) const {
    const auto& esta = modelo_->quadro().colunas[static_cast<std::size_t>(coluna)];
    return esta.tipo == Tipo::texto && esta.chave != "tipo" && !fixas_.contains(coluna);
}

int VistaQuadro::largura_pedida(int coluna) const {
    const QFontMetrics medidas = tabela_->fontMetrics();
    int largura =
        medidas.horizontalAdvance(modelo_->headerData(coluna, Qt::Horizontal, Qt::DisplayRole).toString());
    for (int linha = 0; linha < std::min(linhas_medidas, modelo_->rowCount()); ++linha)
        largura =
            std::max(largura, medidas.horizontalAdvance(modelo_->index(linha, coluna).data().toString()));
    return std::min(largura, letras_de_texto * medidas.averageCharWidth()) + folga;
}

void VistaQuadro::mede() {
    guarda_larguras();
    larguras_.clear();
    for (int c = 0; c < modelo_->columnCount(); ++c) {
        const int lembrada = le_largura(chave_largura(c), 0);
        if (lembrada > 0) fixas_.insert(c);
        larguras_.push_back(lembrada > 0 ? lembrada : largura_pedida(c));
    }
    acomoda();
}

// Texts share what is left over, and give up what is missing down to the width of their headings and some
// words.
void VistaQuadro::acomoda() {
    int sobra = tabela_->viewport()->width();
    std::vector<int> textos;
    for (int c = 0; c < modelo_->columnCount(); ++c) {
        if (tabela_->isColumnHidden(c)) continue;
        sobra -= larguras_[static_cast<std::size_t>(c)];
        if (elastica(c)) textos.push_back(c);
    }
    a_acomodar_ = true;
    for (int c = 0; c < modelo_->columnCount(); ++c)
        if (!tabela_->isColumnHidden(c)) tabela_->setColumnWidth(c, larguras_[static_cast<std::size_t>(c)]);
    const int menor = 14 * tabela_->fontMetrics().averageCharWidth();
    for (std::size_t i = 0; i < textos.size(); ++i) {
        const int pedida = larguras_[static_cast<std::size_t>(textos[i])];
        const int parte = sobra / static_cast<int>(textos.size() - i);
        const int nova = std::max(std::min(menor, pedida), pedida + parte);
        tabela_->setColumnWidth(textos[i], nova);
        sobra -= nova - pedida;
    }
    a_acomodar_ = false;
}

void VistaQuadro::ressalva() {
    bool outra = false;
    for (int c = 0; c < modelo_->columnCount(); ++c) {
        if (modelo_->quadro().colunas[static_cast<std::size_t>(c)].chave != "ressalvas") continue;
        const bool vazia = !modelo_->com_algo(c);
        if (vazia == tabela_->isColumnHidden(c)) continue;
        outra = true;
        a_acomodar_ = true; // nobody widened it
        tabela_->setColumnHidden(c, vazia);
        a_acomodar_ = false;
    }
    if (outra && !larguras_.empty()) mede();
}

void VistaQuadro::guarda_larguras() {
    for (const int c : alargadas_)
        guarda_largura(chave_largura(c), larguras_[static_cast<std::size_t>(c)]);
    alargadas_.clear();
}

void VistaQuadro::ordena_pelo_teclado(int posicao) {
    QHeaderView* titulos = tabela_->horizontalHeader();
    for (int c = 0; c < modelo_->columnCount(); ++c) {
        if (tabela_->isColumnHidden(c) || --posicao > 0) continue;
        const bool por_esta = titulos->sortIndicatorSection() == c;
        if (por_esta && titulos->sortIndicatorOrder() == Qt::DescendingOrder)
            return titulos->setSortIndicator(-1, Qt::AscendingOrder);
        return titulos->setSortIndicator(c, por_esta ? Qt::DescendingOrder : Qt::AscendingOrder);
    }
}

} // namespace orvex::platform::qt::consulta
