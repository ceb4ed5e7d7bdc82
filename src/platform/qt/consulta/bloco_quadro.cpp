#include "platform/qt/consulta/bloco_quadro.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/textos.h"
#include "platform/saidas/saidas.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace orvex::platform::qt::consulta {
namespace {

using livro::consultas::Tipo;

// In points.
constexpr qreal altura_do_titulo = 18, minimo_de_texto = 46, maximo_de_texto = 230;
constexpr qreal letra_normal = 8.5, letra_menor = 5, degrau = 0.25;

QString celula(const livro::consultas::Coluna& coluna, const base::Variante& valor) {
    QString texto = qs(saidas::escrito(coluna, valor));
    return texto.size() > 20 ? Tinta::quebravel(texto) : texto;
}

// Of a column: what its widest text takes, and how far it may give way.
struct Largura {
    qreal pedida = 0, minima = 0;
};

qreal maior_palavra(const Medidor& medidor, const QString& texto) {
    qreal maior = 0;
    for (const QString& palavra : texto.split(' '))
        maior = std::max(maior, medidor.largura(palavra));
    return maior;
}

std::vector<Largura> larguras_pedidas(const Tinta& tinta, const Parte& parte, const Medidor& normal,
                                      const Medidor& negrito) {
    std::vector<Largura> todas(parte.quadro.colunas.size());
    const auto mede = [&](const livro::consultas::Linha& linha, const Medidor& medidor) {
        for (std::size_t i = 0; i < linha.size(); ++i)
            todas[i].pedida =
                std::max(todas[i].pedida, medidor.largura(celula(parte.quadro.colunas[i], linha[i])));
    };
    for (const auto& linha : parte.linhas)
        mede(linha, normal);
    for (const auto& linha : parte.totais)
        mede(linha, negrito);
    for (std::size_t i = 0; i < todas.size(); ++i) {
        const auto& coluna = parte.quadro.colunas[i];
        Largura& esta = todas[i];
        // Texts and headings may be wrapped; of a number, a date or a code every sign is needed.
        const qreal precisa =
            coluna.tipo == Tipo::texto ? std::min(esta.pedida, tinta.pt(minimo_de_texto)) : esta.pedida;
        esta.minima = std::max(precisa, maior_palavra(negrito, qs(coluna.titulo)));
        esta.pedida = std::max(esta.pedida, negrito.largura(qs(coluna.titulo)));
        if (coluna.tipo == Tipo::texto)
            esta.pedida = std::max(esta.minima, std::min(esta.pedida, tinta.pt(maximo_de_texto)));
        esta.pedida += 2 * tinta.pt(Tinta::folga);
        esta.minima += 2 * tinta.pt(Tinta::folga);
    }
    return todas;
}

qreal soma_de(const std::vector<Largura>& larguras, qreal Largura::*qual) {
    return std::accumulate(larguras.begin(), larguras.end(), 0.0,
                           [&](qreal soma, const Largura& esta) { return soma + esta.*qual; });
}

// Texts give way first, the longest most, and then headings; where that is not enough, all columns do.
std::vector<qreal> encolhe(std::vector<Largura> larguras,
                           const std::vector<livro::consultas::Coluna>& colunas, qreal cabem, qreal passo) {
    qreal a_mais = soma_de(larguras, &Largura::pedida) - cabem;
    for (const bool so_textos : {true, false})
        while (a_mais > 0.5) {
            Largura* maior = nullptr;
            for (std::size_t i = 0; i < larguras.size(); ++i)
                if ((!so_textos || colunas[i].tipo == Tipo::texto) &&
                    larguras[i].pedida > larguras[i].minima &&
                    (maior == nullptr || larguras[i].pedida > maior->pedida))
                    maior = &larguras[i];
            if (maior == nullptr) break;
            const qreal menos = std::min({a_mais, maior->pedida - maior->minima, passo});
            maior->pedida -= menos;
            a_mais -= menos;
        }
    std::vector<qreal> resultado;
    for (const Largura& esta : larguras)
        resultado.push_back(a_mais > 0.5 ? esta.pedida * cabem / (cabem + a_mais) : esta.pedida);
    return resultado;
}

// A table that is nearly as wide as the sheet is as wide: its texts take what is left.
void estica(std::vector<qreal>& larguras, const std::vector<livro::consultas::Coluna>& colunas, qreal cabem) {
    constexpr qreal quase = 0.6;
    const qreal soma = std::accumulate(larguras.begin(), larguras.end(), 0.0);
    const auto textos = std::count_if(colunas.begin(), colunas.end(),
                                      [](const auto& coluna) { return coluna.tipo == Tipo::texto; });
    if (textos == 0 || soma >= cabem || soma < quase * cabem) return;
    for (std::size_t i = 0; i < larguras.size(); ++i)
        if (colunas[i].tipo == Tipo::texto) larguras[i] += (cabem - soma) / static_cast<qreal>(textos);
}

} // namespace

