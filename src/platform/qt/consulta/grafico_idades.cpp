#include "platform/qt/aplicacao.h"
#include "platform/qt/consulta/graficos.h"

#include <QPainter>

#include <algorithm>

namespace orvex::platform::qt::consulta {
namespace {

constexpr int folga = 8;

template <typename Qual>
int mais_larga(const std::vector<Barra>& barras, const QFontMetrics& medidas, Qual qual) {
    int largura = 0;
    for (const Barra& barra : barras)
        largura = std::max(largura, medidas.horizontalAdvance(qual(barra)));
    return largura;
}

} // namespace

GraficoIdades::GraficoIdades(const livro::consultas::Recolhida::Parte& parte) : Grafico(parte) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

int GraficoIdades::altura() const { return fontMetrics().height() + folga; }

QSize GraficoIdades::sizeHint() const {
    return {minimumSizeHint().width() + 160, altura() * static_cast<int>(barras_.size())};
}

QSize GraficoIdades::minimumSizeHint() const {
    const auto nome = [](const Barra& esta) { return esta.nome; };
    const auto artigos = [](const Barra& esta) { return esta.artigos; };
    const auto peso = [](const Barra& esta) { return esta.peso; };
    const int textos = mais_larga(barras_, fontMetrics(), nome) +
                       mais_larga(barras_, fontMetrics(), artigos) + mais_larga(barras_, fontMetrics(), peso);
    return {textos + 60 + 4 * folga, altura() * static_cast<int>(barras_.size())};
}

int GraficoIdades::barra_em(QPoint lugar) const {
    const int qual = lugar.y() / altura();
    return rect().contains(lugar) && qual < static_cast<int>(barras_.size()) ? qual : -1;
}

void GraficoIdades::paintEvent(QPaintEvent*) {
    QPainter pintor(this);
    const QFontMetrics medidas = fontMetrics();
    const int nomes = mais_larga(barras_, medidas, [](const Barra& esta) { return esta.nome; });
    const int artigos = mais_larga(barras_, medidas, [](const Barra& esta) { return esta.artigos; });
    const int pesos = mais_larga(barras_, medidas, [](const Barra& esta) { return esta.peso; });
    const int esquerda = nomes + folga;
    const int direita = width() - artigos - pesos - 3 * folga;
    double maior = 0;
    for (const Barra& barra : barras_)
        maior = std::max(maior, barra.valor);
    for (std::size_t i = 0; i < barras_.size(); ++i) {
        const Barra& esta = barras_[i];
        const int y = static_cast<int>(i) * altura();
        const QRect calha(esquerda, y + 3, std::max(0, direita - esquerda), altura() - 6);
        pintor.setPen(palette().color(QPalette::WindowText));
        pintor.drawText(QRect(0, y, nomes, altura()), Qt::AlignVCenter | Qt::AlignLeft, esta.nome);
        pintor.drawText(QRect(direita + folga, y, artigos, altura()), Qt::AlignVCenter | Qt::AlignRight,
                        esta.artigos);
        pintor.drawText(QRect(width() - pesos, y, pesos, altura()), Qt::AlignVCenter | Qt::AlignRight,
                        esta.peso);
        pintor.fillRect(calha, cor_etiquetas);
        if (maior <= 0 || esta.valor <= 0) continue;
        QRectF cheia(calha);
        cheia.setWidth(std::max(2.0, calha.width() * esta.valor / maior));
        pintor.fillRect(cheia,
                        static_cast<int>(i) == apontada_ ? cor_titulo : palette().color(QPalette::Highlight));
    }
}

} // namespace orvex::platform::qt::consulta
