// What an enquiry answers, as values: a view of one or more tables, told row by row to whoever shows it. The
// window, the files and the paper each show the same, once.
//
//     vista    Artigo BA000265
//     quadro   ficha: one row, shown as label and value
//     quadro   movimentos: columns, rows, totals
#pragma once

#include "base/variante.h"

#include <string>
#include <vector>

namespace orvex::livro::consultas {

enum class Tipo {
    texto,
    codigo,
    data,
    peso,
    inteiro
}; // peso: tonnes; codigo: a text that may look like a number
enum class Ligacao { nenhuma, artigo, cliente, documento };

struct Coluna {
    std::string chave;  // for programs: "artigo"
    std::string titulo; // for people: "Artigo"
    Tipo tipo = Tipo::texto;
    Ligacao ligacao = Ligacao::nenhuma; // what its cells open, by their text

    bool a_direita() const { return tipo == Tipo::peso || tipo == Tipo::inteiro; }
};

struct Quadro {
    std::string chave;
    std::string titulo;
    std::vector<Coluna> colunas;
    bool ficha = false; // of one row, of values that are not alike
};

struct Filtro {
    std::string nome;  // "À data"
    std::string valor; // "31-10-2026"
};

struct Vista {
    std::string chave;
    std::string titulo;
    std::vector<Filtro> filtros;
    bool unico = false; // of one table
};

// A value for each column; null where there is none.
using Linha = std::vector<base::Variante>;

class Destino {
  public:
    virtual ~Destino() = default;
    virtual void vista(const Vista& esta) = 0;
    virtual void quadro(const Quadro& este) = 0;
    // False when no more are wanted: the enquiry ends there.
    virtual bool linha(const Linha& esta) = 0;
    // Under the rows of the quadro: what the first column says is summed up, and the sums in theirs.
    virtual void total(const Linha& este) = 0;
    // Asked now and then while there is nothing to tell yet. False gives the enquiry up: what was told by
    // then is not whole, and mostly nothing.
    virtual bool prossegue() { return true; }
};

// A view kept whole.
struct Recolhida : Destino {
    struct Parte {
        Quadro quadro;
        std::vector<Linha> linhas, totais;
    };
    Vista cabecalho;
    std::vector<Parte> partes;

    void vista(const Vista& esta) override { cabecalho = esta; }
    void quadro(const Quadro& este) override { partes.push_back({este, {}, {}}); }
    bool linha(const Linha& esta) override {
        partes.back().linhas.push_back(esta);
        return true;
    }
    void total(const Linha& este) override { partes.back().totais.push_back(este); }
};

} // namespace orvex::livro::consultas
