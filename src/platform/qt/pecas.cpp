#include "platform/qt/pecas.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/textos.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace orvex::platform::qt {
namespace {

QLabel* novo_aviso_demonstracao() {
    auto* aviso = new QLabel("EMPRESA DE DEMONSTRAÇÃO");
    aviso->setObjectName("demonstracao");
    QFont letra = aviso->font();
    letra.setBold(true);
    aviso->setFont(letra);
    aviso->setMargin(3);
    aviso->setContentsMargins(6, 0, 6, 0);
    pinta_fundo(*aviso, cor_aviso, Qt::black);
    return aviso;
}

} // namespace

EtiquetaElidida::EtiquetaElidida(QWidget* pai) : QLabel(pai) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

QSize EtiquetaElidida::minimumSizeHint() const { return {20, QLabel::minimumSizeHint().height()}; }

void EtiquetaElidida::paintEvent(QPaintEvent*) {
    QPainter pintor(this);
    const QRect area = contentsRect();
    pintor.drawText(area, int(alignment()) | Qt::TextSingleLine,
                    fontMetrics().elidedText(text(), Qt::ElideRight, area.width()));
}

bool EtiquetaElidida::event(QEvent* evento) {
    if (evento->type() != QEvent::ToolTip ||
        fontMetrics().horizontalAdvance(text()) <= contentsRect().width())
        return QLabel::event(evento);
    QToolTip::showText(static_cast<QHelpEvent*>(evento)->globalPos(), text().toHtmlEscaped(), this);
    return true;
}

QLabel* nova_legenda(const std::string& texto, QWidget* campo) {
    auto* legenda = new QLabel(qs(texto));
    legenda->setTextFormat(Qt::PlainText);
    if (campo != nullptr) legenda->setToolTip(campo->toolTip());
    return legenda;
}

QWidget* nova_faixa_titulo(QLabel* titulo, const EstadoSessao& sessao) {
    auto* faixa = new QWidget;
    pinta_fundo(*faixa, cor_titulo);
    QFont letra = titulo->font();
    letra.setPointSizeF(letra.pointSizeF() * 1.7);
    titulo->setFont(letra);
    QPalette cores = titulo->palette();
    cores.setColor(QPalette::WindowText, Qt::white);
    titulo->setPalette(cores);
    auto* disposicao = new QHBoxLayout(faixa);
    disposicao->setContentsMargins(14, 6, 14, 6);
    disposicao->addWidget(titulo, 1);
    if (sessao.demonstracao) disposicao->addWidget(novo_aviso_demonstracao());
    return faixa;
}

LinhaEstado::LinhaEstado(const EstadoSessao& sessao) : ajuda_(new EtiquetaElidida) {
    setObjectName("LinhaEstado");
    ajuda_->setObjectName("ajuda");
    auto* disposicao = new QHBoxLayout(this);
    disposicao->setContentsMargins(14, 3, 14, 4);
    disposicao->setSpacing(18);
    disposicao->addWidget(ajuda_, 1);
    auto* quem = new QLabel(qs("Empresa: " + sessao.empresa + "   Base de dados: " + sessao.motor +
                               "   Utilizador: " + sessao.utilizador));
    quem->setObjectName("sessao");
    quem->setTextFormat(Qt::PlainText);
    disposicao->addWidget(quem);
}

} // namespace orvex::platform::qt
