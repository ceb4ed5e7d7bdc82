#include "platform/qt/papel/paginas.h"

#include <QDateTime>
#include <QPageRanges>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QRegularExpression>

#include <utility>

namespace orvex::platform::qt {

Tinta::Tinta(QPaintDevice& papel, QSizeF espaco)
    : papel_(papel), espaco_(espaco), por_ponto_(papel.logicalDpiY() / 72.0), normal(letra(8.5)),
      negrito(letra(8.5, true)), grande(letra(15, true)) {}

QFont Tinta::letra(qreal pontos, bool negrito_, bool italico) const {
    QFont esta;
    esta.setPointSizeF(pontos);
    esta.setBold(negrito_);
    esta.setItalic(italico);
    return {esta, &papel_};
}

QString Tinta::quebravel(QString texto) {
    static const QRegularExpression comprida("(\\S{20})(?=\\S)");
    return texto.replace(comprida, "\\1\u200B");
}

QString Tinta::a_caber(const QFont& letra, const QString& texto, qreal largura) const {
    constexpr QChar quebra(0x200B);
    const QFontMetricsF medidas_ = medidas(letra);
    QString todo, palavra;
    const auto acaba = [&] {
        const bool cabe = medidas_.horizontalAdvance(palavra) <= largura;
        for (const QChar sinal : std::exchange(palavra, {})) {
            todo += sinal;
            if (!cabe && !sinal.isHighSurrogate()) todo += quebra;
        }
    };
    for (const QChar sinal : texto) {
        const bool entre_palavras = sinal.isSpace() || sinal == quebra;
        if (entre_palavras) acaba();
        (entre_palavras ? todo : palavra) += sinal;
    }
    acaba();
    return todo;
}

qreal Tinta::altura(const QFont& letra, const QString& texto, qreal largura) const {
    return medidas(letra)
        .boundingRect(QRectF(0, 0, largura, espaco_.height()), Qt::TextWordWrap,
                      a_caber(letra, texto, largura))
        .height();
}

void Tinta::caneta(QPainter& pintor) const { pintor.setPen(QPen(Qt::black, pt(0.6))); }

void Tinta::escreve(QPainter& pintor, const QFont& letra, const Celulas& celulas, qreal topo) const {
    pintor.setFont(letra);
    for (const Celula& celula : celulas)
        pintor.drawText(celula.lugar.translated(0, topo),
                        Qt::TextWordWrap | Qt::AlignTop | (celula.a_direita ? Qt::AlignRight : Qt::AlignLeft),
                        a_caber(letra, celula.texto, celula.lugar.width()));
}

void Tinta::risca(QPainter& pintor, qreal y) const { pintor.drawLine(QPointF(0, y), QPointF(largura(), y)); }

void Tinta::risca_leve(QPainter& pintor, qreal y) const {
    pintor.setPen(QPen(Qt::lightGray, pt(0.3)));
    risca(pintor, y);
    caneta(pintor);
}

void Paginas::pinta_rodape(QPainter& pintor, int pagina) const {
    const QRectF pe(0, fundo() + pt(folga), largura(), pt(rodape - folga));
    risca(pintor, pe.top());
    escreve(pintor, normal,
            {{pe, "Impresso em " + QDateTime::currentDateTime().toString("dd-MM-yyyy HH:mm")},
             {pe, QString("Página %1 de %2").arg(pagina + 1).arg(paginas()), true}},
            pt(folga));
}

QSizeF espaco_de(const QPagedPaintDevice& papel) {
    return papel.pageLayout().paintRectPixels(papel.logicalDpiX()).size();
}

bool imprime(const Paginas& paginas, QPagedPaintDevice& papel, QPainter& pintor) {
    const QPageRanges pedidas = papel.pageRanges();
    for (int pagina = 0; pagina < paginas.paginas(); ++pagina) {
        if (!pedidas.isEmpty() && !pedidas.contains(pagina + 1)) continue;
        if (pintor.isActive() ? !papel.newPage() : !pintor.begin(&papel)) return false;
        paginas.pinta(pintor, pagina);
    }
    return pintor.end();
}

} // namespace orvex::platform::qt