Medidor::Medidor(const Tinta& tinta, const QFont& letra) : medidas_(tinta.medidas(letra)) {
    for (std::size_t i = 0; i < letras_.size(); ++i)
        letras_[i] = medidas_.horizontalAdvance(QChar(static_cast<char16_t>(i)));
}

qreal Medidor::largura(const QString& texto) const {
    constexpr qreal a_mais = 1.01; // letters side by side are seldom further apart than each alone
    qreal maior = 0, esta = 0;
    for (const QChar letra : texto) {
        if (letra == '\n')
            esta = 0;
        else if (letra.unicode() < letras_.size())
            esta += letras_[letra.unicode()];
        else if (letra != QChar(0x200B))
            esta += medidas_.horizontalAdvance(letra);
        maior = std::max(maior, esta);
    }
    return maior * a_mais;
}

qreal largura_natural(const Tinta& tinta, const Parte& parte) {
    if (parte.quadro.ficha) return 0;
    return soma_de(
        larguras_pedidas(tinta, parte, Medidor(tinta, tinta.normal), Medidor(tinta, tinta.negrito)),
        &Largura::pedida);
}

BlocoQuadro::BlocoQuadro(const Tinta& tinta, const Parte& parte) : Bloco(tinta), parte_(parte) {
    std::vector<qreal> larguras = escolhe_letra();
    de_uma_linha_ = tinta.medidas(letra(Papel::total)).height();
    estica(larguras, parte.quadro.colunas, tinta.largura());
    comecos_ = {0};
    for (const qreal largura : larguras)
        comecos_.push_back(comecos_.back() + largura);
}

std::vector<qreal> BlocoQuadro::escolhe_letra() {
    for (qreal pontos = letra_normal;;) {
        letras_[0] = tinta_.letra(pontos);
        letras_[1] = tinta_.letra(pontos, true);
        medidores_ = {Medidor(tinta_, letras_[0]), Medidor(tinta_, letras_[1])};
        const std::vector<Largura> pedidas =
            larguras_pedidas(tinta_, parte_, medidor(Papel::normal), medidor(Papel::total));
        const qreal minima = soma_de(pedidas, &Largura::minima);
        if (minima <= tinta_.largura() || pontos <= letra_menor)
            return encolhe(pedidas, parte_.quadro.colunas, tinta_.largura(), tinta_.pt(minimo_de_texto / 8));
        // Near enough at once: long tables are not measured at each size.
        const qreal talvez = std::floor(pontos * tinta_.largura() / minima / degrau) * degrau;
        pontos = std::max(letra_menor, std::min(pontos - degrau, talvez));
    }
}

std::size_t BlocoQuadro::linhas() const { return std::max<std::size_t>(parte_.linhas.size(), 1); }

qreal BlocoQuadro::altura(std::size_t linha) const {
    if (parte_.linhas.empty()) return de_uma_linha_ + 2 * tinta_.pt(Tinta::folga);
    return altura(parte_.linhas[linha], Papel::normal);
}

qreal BlocoQuadro::cabeca() const { return tinta_.pt(altura_do_titulo) + altura_dos_titulos(); }

qreal BlocoQuadro::pe() const {
    qreal soma = 0;
    if (!parte_.linhas.empty())
        for (const Linha& total : parte_.totais)
            soma += altura(total, Papel::total);
    return soma;
}

qreal BlocoQuadro::largura_de(std::size_t coluna) const {
    return comecos_[coluna + 1] - comecos_[coluna] - 2 * tinta_.pt(Tinta::folga);
}

