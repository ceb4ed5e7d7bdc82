// What stands on the sheets of a view, one below the other: cards, tables, and how a statement ends. Each is
// made of rows, none of which is cut by the end of a page.
#pragma once

#include "livro/consultas/quadro.h"
#include "platform/qt/papel/paginas.h"

#include <array>
#include <memory>

namespace orvex::platform::qt::consulta {

using Parte = livro::consultas::Recolhida::Parte;

class Bloco {
  public:
    explicit Bloco(const Tinta& tinta) : tinta_(tinta) {}
    Bloco(const Bloco&) = delete;
    Bloco& operator=(const Bloco&) = delete;
    virtual ~Bloco() = default;

    virtual std::size_t linhas() const = 0;
    virtual qreal altura(std::size_t linha) const = 0;
    virtual qreal cabeca() const { return 0; } // above the rows, on each page
    virtual qreal pe() const { return 0; }     // below the last row, on the same page
    // Rows `primeira` to `fim` without it, and what is above and below them.
    virtual void pinta(QPainter& pintor, std::size_t primeira, std::size_t fim, qreal y) const = 0;

  protected:
    const Tinta& tinta_;
};

// The view's part must outlive it.
std::unique_ptr<Bloco> novo_bloco(const Tinta& tinta, const Parte& parte);
// Paragraphs, and where to sign: all of it on one page.
std::unique_ptr<Bloco> novo_fecho(const Tinta& tinta, const std::vector<QString>& paragrafos);

// How wide the part is, where nothing has to be wrapped.
qreal largura_natural(const Tinta& tinta, const Parte& parte);

} // namespace orvex::platform::qt::consulta
