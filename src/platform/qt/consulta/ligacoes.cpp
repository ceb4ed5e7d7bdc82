#include "platform/qt/consulta/ligacoes.h"

#include "platform/qt/consulta/modelo_quadro.h"

#include <QPainter>
#include <QTableView>

#include <algorithm>

namespace orvex::platform::qt::consulta {
namespace {

using livro::consultas::Ligacao;

int margem_do_texto(const QWidget& vista) {
    return vista.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &vista) + 1;
}

} // namespace

QString abrir_em_palavras(Ligacao qual, const QString& texto) {
    const char* que = qual == Ligacao::artigo ? "artigo" : qual == Ligacao::cliente ? "cliente" : "documento";
    return QString("Abrir %1 %2").arg(que, texto);
}

std::vector<int> colunas_com_ligacao(const QTableView& vista, int linha) {
    std::vector<int> colunas;
    for (int c = 0; c < vista.model()->columnCount(); ++c)
        if (!vista.isColumnHidden(c) && vista.model()->index(linha, c).data(papel_ligacao).isValid())
            colunas.push_back(c);
    return colunas;
}

DelegadoLigacao::DelegadoLigacao(QTableView& vista) : DicaDoCortado(&vista), vista_(vista) {}

void DelegadoLigacao::initStyleOption(QStyleOptionViewItem* opcao, const QModelIndex& indice) const {
    DicaDoCortado::initStyleOption(opcao, indice);
    opcao->state &= ~QStyle::State_HasFocus; // the ring says it
    if (!indice.data(papel_ligacao).isValid()) return;
    opcao->font.setUnderline(true);
    opcao->palette.setColor(QPalette::Text, opcao->palette.color(QPalette::Link));
}

void DelegadoLigacao::paint(QPainter* pintor, const QStyleOptionViewItem& opcao,
                            const QModelIndex& indice) const {
    DicaDoCortado::paint(pintor, opcao, indice);
    if (indice != vista_.currentIndex()) return;
    const bool marcada = opcao.state.testFlag(QStyle::State_Selected);
    pintor->save();
    pintor->setPen(QPen(opcao.palette.color(marcada ? QPalette::HighlightedText : QPalette::Highlight), 2));
    pintor->setBrush(Qt::NoBrush);
    pintor->drawRect(QRectF(opcao.rect).adjusted(2, 2, -2, -2));
    pintor->restore();
}

QModelIndex DelegadoLigacao::ligacao_em(QPoint lugar) const {
    const QModelIndex indice = vista_.indexAt(lugar);
    if (!indice.isValid() || !indice.data(papel_ligacao).isValid()) return {};
    const QRect celula = vista_.visualRect(indice);
    const int largura = vista_.fontMetrics().horizontalAdvance(indice.data().toString());
    return lugar.x() <= celula.left() + margem_do_texto(vista_) + largura ? indice : QModelIndex();
}

} // namespace orvex::platform::qt::consulta
