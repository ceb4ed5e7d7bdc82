#include "platform/qt/aplicacao.h"
#include "platform/qt/consulta/graficos.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace orvex::platform::qt::consulta {
namespace {

constexpr int folga = 6;
constexpr int passos = 4; // of the axis, or some more

// 1, 2 or 5 of some power of ten.
double passo_redondo(double ao_menos) {
    const double potencia = std::pow(10, std::floor(std::log10(ao_menos)));
    for (const double vezes : {1.0, 2.0, 5.0})
        if (vezes * potencia >= ao_menos * 0.999) return vezes * potencia;
    return 10 * potencia;
}

QString no_eixo(double valor, double passo) {
    const int casas = passo >= 1 ? 0 : static_cast<int>(std::ceil(-std::log10(passo) - 1e-9));
    return QString::number(valor, 'f', casas).replace('.', ',');
}

} // namespace

GraficoEvolucao::GraficoEvolucao(const livro::consultas::Recolhida::Parte& parte) : Grafico(parte) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize GraficoEvolucao::sizeHint() const { return {24 * 22, fontMetrics().height() * 10}; }

QSize GraficoEvolucao::minimumSizeHint() const { return {24 * 9, fontMetrics().height() * 7}; }

GraficoEvolucao::Eixo GraficoEvolucao::eixo() const {
    Eixo este{0, 0, 1};
    for (const Barra& barra : barras_) {
        este.maior = std::max(este.maior, barra.valor);
        este.menor = std::min(este.menor, barra.valor);
    }
    if (este.maior == este.menor) este.maior = 1;
    este.passo = passo_redondo(std::max(0.001, (este.maior - este.menor) / passos));
    este.maior = std::ceil(este.maior / este.passo - 1e-9) * este.passo;
    este.menor = std::floor(este.menor / este.passo + 1e-9) * este.passo;
    return este;
}

QRect GraficoEvolucao::area() const {
    const Eixo este = eixo();
    const QFontMetrics medidas = fontMetrics();
    const int numeros = std::max(medidas.horizontalAdvance(no_eixo(este.maior, este.passo)),
                                 medidas.horizontalAdvance(no_eixo(este.menor, este.passo)));
    // The unit stands over the axis, the months under it.
    return rect().adjusted(numeros + folga, 3 * medidas.height() / 2 + folga,
                           -medidas.horizontalAdvance("Nov 24") / 2, -medidas.height() - folga);
}

double GraficoEvolucao::y_de(double valor) const {
    const Eixo este = eixo();
    const QRectF dentro = area();
    return dentro.bottom() - (valor - este.menor) / (este.maior - este.menor) * dentro.height();
}

QRectF GraficoEvolucao::coluna(int qual) const {
    const QRectF dentro = area();
    const double passo = dentro.width() / static_cast<double>(barras_.size());
    const double valor = barras_[static_cast<std::size_t>(qual)].valor;
    const double topo = y_de(std::max(0.0, valor)), fundo = y_de(std::min(0.0, valor));
    return {dentro.left() + qual * passo + passo * 0.15, topo, passo * 0.7, fundo - topo};
}

int GraficoEvolucao::barra_em(QPoint lugar) const {
    const QRect dentro = area();
    if (lugar.x() < dentro.left() || lugar.x() >= dentro.right() || !rect().contains(lugar)) return -1;
    return static_cast<int>((lugar.x() - dentro.left()) * static_cast<double>(barras_.size()) /
                            dentro.width());
}

void GraficoEvolucao::pinta_eixo(QPainter& pintor) const {
    const Eixo este = eixo();
    const QRect dentro = area();
    const int altura = fontMetrics().height();
    const QColor tinta = palette().color(QPalette::WindowText);
    pintor.setPen(tinta);
    pintor.drawText(QRect(0, 0, width(), altura), Qt::AlignLeft | Qt::AlignVCenter, "Peso (t)");
    const int quantos = static_cast<int>(std::lround((este.maior - este.menor) / este.passo));
    for (int i = 0; i <= quantos; ++i) {
        const double valor = este.menor + i * este.passo;
        const double y = y_de(valor);
        const bool zero = std::abs(valor) < este.passo / 2;
        pintor.setPen(QPen(zero ? tinta : cor_etiquetas, 1));
        pintor.drawLine(QPointF(dentro.left(), y), QPointF(dentro.right(), y));
        pintor.setPen(tinta);
        pintor.drawText(QRectF(0, y - altura / 2.0, dentro.left() - folga, altura),
                        Qt::AlignRight | Qt::AlignVCenter, no_eixo(zero ? 0 : valor, este.passo));
    }
}

// As many as are readable, the newest always.
void GraficoEvolucao::pinta_meses(QPainter& pintor) const {
    const QRect dentro = area();
    const int quantas = static_cast<int>(barras_.size());
    const double passo = static_cast<double>(dentro.width()) / quantas;
    const int largura = fontMetrics().horizontalAdvance("Nov 24") + 2 * folga;
    const int cada = std::max(1, static_cast<int>(std::ceil(largura / passo)));
    for (int i = quantas - 1; i >= 0; i -= cada) {
        const double meio = dentro.left() + (i + 0.5) * passo;
        const QRectF onde(meio - largura / 2.0, dentro.bottom() + folga / 2, largura, fontMetrics().height());
        if (onde.left() < 0) continue;
        pintor.drawText(onde, Qt::AlignCenter, barras_[static_cast<std::size_t>(i)].nome);
    }
}

void GraficoEvolucao::paintEvent(QPaintEvent*) {
    QPainter pintor(this);
    pinta_eixo(pintor);
    for (int i = 0; i < static_cast<int>(barras_.size()); ++i)
        pintor.fillRect(coluna(i), i == apontada_ ? cor_titulo : palette().color(QPalette::Highlight));
    pintor.setPen(palette().color(QPalette::WindowText));
    pinta_meses(pintor);
}

} // namespace orvex::platform::qt::consulta