qreal BlocoQuadro::altura(const Linha& linha, Papel papel) const {
    qreal mais_alta = de_uma_linha_;
    for (std::size_t i = 0; i < linha.size(); ++i) {
        const QString texto = celula(parte_.quadro.colunas[i], linha[i]);
        if (texto.contains('\n') || medidor(papel).largura(texto) > largura_de(i))
            mais_alta = std::max(mais_alta, tinta_.altura(letra(papel), texto, largura_de(i)));
    }
    return mais_alta + tinta_.pt(Tinta::folga);
}

qreal BlocoQuadro::altura_dos_titulos() const {
    qreal mais_alta = de_uma_linha_;
    for (std::size_t i = 0; i < parte_.quadro.colunas.size(); ++i)
        mais_alta = std::max(mais_alta, tinta_.altura(letra(Papel::total),
                                                      qs(parte_.quadro.colunas[i].titulo), largura_de(i)));
    return mais_alta + 2 * tinta_.pt(Tinta::folga);
}

void BlocoQuadro::pinta_titulos(QPainter& pintor, qreal y) const {
    pintor.fillRect(QRectF(0, y, comecos_.back(), altura_dos_titulos()), cor_etiquetas);
    Tinta::Celulas titulos;
    for (std::size_t i = 0; i < parte_.quadro.colunas.size(); ++i)
        titulos.push_back({{comecos_[i] + tinta_.pt(Tinta::folga), tinta_.pt(Tinta::folga), largura_de(i),
                            altura_dos_titulos()},
                           qs(parte_.quadro.colunas[i].titulo),
                           parte_.quadro.colunas[i].a_direita()});
    tinta_.escreve(pintor, letra(Papel::total), titulos, y);
}

void BlocoQuadro::pinta(QPainter& pintor, const Linha& linha, Papel papel, qreal y) const {
    const QFontMetricsF medidas = tinta_.medidas(letra(papel));
    pintor.setFont(letra(papel));
    y += tinta_.pt(Tinta::folga) / 2;
    for (std::size_t i = 0; i < linha.size(); ++i) {
        const QString texto = celula(parte_.quadro.colunas[i], linha[i]);
        if (texto.isEmpty()) continue;
        const bool a_direita = parte_.quadro.colunas[i].a_direita();
        const qreal x = comecos_[i] + tinta_.pt(Tinta::folga), larga = largura_de(i);
        if (texto.contains('\n') || medidor(papel).largura(texto) > larga) {
            tinta_.escreve(pintor, letra(papel),
                           {{{x, 0, larga, tinta_.altura(letra(papel), texto, larga)}, texto, a_direita}}, y);
        } else { // written at once, without being laid out
            const qreal recuo = a_direita ? larga - medidas.horizontalAdvance(texto) : 0;
            pintor.drawText(QPointF(x + recuo, y + medidas.ascent()), texto);
        }
    }
}

void BlocoQuadro::pinta(QPainter& pintor, std::size_t primeira, std::size_t fim, qreal y) const {
    escreve_titulo(tinta_, pintor, qs(parte_.quadro.titulo), primeira > 0, y);
    y += tinta_.pt(altura_do_titulo);
    pinta_titulos(pintor, y);
    y += altura_dos_titulos();
    if (parte_.linhas.empty()) {
        tinta_.escreve(
            pintor, tinta_.normal,
            {{{tinta_.pt(Tinta::folga), tinta_.pt(Tinta::folga), tinta_.largura(), de_uma_linha_}, "Nada."}},
            y);
        return;
    }
    const auto linha = [&](const Linha& esta, Papel papel) {
        pinta(pintor, esta, papel, y);
        y += altura(esta, papel);
    };
    for (std::size_t i = primeira; i < fim; ++i) {
        linha(parte_.linhas[i], Papel::normal);
        pintor.setPen(QPen(Qt::lightGray, tinta_.pt(0.3)));
        pintor.drawLine(QPointF(0, y), QPointF(comecos_.back(), y));
        tinta_.caneta(pintor);
    }
    if (fim < parte_.linhas.size() || parte_.totais.empty()) return;
    pintor.drawLine(QPointF(0, y), QPointF(comecos_.back(), y));
    for (const Linha& total : parte_.totais)
        linha(total, Papel::total);
}

} // namespace orvex::platform::qt::consulta
