#include "platform/qt/pecas.h"

#include "base/versao.h"
#include "platform/qt/acesso.h"
#include "platform/qt/aplicacao.h"
#include "platform/qt/textos.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

namespace orvex::platform::qt {
namespace {

QLabel* novo_aviso_demonstracao() {
    auto* aviso = new QLabel("EMPRESA DE DEMONSTRAÇÃO");
    aviso->setObjectName("demonstracao");
    negrito(*aviso);
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
    const int marca = buddy() != nullptr ? Qt::TextShowMnemonic : 0;
    const QString todo = marca != 0 ? com_letra_de_acesso(text()) : text();
    pintor.drawText(area, int(alignment()) | Qt::TextSingleLine | marca,
                    fontMetrics().elidedText(todo, Qt::ElideRight, area.width(), marca));
}

bool EtiquetaElidida::event(QEvent* evento) {
    if (evento->type() != QEvent::ToolTip ||
        fontMetrics().horizontalAdvance(text()) <= contentsRect().width())
        return QLabel::event(evento);
    QToolTip::showText(static_cast<QHelpEvent*>(evento)->globalPos(), text().toHtmlEscaped(), this);
    return true;
}

AreaQueCabe::AreaQueCabe(QWidget* conteudo) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidget(conteudo);
}

QSize AreaQueCabe::sizeHint() const { return widget()->sizeHint(); }

QSize AreaQueCabe::minimumSizeHint() const {
    constexpr int altura = 150; // a grid and its heading
    return {widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width(), altura};
}

void negrito(QLabel& texto) {
    QFont letra = texto.font();
    letra.setBold(true);
    texto.setFont(letra);
}

QLabel* nova_legenda(const std::string& texto, QWidget* campo) {
    auto* legenda = new Legenda(qs(texto));
    if (campo == nullptr) return legenda;
    legenda->setToolTip(campo->toolTip());
    auto* linha = campo->findChild<QLineEdit*>(); // beside its list button
    legenda->setBuddy(linha != nullptr ? linha : campo);
    return legenda;
}

QLabel* par(QGridLayout& grelha, int linha, int coluna, const common::Controlo& controlo, QWidget* campo) {
    QLabel* legenda = nova_legenda(controlo.Legenda, campo);
    grelha.addWidget(legenda, linha, coluna);
    grelha.addWidget(campo, linha, coluna + 1, Qt::AlignLeft | Qt::AlignVCenter);
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
    disposicao->setContentsMargins(margem_janela, 6, margem_janela, 6);
    disposicao->addWidget(titulo, 1);
    if (sessao.demonstracao) disposicao->addWidget(novo_aviso_demonstracao());
    return faixa;
}

LinhaEstado::LinhaEstado(const EstadoSessao& sessao)
    : sessao_(sessao), texto_(new EtiquetaElidida), quem_(new EtiquetaElidida) {
    setObjectName("LinhaEstado");
    texto_->setObjectName("ajuda");
    auto* disposicao = new QHBoxLayout(this);
    disposicao->setContentsMargins(margem_janela, 3, margem_janela, 4);
    disposicao->setSpacing(18);
    disposicao->addWidget(texto_);
    disposicao->addStretch(1);
    // A long company name must not make the window wider than the screen; neither pushes the other out.
    for (QLabel* parte : {texto_, quem_})
        parte->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    quem_->setObjectName("sessao");
    disposicao->addWidget(quem_);
    mostra();
}

void LinhaEstado::mostra_ajuda(const QString& texto) {
    ajuda_ = texto;
    mostra();
}

void LinhaEstado::mostra_estado(const QString& texto) {
    if (!texto.isEmpty() && texto != estado_) aviso_.clear();
    estado_ = texto;
    mostra();
}

void LinhaEstado::mostra_feito(const QString& texto) {
    if (!texto.isEmpty() && texto != feito_) aviso_.clear();
    feito_ = texto;
    mostra();
}

void LinhaEstado::mostra_aviso(const QString& texto) {
    if (aviso_ == texto) return;
    aviso_ = texto;
    mostra();
}

void LinhaEstado::mostra_espera(std::optional<espera::Motivo> motivo) {
    espera_ = motivo;
    mostra();
}

void LinhaEstado::define_progresso(const QString& texto) { progresso_ = texto; }

QString LinhaEstado::texto() const {
    if (!espera_)
        return !aviso_.isEmpty()    ? aviso_
               : !estado_.isEmpty() ? estado_
               : !feito_.isEmpty()  ? feito_
                                    : ajuda_;
    switch (*espera_) {
    case espera::Motivo::posto:
        return "À espera de outro posto…";
    case espera::Motivo::erp:
        return "À espera do ERP…";
    case espera::Motivo::servidor:
        break;
    }
    return !progresso_.isEmpty() ? progresso_ : "À espera do servidor…";
}

void LinhaEstado::mostra() {
    texto_->setText(texto());
    const std::string aviso = sessao_.aviso ? sessao_.aviso() : "";
    quem_->setText(qs((aviso.empty() ? "" : aviso + "   ") + "Empresa: " + sessao_.empresa +
                      "   BD: " + sessao_.motor + "   Utilizador: " + sessao_.utilizador +
                      "   Versão: " + base::versao()));
}

} // namespace orvex::platform::qt
