#include "platform/qt/consulta/totais_quadro.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/textos.h"
#include "platform/saidas/saidas.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTableView>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace orvex::platform::qt::consulta {
namespace {

constexpr int margem = 4;
constexpr int folga = 6; // above and below a text

} // namespace

TotaisQuadro::TotaisQuadro(QTableView& tabela, const livro::consultas::Quadro& quadro)
    : tabela_(tabela), quadro_(quadro) {
    setObjectName("totais");
    setAccessibleName("Totais");
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    setFocusPolicy(Qt::NoFocus);
    QFont letra = font();
    letra.setBold(true);
    setFont(letra);
    viewport()->setBackgroundRole(QPalette::Window);
    pinta_fundo(*viewport(), cor_etiquetas);
    const auto pinta = [this] { viewport()->update(); };
    connect(tabela.horizontalHeader(), &QHeaderView::sectionResized, this, pinta);
    connect(tabela.horizontalHeader(), &QHeaderView::geometriesChanged, this, pinta);
    connect(tabela.horizontalScrollBar(), &QScrollBar::valueChanged, this, pinta);
    hide();
}

void TotaisQuadro::junta(const livro::consultas::Linha& total) {
    totais_.push_back(total);
    updateGeometry();
    show();
    diz();
}

void TotaisQuadro::define_parcial(bool parcial) {
    if (parcial == std::exchange(parcial_, parcial)) return;
    diz();
}

void TotaisQuadro::diz() {
    QStringList linhas;
    for (std::size_t i = 0; i < totais_.size(); ++i)
        linhas << em_palavras(i);
    setAccessibleDescription(linhas.join("; "));
    viewport()->update();
}

int TotaisQuadro::altura_da_linha() const { return fontMetrics().height() + folga; }

QSize TotaisQuadro::sizeHint() const { return {100, altura_da_linha() * static_cast<int>(totais_.size())}; }

QSize TotaisQuadro::minimumSizeHint() const { return {50, altura_da_linha()}; }

QString TotaisQuadro::texto(std::size_t linha, int coluna) const {
    const auto c = static_cast<std::size_t>(coluna);
    if (coluna == 0 && parcial_) return "De todas";
    return qs(saidas::numa_linha(saidas::escrito(quadro_.colunas[c], totais_[linha].at(c))));
}

QString TotaisQuadro::em_palavras(std::size_t linha) const {
    QStringList partes;
    for (int c = 1; c < static_cast<int>(quadro_.colunas.size()); ++c) {
        const auto& coluna = quadro_.colunas[static_cast<std::size_t>(c)];
        const QString este = texto(linha, c);
        if (!este.isEmpty()) partes << (coluna.a_direita() ? qs(coluna.titulo) + " " + este : este);
    }
    return texto(linha, 0) + ": " + partes.join(", ");
}

void TotaisQuadro::resizeEvent(QResizeEvent*) {
    const int falta = sizeHint().height() - viewport()->height();
    verticalScrollBar()->setRange(0, std::max(0, falta));
    verticalScrollBar()->setSingleStep(altura_da_linha());
    verticalScrollBar()->setPageStep(viewport()->height());
    setFocusPolicy(falta > 0 ? Qt::TabFocus : Qt::NoFocus); // to be scrolled by the keyboard
}

void TotaisQuadro::paintEvent(QPaintEvent*) {
    QPainter pintor(viewport());
    pintor.setFont(font());
    pintor.setPen(palette().color(parcial_ ? QPalette::PlaceholderText : QPalette::WindowText));
    const QHeaderView& titulos = *tabela_.horizontalHeader();
    const int esquerda = viewport()->mapFrom(window(), titulos.viewport()->mapTo(window(), QPoint())).x();
    for (std::size_t i = 0; i < totais_.size(); ++i) {
        const int topo = static_cast<int>(i) * altura_da_linha() - verticalScrollBar()->value();
        for (int c = 0; c < titulos.count(); ++c) {
            const QString este = texto(i, c);
            if (este.isEmpty() || tabela_.isColumnHidden(c)) continue;
            const QRect celula = lugar(i, c).translated(esquerda, topo).adjusted(margem, 0, -margem, 0);
            const bool a_direita = quadro_.colunas[static_cast<std::size_t>(c)].a_direita();
            pintor.drawText(celula, int(a_direita ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter,
                            fontMetrics().elidedText(este, Qt::ElideRight, celula.width()));
        }
    }
}

// Its column, and those beside it that have nothing to say: to the left of a number, to the right of a text.
QRect TotaisQuadro::lugar(std::size_t linha, int coluna) const {
    const QHeaderView& titulos = *tabela_.horizontalHeader();
    QRect onde(titulos.sectionViewportPosition(coluna), 0, titulos.sectionSize(coluna), altura_da_linha());
    const bool a_direita = quadro_.colunas[static_cast<std::size_t>(coluna)].a_direita();
    const int passo = a_direita ? -1 : 1;
    for (int c = coluna + passo; c >= 0 && c < titulos.count() && texto(linha, c).isEmpty(); c += passo)
        onde.adjust(a_direita ? -titulos.sectionSize(c) : 0, 0, a_direita ? 0 : titulos.sectionSize(c), 0);
    return onde;
}

bool TotaisQuadro::viewportEvent(QEvent* evento) {
    if (evento->type() != QEvent::ToolTip) return QAbstractScrollArea::viewportEvent(evento);
    const auto& ajuda = static_cast<const QHelpEvent&>(*evento);
    const int linha = (ajuda.pos().y() + verticalScrollBar()->value()) / altura_da_linha();
    const bool ha = linha >= 0 && linha < static_cast<int>(totais_.size());
    QToolTip::showText(
        ajuda.globalPos(),
        ha ? Qt::convertFromPlainText(em_palavras(static_cast<std::size_t>(linha))) : QString(), viewport());
    return true;
}

} // namespace orvex::platform::qt::consulta
