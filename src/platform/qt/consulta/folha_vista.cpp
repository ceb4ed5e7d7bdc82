#include "platform/qt/consulta/folha_vista.h"

#include "platform/qt/papel/impressao.h"
#include "platform/qt/textos.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>

namespace orvex::platform::qt::consulta {
namespace {

constexpr qreal entre_blocos = 12; // in points

QString em_palavras(const std::vector<livro::consultas::Filtro>& filtros) {
    QStringList todos;
    for (const auto& filtro : filtros)
        todos << qs(filtro.nome) + ": " + qs(filtro.valor);
    return todos.join("     ");
}

} // namespace

FolhaVista::FolhaVista(const Impressa& esta, QPaintDevice& papel, QSizeF espaco)
    : Paginas(papel, espaco), empresa_(esta.empresa), titulo_(qs(esta.vista.cabecalho.titulo)),
      filtros_(quebravel(em_palavras(esta.vista.cabecalho.filtros))) {
    faixa_ = pt(36) + pt(entre_blocos) + (filtros_.isEmpty() ? 0 : altura(normal, filtros_, largura()));
    for (const Parte& parte : esta.vista.partes)
        blocos_.push_back(novo_bloco(*this, parte));
    if (!esta.fecho.empty()) blocos_.push_back(novo_fecho(*this, esta.fecho));
    pagina();
}

void FolhaVista::pagina() {
    paginas_.emplace_back();
    qreal y = faixa_;
    for (const auto& bloco : blocos_)
        pagina(*bloco, y);
}

// What is above the rows never stands without one, nor what is below them.
void FolhaVista::pagina(const Bloco& bloco, qreal& y) {
    const std::size_t linhas = bloco.linhas();
    const qreal cabeca = bloco.cabeca(), pe = bloco.pe();
    for (std::size_t i = 0; i < linhas;) {
        const std::size_t primeira = i;
        const qreal topo = y;
        y += cabeca;
        for (; i < linhas; ++i) {
            const qreal alta = bloco.altura(i);
            if (y + alta + (i + 1 == linhas ? pe : 0) > fundo() && (i > primeira || topo > faixa_)) break;
            y += alta;
        }
        if (i > primeira) paginas_.back().push_back({&bloco, primeira, i, topo});
        if (i == linhas) break;
        paginas_.emplace_back();
        y = faixa_;
    }
    y += pe + pt(entre_blocos);
}

void FolhaVista::pinta_faixa(QPainter& pintor) const {
    escreve(pintor, negrito, {{{0, 0, largura(), pt(14)}, empresa_}}, 0);
    escreve(pintor, grande, {{{0, 0, largura(), pt(22)}, titulo_}}, pt(13));
    if (!filtros_.isEmpty())
        escreve(pintor, normal, {{{0, 0, largura(), faixa_ - pt(36)}, filtros_}}, pt(34));
    risca(pintor, faixa_ - pt(entre_blocos) + pt(2));
}

void FolhaVista::pinta(QPainter& pintor, int pagina) const {
    caneta(pintor);
    pinta_faixa(pintor);
    for (const Troco& troco : paginas_.at(static_cast<std::size_t>(pagina)))
        troco.bloco->pinta(pintor, troco.primeira, troco.fim, troco.y);
    pinta_rodape(pintor, pagina);
}

QPageLayout folha_para(const livro::consultas::Recolhida& vista) {
    QBuffer nada;
    nada.open(QIODevice::WriteOnly);
    QPdfWriter papel(&nada);
    papel.setPageLayout(folha_a4());
    const Tinta tinta(papel, espaco_de(papel));
    const bool larga = std::any_of(vista.partes.begin(), vista.partes.end(), [&](const Parte& parte) {
        return largura_natural(tinta, parte) > tinta.largura();
    });
    return folha_a4(larga ? QPageLayout::Landscape : QPageLayout::Portrait);
}

} // namespace orvex::platform::qt::consulta
