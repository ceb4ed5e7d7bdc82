// A table on paper: columns as wide as they need, texts wrapped where they do not fit, headings on each page.
// Made for long ones: a row costs what its texts do, at the layout and when it is painted.
#pragma once

#include "platform/qt/consulta/blocos.h"

#include <array>

namespace orvex::platform::qt::consulta {

void escreve_titulo(const Tinta& tinta, QPainter& pintor, const QString& titulo, bool continua, qreal y);

// Widths of texts, by those of their letters: quicker than asking for each, and a little wider.
class Medidor {
  public:
    Medidor(const Tinta& tinta, const QFont& letra);
    qreal largura(const QString& texto) const; // of its longest line

  private:
    QFontMetricsF medidas_;
    std::array<qreal, 256> letras_;
};

class BlocoQuadro final : public Bloco {
  public:
    BlocoQuadro(const Tinta& tinta, const Parte& parte);

    std::size_t linhas() const override;
    qreal altura(std::size_t linha) const override;
    qreal cabeca() const override;
    qreal pe() const override;
    void pinta(QPainter& pintor, std::size_t primeira, std::size_t fim, qreal y) const override;

  private:
    using Linha = livro::consultas::Linha;
    enum class Papel { normal, total };

    // As large as usual, or smaller where the table is wider than the sheet. Gives the columns' widths.
    std::vector<qreal> escolhe_letra();
    const QFont& letra(Papel papel) const { return letras_[static_cast<int>(papel)]; }
    const Medidor& medidor(Papel papel) const { return medidores_[static_cast<std::size_t>(papel)]; }
    qreal largura_de(std::size_t coluna) const; // for text
    qreal altura(const Linha& linha, Papel papel) const;
    qreal altura_dos_titulos() const;
    void pinta_titulos(QPainter& pintor, qreal y) const;
    void pinta(QPainter& pintor, const Linha& linha, Papel papel, qreal y) const;

    const Parte& parte_;
    QFont letras_[2]; // of a Papel
    std::vector<Medidor> medidores_;
    qreal de_uma_linha_;         // height of a text
    std::vector<qreal> comecos_; // of the columns, and the end of the last
};

} // namespace orvex::platform::qt::consulta
