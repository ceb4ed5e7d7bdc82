#include "platform/qt/consulta/blocos.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/consulta/bloco_quadro.h"
#include "platform/qt/textos.h"
#include "platform/saidas/saidas.h"

#include <QPainter>

#include <algorithm>

namespace orvex::platform::qt::consulta {
namespace {

using livro::consultas::Coluna;

// In points.
constexpr qreal entre_pares = 12, altura_do_titulo = 17, largura_legenda = 96, entre_paragrafos = 6;
constexpr qreal espaco_da_assinatura = 44;

// A card: label and value, two side by side where both are short. A text that is long goes row by row, so
// that it fits however low the page is.
class BlocoFicha final : public Bloco {
  public:
    BlocoFicha(const Tinta& tinta, const Parte& parte) : Bloco(tinta), titulo_(qs(parte.quadro.titulo)) {
        if (parte.linhas.empty()) return;
        const auto& valores = parte.linhas.front();
        for (std::size_t i = 0; i < valores.size(); ++i)
            junta(parte.quadro.colunas[i], valores[i]);
    }

    std::size_t linhas() const override { return linhas_.size(); }
    qreal altura(std::size_t linha) const override {
        qreal mais_alta = 0;
        for (const Tinta::Celula& celula : linhas_[linha])
            mais_alta = std::max(mais_alta, celula.lugar.bottom());
        return mais_alta + tinta_.pt(Tinta::folga);
    }
    qreal cabeca() const override { return tinta_.pt(altura_do_titulo); }
    void pinta(QPainter& pintor, std::size_t primeira, std::size_t fim, qreal y) const override {
        escreve_titulo(tinta_, pintor, titulo_, primeira > 0, y);
        y += cabeca();
        for (std::size_t i = primeira; i < fim; ++i) {
            for (const Tinta::Celula& celula : linhas_[i])
                tinta_.escreve(pintor,
                               celula.lugar.x() == x_ || celula.lugar.x() == meia() ? tinta_.negrito
                                                                                    : tinta_.normal,
                               {celula}, y);
            y += altura(i);
        }
    }

  private:
    static constexpr qsizetype letras_por_linha = 600;

    qreal meia() const { return tinta_.largura() / 2; }
    void junta(const Coluna& coluna, const base::Variante& valor) {
        QString texto = Tinta::quebravel(qs(saidas::escrito(coluna, valor)));
        if (texto.isEmpty()) return;
        const qreal legenda = tinta_.pt(largura_legenda);
        const qreal metade = meia() - legenda - tinta_.pt(entre_pares);
        const bool curto =
            !texto.contains('\n') && tinta_.medidas(tinta_.normal).horizontalAdvance(texto) < metade;
        const bool a_direita = curto && ha_lugar_;
        if (!a_direita) linhas_.emplace_back();
        const qreal x = a_direita ? meia() : x_;
        linhas_.back().push_back(celula(tinta_.negrito, qs(coluna.titulo), x, legenda));
        ha_lugar_ = curto && !a_direita;
        if (curto) return linhas_.back().push_back(celula(tinta_.normal, texto, x + legenda, metade));
        bool primeira = true;
        for (QString resto : texto.split('\n'))
            do {
                const qsizetype branco = resto.lastIndexOf(' ', letras_por_linha);
                const qsizetype ate = resto.size() <= letras_por_linha ? resto.size()
                                      : branco > 0                     ? branco
                                                                       : letras_por_linha;
                if (!primeira) linhas_.emplace_back();
                primeira = false;
                linhas_.back().push_back(
                    celula(tinta_.normal, resto.left(ate), legenda, tinta_.largura() - legenda));
                resto.remove(0, ate);
            } while (!resto.isEmpty());
    }
    Tinta::Celula celula(const QFont& letra, const QString& texto, qreal x, qreal largura) const {
        const qreal alta = tinta_.altura(letra, texto.isEmpty() ? " " : texto, largura);
        return {{x, tinta_.pt(Tinta::folga), largura, alta}, texto};
    }

    static constexpr qreal x_ = 0;
    QString titulo_;
    std::vector<Tinta::Celulas> linhas_;
    bool ha_lugar_ = false; // beside the last value
};

class BlocoFecho final : public Bloco {
  public:
    BlocoFecho(const Tinta& tinta, std::vector<QString> paragrafos)
        : Bloco(tinta), paragrafos_(std::move(paragrafos)) {}

    std::size_t linhas() const override { return 1; }
    qreal altura(std::size_t) const override {
        qreal soma = tinta_.pt(espaco_da_assinatura + largura_da_linha_ / 8);
        for (const QString& paragrafo : paragrafos_)
            soma += altura_de(paragrafo);
        return soma;
    }
    void pinta(QPainter& pintor, std::size_t, std::size_t, qreal y) const override {
        for (const QString& paragrafo : paragrafos_) {
            tinta_.escreve(pintor, tinta_.normal,
                           {{{0, 0, tinta_.largura(), altura_de(paragrafo)}, paragrafo}}, y);
            y += altura_de(paragrafo);
        }
        y += tinta_.pt(espaco_da_assinatura);
        const qreal larga = tinta_.pt(largura_da_linha_);
        const qreal fim = tinta_.largura();
        pintor.drawLine(QPointF(0, y), QPointF(larga / 2, y));
        pintor.drawLine(QPointF(fim - larga, y), QPointF(fim, y));
        tinta_.escreve(pintor, tinta_.normal,
                       {{{0, tinta_.pt(2), larga, tinta_.pt(14)}, "Data"},
                        {{fim - larga, tinta_.pt(2), larga, tinta_.pt(14)}, "Assinatura e carimbo"}},
                       y);
    }

  private:
    static constexpr qreal largura_da_linha_ = 220;

    qreal altura_de(const QString& paragrafo) const {
        return tinta_.altura(tinta_.normal, paragrafo, tinta_.largura()) + tinta_.pt(entre_paragrafos);
    }

    std::vector<QString> paragrafos_;
};

} // namespace

void escreve_titulo(const Tinta& tinta, QPainter& pintor, const QString& titulo, bool continua, qreal y) {
    tinta.escreve(pintor, tinta.letra(10.5, true),
                  {{{0, 0, tinta.largura(), tinta.pt(altura_do_titulo)},
                    continua ? titulo + " (continuação)" : titulo}},
                  y);
}

std::unique_ptr<Bloco> novo_bloco(const Tinta& tinta, const Parte& parte) {
    if (parte.quadro.ficha) return std::make_unique<BlocoFicha>(tinta, parte);
    return std::make_unique<BlocoQuadro>(tinta, parte);
}

std::unique_ptr<Bloco> novo_fecho(const Tinta& tinta, const std::vector<QString>& paragrafos) {
    return std::make_unique<BlocoFecho>(tinta, paragrafos);
}

} // namespace orvex::platform::qt::consulta
