#include "platform/qt/consulta/folha_etiquetas.h"

#include "platform/qt/consulta/code128.h"

#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace orvex::platform::qt::consulta {
namespace {

// In millimetres. A printer of 203 dots an inch puts its dots so far apart; two of them are the least that a
// module takes to be read at arm's length, and four are enough.
constexpr qreal ponto_grosso = 0.125, modulo_minimo = 2 * ponto_grosso, modulo_maximo = 4 * ponto_grosso;
constexpr qreal resolucao_fina = 500; // dots an inch

// Parts of the label's height within its margins.
constexpr qreal do_codigo = 0.24, da_designacao = 0.12, das_barras = 0.46;
constexpr int linhas_da_designacao = 2;

qreal largura_livre(const TamanhoDeEtiqueta& tamanho) {
    return tamanho.etiqueta.width() - 2 * tamanho.margem;
}

QFont letra_de(const QFont& base, qreal altura) {
    QFont letra = base;
    letra.setPixelSize(std::max(1, static_cast<int>(altura)));
    return letra;
}

} // namespace

const std::vector<TamanhoDeEtiqueta>& tamanhos_de_etiqueta() {
    static const std::vector<TamanhoDeEtiqueta> todos{
        {"50 x 25 mm", {50, 25}, 1.5},
        {"62 x 29 mm", {62, 29}, 2},
        {"100 x 50 mm", {100, 50}, 4},
        {"Folha A4 de 3 x 8 (70 x 37 mm)", {70, 37}, 5, 3, 8, {0, 0.5}},
        {"Folha A4 de 2 x 7 (99,1 x 38,1 mm)", {99.1, 38.1}, 4, 2, 7, {4.65, 15.15}, 2.5}};
    return todos;
}

QPageLayout folha_de(const TamanhoDeEtiqueta& tamanho) {
    const QPageSize tamanho_da_folha = tamanho.por_folha() > 1
                                           ? QPageSize(QPageSize::A4)
                                           : QPageSize(tamanho.etiqueta, QPageSize::Millimeter, tamanho.nome);
    QPageLayout folha(tamanho_da_folha, QPageLayout::Portrait, {}, QPageLayout::Millimeter);
    folha.setMode(QPageLayout::FullPageMode);
    return folha;
}

Cabe cabe(const TamanhoDeEtiqueta& tamanho, const Etiqueta& etiqueta) {
    const auto modulos = code128(etiqueta.codigo.toStdString());
    if (!modulos) return Cabe::letras;
    const auto quantos = static_cast<qreal>(modulos->size() + 2 * modulos_em_branco);
    return quantos * modulo_minimo <= largura_livre(tamanho) ? Cabe::sim : Cabe::nao;
}

FolhaEtiquetas::FolhaEtiquetas(const TamanhoDeEtiqueta& tamanho, std::vector<Etiqueta> etiquetas, int usadas,
                               QPaintDevice& papel, QSizeF espaco)
    : Paginas(papel, espaco), tamanho_(tamanho), etiquetas_(std::move(etiquetas)), usadas_(usadas) {}

int FolhaEtiquetas::paginas() const {
    const int lugares = usadas_ + static_cast<int>(etiquetas_.size());
    return (lugares + tamanho_.por_folha() - 1) / tamanho_.por_folha();
}

void FolhaEtiquetas::pinta(QPainter& pintor, int pagina) const {
    pintor.setPen(Qt::black);
    for (int lugar = 0; lugar < tamanho_.por_folha(); ++lugar) {
        const int qual = pagina * tamanho_.por_folha() + lugar - usadas_;
        if (qual < 0 || qual >= static_cast<int>(etiquetas_.size())) continue;
        const int coluna = lugar % tamanho_.colunas, linha = lugar / tamanho_.colunas;
        const QPointF canto(tamanho_.primeira.x() +
                                coluna * (tamanho_.etiqueta.width() + tamanho_.entre_colunas),
                            tamanho_.primeira.y() + linha * tamanho_.etiqueta.height());
        pinta(pintor, etiquetas_[static_cast<std::size_t>(qual)], {mm(canto.x()), mm(canto.y())});
    }
}

void FolhaEtiquetas::pinta(QPainter& pintor, const Etiqueta& etiqueta, QPointF canto) const {
    const QRectF livre(canto.x() + mm(tamanho_.margem), canto.y() + mm(tamanho_.margem),
                       mm(largura_livre(tamanho_)), mm(tamanho_.etiqueta.height() - 2 * tamanho_.margem));
    QFont letra = letra_de(negrito, livre.height() * do_codigo * 0.8);
    const qreal larga = medidas(letra).horizontalAdvance(etiqueta.codigo);
    if (larga > livre.width()) letra = letra_de(negrito, letra.pixelSize() * livre.width() / larga);
    pintor.setFont(letra);
    pintor.drawText(QRectF(livre.x(), livre.y(), livre.width(), livre.height() * do_codigo),
                    Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextSingleLine, etiqueta.codigo);
    letra = letra_de(normal, livre.height() * da_designacao * 0.78);
    pintor.setFont(letra);
    QTextLayout texto(etiqueta.designacao.simplified(), letra);
    texto.beginLayout();
    for (int i = 0; i < linhas_da_designacao; ++i) {
        QTextLine linha = texto.createLine();
        if (!linha.isValid()) break;
        linha.setLineWidth(livre.width());
        const bool ultima = i + 1 == linhas_da_designacao;
        const QString escrita = ultima ? medidas(letra).elidedText(texto.text().mid(linha.textStart()),
                                                                   Qt::ElideRight, livre.width())
                                       : texto.text().mid(linha.textStart(), linha.textLength());
        pintor.drawText(QRectF(livre.x(), livre.y() + livre.height() * (do_codigo + i * da_designacao),
                               livre.width(), livre.height() * da_designacao),
                        Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextSingleLine, escrita.trimmed());
    }
    texto.endLayout();
    if (const auto modulos = code128(etiqueta.codigo.toStdString()))
        pinta_barras(pintor, *modulos,
                     {livre.x(), livre.bottom() - livre.height() * das_barras, livre.width(),
                      livre.height() * das_barras});
}

// In whole dots of the printer where they are coarse; a fine one, or a file, may be printed by a coarse one.
void FolhaEtiquetas::pinta_barras(QPainter& pintor, const std::vector<bool>& modulos,
                                  const QRectF& lugar) const {
    const qreal ponto = pt(72) < resolucao_fina ? 1 : mm(ponto_grosso);
    const qreal cabem = lugar.width() / static_cast<qreal>(modulos.size() + 2 * modulos_em_branco);
    const qreal no_maximo = std::round(mm(modulo_maximo) / ponto);
    const qreal modulo = ponto * std::clamp(std::floor(cabem / ponto), 1.0, std::max(1.0, no_maximo));
    const qreal barras = modulo * static_cast<qreal>(modulos.size());
    qreal x = ponto * std::round((lugar.x() + (lugar.width() - barras) / 2) / ponto);
    for (auto i = modulos.begin(); i != modulos.end();) {
        const auto fim = std::find(i, modulos.end(), !*i);
        const qreal larga = modulo * static_cast<qreal>(fim - i);
        if (*i)
            pintor.fillRect(QRectF(x, std::round(lugar.y()), larga, std::round(lugar.height())), Qt::black);
        x += larga;
        i = fim;
    }
}

} // namespace orvex::platform::qt::consulta
