#include "platform/qt/papel/folha.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/textos.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace orvex::platform::qt {
namespace {

using delivery::FolhaGuia;

// All in points.
constexpr qreal faixa = 62, entre_blocos = 10;
constexpr qreal largura_artigo = 74, largura_doc = 78, largura_peso = 74, largura_legenda = 92;

} // namespace

Folha::Folha(FolhaGuia guia, QPaintDevice& papel, QSizeF espaco)
    : Paginas(papel, espaco), guia_(std::move(guia)), texto_(letra(8.5, false, true)) {
    const qreal pesos = largura() - 2 * pt(largura_peso);
    colunas_ = {0, pt(largura_artigo), pesos - pt(largura_doc), pesos, pesos + pt(largura_peso), largura()};
    const bool com_documento = std::any_of(guia_.linhas.begin(), guia_.linhas.end(),
                                           [](const Linha& linha) { return !linha.Doc.empty(); });
    titulos_ = {"Artigo", "Designação", com_documento ? "Documento" : "", "P.Liq. (t)", "Peso Bruto (t)"};
    pagina();
}

// Layout

// Of a line of text in the hand of one who writes between the lines; headings and totals stand out.
QFont Folha::letra(const Linha& linha) const {
    if (&linha == &titulos_ || &linha == &guia_.totais) return negrito;
    return linha.Artigo.empty() ? texto_ : normal;
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
        const QString texto = quebravel(qs(*textos[i]));
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
        const QString texto = quebravel(qs(dado.texto));
        const qreal alta = altura(normal, texto, do_texto);
        resultado.push_back({{x, y, pt(largura_legenda), alta}, qs(dado.legenda)});
        resultado.push_back({{x + pt(largura_legenda), y, do_texto, alta}, texto});
        y += alta + pt(folga);
    }
    return resultado;
}

qreal Folha::altura_dos_dados() const {
    qreal fim = 0;
    for (const auto* dados : {&guia_.dados, &guia_.transporte})
        for (const Celula& celula : celulas(*dados, 0, largura() / 2 - pt(entre_blocos)))
            fim = std::max(fim, celula.lugar.bottom());
    return fim;
}

// The totals never stand alone on a page: they take the last line along.
void Folha::pagina() {
    const qreal fim = fundo();
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

void Folha::pinta_faixa(QPainter& pintor) const {
    const QRectF toda(0, 0, largura(), pt(faixa - entre_blocos));
    const QFontMetricsF medidas_negrito = medidas(negrito);
    const QString estado = qs(guia_.estado);
    const qreal livre = toda.width() - medidas_negrito.horizontalAdvance(estado) - pt(entre_blocos);
    escreve(
        pintor, negrito,
        {{toda, medidas_negrito.elidedText(qs(guia_.empresa), Qt::ElideRight, livre)}, {toda, estado, true}},
        0);
    escreve(pintor, grande, {{toda.translated(0, pt(14)), qs(guia_.titulo + " " + guia_.numero)}}, 0);
    const QString aviso = qs(FolhaGuia::aviso);
    const qreal larga = medidas_negrito.horizontalAdvance(aviso) + pt(14);
    const QRectF caixa(toda.right() - larga, pt(17), larga, pt(20));
    pintor.setFont(negrito);
    pintor.drawRect(caixa);
    pintor.drawText(caixa, Qt::AlignCenter, aviso);
    risca(pintor, pt(faixa - entre_blocos - 4));
}

void Folha::pinta_dados(QPainter& pintor) const {
    const qreal meia = largura() / 2;
    for (const auto& [dados, x] : {std::pair{&guia_.dados, 0.0}, std::pair{&guia_.transporte, meia}})
        escreve(pintor, normal, celulas(*dados, x, meia - pt(entre_blocos)), pt(faixa));
}

void Folha::pinta(QPainter& pintor, int pagina) const {
    const Pagina& esta = paginas_.at(static_cast<std::size_t>(pagina));
    caneta(pintor);
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
    pintor.fillRect(QRectF(0, y, largura(), altura(titulos_)), cor_etiquetas);
    linha(titulos_);
    for (std::size_t i = esta.primeira; i < esta.fim; ++i) {
        linha(guia_.linhas[i]);
        risca_leve(pintor, y);
    }
    if (pagina + 1 == paginas()) {
        risca(pintor, y);
        linha(guia_.totais);
    }
    pinta_rodape(pintor, pagina);
}

} // namespace orvex::platform::qt
