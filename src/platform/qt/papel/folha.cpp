#include "platform/qt/papel/folha.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/textos.h"

#include <QDateTime>
#include <QFontMetricsF>
#include <QPageRanges>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace orvex::platform::qt {
namespace {

using delivery::FolhaGuia;

// All in points.
constexpr qreal faixa = 62, rodape = 22, entre_blocos = 10, folga = 3; // around the text of a cell
constexpr qreal largura_artigo = 74, largura_doc = 78, largura_peso = 74, largura_legenda = 92;

QFont com(QFont letra, qreal pontos, bool negrito = false, bool italico = false) {
    letra.setPointSizeF(pontos);
    letra.setBold(negrito);
    letra.setItalic(italico);
    return letra;
}

// A word that is longer than its column may be broken too.
QString quebravel(const std::string& texto) {
    static const QRegularExpression comprida("(\\S{20})(?=\\S)");
    return qs(texto).replace(comprida, "\\1\u200B");
}

} // namespace

Folha::Folha(FolhaGuia guia, QPaintDevice& papel, QSizeF espaco)
    : guia_(std::move(guia)), papel_(papel), espaco_(espaco), por_ponto_(papel.logicalDpiY() / 72.0),
      normal_(com({}, 8.5), &papel), negrito_(com({}, 8.5, true), &papel),
      texto_(com({}, 8.5, false, true), &papel), grande_(com({}, 15, true), &papel) {
    const qreal pesos = espaco.width() - 2 * pt(largura_peso);
    colunas_ = {0,     pt(largura_artigo),       pesos - pt(largura_doc),
                pesos, pesos + pt(largura_peso), espaco.width()};
    const bool com_documento = std::any_of(guia_.linhas.begin(), guia_.linhas.end(),
                                           [](const Linha& linha) { return !linha.Doc.empty(); });
    titulos_ = {"Artigo", "Designação", com_documento ? "Documento" : "", "P.Liq. (t)", "Peso Bruto (t)"};
    pagina();
}

// Layout

qreal Folha::altura(const QFont& letra, const QString& texto, qreal largura) const {
    return QFontMetricsF(letra, &papel_)
        .boundingRect(QRectF(0, 0, largura, espaco_.height()), Qt::TextWordWrap, texto)
        .height();
}

// Of a line of text in the hand of one who writes between the lines; headings and totals stand out.
QFont Folha::letra(const Linha& linha) const {
    if (&linha == &titulos_ || &linha == &guia_.totais) return negrito_;
    return linha.Artigo.empty() ? texto_ : normal_;
}

Folha::Celulas Folha::celulas(const Linha& linha) const {
    const std::string* textos[] = {&linha.Artigo, &linha.Nome, &linha.Doc, &linha.PesoLiquido,
                                   &linha.PesoBruto};
    Celulas resultado;
    for (std::size_t i = 0; i < std::size(textos); ++i) {
        if (textos[i]->empty()) continue;
        const bool so_texto = i == 1 && linha.Doc.empty();
        const qreal fim = colunas_[so_texto ? 3 : i + 1];
        const qreal largura = fim - colunas_[i] - 2 * pt(folga);
        const QString texto = quebravel(*textos[i]);
        const qreal alta = altura(letra(linha), texto, largura);
        resultado.push_back({{colunas_[i] + pt(folga), pt(folga), largura, alta}, texto, i >= 3});
    }
    return resultado;
}

qreal Folha::altura(const Linha& linha) const {
    qreal mais_alta = 0;
    for (const Celula& celula : celulas(linha))
        mais_alta = std::max(mais_alta, celula.lugar.bottom());
    return mais_alta + pt(folga);
}

// Label and text, one below the other.
Folha::Celulas Folha::celulas(const std::vector<FolhaGuia::Dado>& dados, qreal x, qreal largura) const {
    Celulas resultado;
    qreal y = 0;
    for (const FolhaGuia::Dado& dado : dados) {
        const qreal do_texto = largura - pt(largura_legenda);
        const QString texto = quebravel(dado.texto);
        const qreal alta = altura(normal_, texto, do_texto);
        resultado.push_back({{x, y, pt(largura_legenda), alta}, qs(dado.legenda)});
        resultado.push_back({{x + pt(largura_legenda), y, do_texto, alta}, texto});
        y += alta + pt(folga);
    }
    return resultado;
}

qreal Folha::altura_dos_dados() const {
    qreal fim = 0;
    for (const auto* dados : {&guia_.dados, &guia_.transporte})
        for (const Celula& celula : celulas(*dados, 0, espaco_.width() / 2 - pt(entre_blocos)))
            fim = std::max(fim, celula.lugar.bottom());
    return fim;
}

// The totals never stand alone on a page: they take the last line along.
void Folha::pagina() {
    const qreal fim = espaco_.height() - pt(rodape);
    const qreal topo = pt(faixa) + altura(titulos_);
    qreal y = topo + altura_dos_dados() + 2 * pt(entre_blocos);
    paginas_ = {{0, 0}};
    for (std::size_t i = 0; i < guia_.linhas.size(); ++i) {
        const qreal alta = altura(guia_.linhas[i]);
        const bool ultima = i + 1 == guia_.linhas.size();
        if (y + alta + (ultima ? altura(guia_.totais) : 0) > fim &&
            paginas_.back().fim > paginas_.back().primeira) {
            paginas_.push_back({i, i});
            y = topo;
        }
        paginas_.back().fim = i + 1;
        y += alta;
    }
}

// Ink

void Folha::escreve(QPainter& pintor, const QFont& letra, const Celulas& celulas, qreal topo) const {
    pintor.setFont(letra);
    for (const Celula& celula : celulas)
        pintor.drawText(celula.lugar.translated(0, topo),
                        Qt::TextWordWrap | Qt::AlignTop | (celula.a_direita ? Qt::AlignRight : Qt::AlignLeft),
                        celula.texto);
}

void Folha::risca(QPainter& pintor, qreal y) const {
    pintor.drawLine(QPointF(0, y), QPointF(espaco_.width(), y));
}

void Folha::pinta_faixa(QPainter& pintor) const {
    const QRectF toda(0, 0, espaco_.width(), pt(faixa - entre_blocos));
    const QFontMetricsF medidas(negrito_, &papel_);
    const QString estado = qs(guia_.estado);
    const qreal livre = toda.width() - medidas.horizontalAdvance(estado) - pt(entre_blocos);
    escreve(pintor, negrito_,
            {{toda, medidas.elidedText(qs(guia_.empresa), Qt::ElideRight, livre)}, {toda, estado, true}}, 0);
    escreve(pintor, grande_, {{toda.translated(0, pt(14)), qs(guia_.titulo + " " + guia_.numero)}}, 0);
    const QString aviso = qs(FolhaGuia::aviso);
    const qreal larga = medidas.horizontalAdvance(aviso) + pt(14);
    const QRectF caixa(toda.right() - larga, pt(17), larga, pt(20));
    pintor.setFont(negrito_);
    pintor.drawRect(caixa);
    pintor.drawText(caixa, Qt::AlignCenter, aviso);
    risca(pintor, pt(faixa - entre_blocos - 4));
}

void Folha::pinta_dados(QPainter& pintor) const {
    const qreal meia = espaco_.width() / 2;
    for (const auto& [dados, x] : {std::pair{&guia_.dados, 0.0}, std::pair{&guia_.transporte, meia}})
        escreve(pintor, normal_, celulas(*dados, x, meia - pt(entre_blocos)), pt(faixa));
}

void Folha::pinta(QPainter& pintor, int pagina) const {
    const Pagina& esta = paginas_.at(static_cast<std::size_t>(pagina));
    pintor.setPen(QPen(Qt::black, pt(0.6)));
    pinta_faixa(pintor);
    qreal y = pt(faixa);
    if (pagina == 0) {
        pinta_dados(pintor);
        y += altura_dos_dados() + 2 * pt(entre_blocos);
    }
    const auto linha = [&](const Linha& qual) {
        escreve(pintor, letra(qual), celulas(qual), y);
        y += altura(qual);
    };
    pintor.fillRect(QRectF(0, y, espaco_.width(), altura(titulos_)), cor_etiquetas);
    linha(titulos_);
    for (std::size_t i = esta.primeira; i < esta.fim; ++i) {
        linha(guia_.linhas[i]);
        pintor.setPen(QPen(Qt::lightGray, pt(0.3)));
        risca(pintor, y);
        pintor.setPen(QPen(Qt::black, pt(0.6)));
    }
    if (pagina + 1 == paginas()) {
        risca(pintor, y);
        linha(guia_.totais);
    }
    const QRectF pe(0, espaco_.height() - pt(rodape) + pt(folga), espaco_.width(), pt(rodape - folga));
    risca(pintor, pe.top());
    escreve(pintor, normal_,
            {{pe, "Impresso em " + QDateTime::currentDateTime().toString("dd-MM-yyyy HH:mm")},
             {pe, QString("Página %1 de %2").arg(pagina + 1).arg(paginas()), true}},
            pt(folga));
}

Folha folha_em(const FolhaGuia& guia, QPagedPaintDevice& papel) {
    return {guia, papel, papel.pageLayout().paintRectPixels(papel.logicalDpiX()).size()};
}

bool imprime(const FolhaGuia& guia, QPagedPaintDevice& papel, QPainter& pintor) {
    const Folha folha = folha_em(guia, papel);
    const QPageRanges pedidas = papel.pageRanges();
    for (int pagina = 0; pagina < folha.paginas(); ++pagina) {
        if (!pedidas.isEmpty() && !pedidas.contains(pagina + 1)) continue;
        if (pintor.isActive() ? !papel.newPage() : !pintor.begin(&papel)) return false;
        folha.pinta(pintor, pagina);
    }
    return pintor.end();
}

} // namespace orvex::platform::qt
