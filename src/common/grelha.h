// A data grid: keyed columns over a matrix of values.
//
// Rows and columns of the matrix count from 0; the current row counts from 1 (its matrix row is linha_actual
// - 1). The matrix starts with blank rows and grows one row at a time. A column's maximum length limits
// typing only.
#pragma once

#include "base/formato_regional.h"
#include "common/controlos.h"

#include <optional>
#include <string_view>

namespace orvex::common {

enum class TipoCelula { texto, decimal, inteiro, logico };

struct ColunaGrelha {
    std::string chave;
    std::string legenda;
    TipoCelula tipo = TipoCelula::texto;
    int largura = 0; // twips (15 to a pixel at 100 %)
    int comprimento_maximo = 0;
    bool so_leitura = true;
    bool oculta = false;
    bool recebe_foco = true;
    bool formato_peso = false; // shown "###,###,##0.000"
};

// Paints a whole row when a column of it has a value.
struct EstiloCondicional {
    int coluna = 0;
    base::Variante valor;
    std::uint32_t cor_fundo = 0;
};

class Grelha : public Controlo {
  public:
    // Handlers. Those with a cancel flag run before the change they announce.
    std::function<void()> DblClick;
    std::function<void()> GotFocus;
    std::function<void()> LostFocus;
    std::function<void(int LastRow, int LastCol)> RowColChange; // the cell left; a row of 0 is none
    std::function<void(int& KeyCode, int Shift)> KeyDown;
    std::function<void(int Row, int Col, const base::Variante& OldValue, bool& Cancel)> BeforeColUpdate;
    std::function<void(bool& Cancel)> BeforeDelete;
    std::function<bool()> PodeApagar; // of the current row, asked without saying anything; none for yes
    std::function<void()> AfterDelete;

    // What texto_editado is of a tick box.
    static constexpr const char* com_visto = "-1";
    static constexpr const char* sem_visto = "0";

    bool permite_apagar = false;
    bool ordenavel = false;   // by the headings of its columns
    bool com_procura = false; // characters find a row, by its article or what else it says, and edit nothing
    int linha_actual = 1;
    int coluna_actual = 0;
    bool redesenha = true;     // off while a rule fills many rows
    std::string texto_editado; // the pending edit, which BeforeColUpdate may read and replace
    std::optional<EstiloCondicional> estilo;

    // Empties the grid and gives it this layout over so many blank rows.
    void define(std::vector<ColunaGrelha> colunas, int linhas_em_branco);

    const std::vector<ColunaGrelha>& colunas() const { return colunas_; }
    int linhas() const { return static_cast<int>(valores_.size()); }
    int coluna(std::string_view chave) const; // throws Falha for an unknown key
    void garante_linha(int linha);            // grows the matrix by blank rows until it has this one
    void apaga_linha(int linha);
    // Sorts the rows by this column, the other way round where they are so already; blank rows stay last, and
    // the current row stays on its line.
    void ordena(int coluna);
    void reordena(); // rows that were filled anew, as they were sorted last

    struct Ordem {
        int coluna = 0;
        bool descendente = false;
    };
    const std::optional<Ordem>& ordem() const { return ordem_; }

    const base::Variante& valor(int linha, int coluna) const;
    const base::Variante& valor(int linha, std::string_view chave) const {
        return valor(linha, coluna(chave));
    }
    std::string texto(int linha, std::string_view chave) const { return valor(linha, chave).texto(); }
    base::Moeda moeda(int linha, int coluna) const; // null and empty count as 0
    base::Moeda moeda(int linha, std::string_view chave) const { return moeda(linha, coluna(chave)); }
    void define_valor(int linha, int coluna, base::Variante valor);
    void define_valor(int linha, std::string_view chave, base::Variante valor) {
        define_valor(linha, coluna(chave), std::move(valor));
    }

    // What a cell shows, and what an editor of it starts with.
    std::string texto_mostrado(int linha, int coluna, const base::FormatoRegional& formato) const;
    std::string texto_para_editar(int linha, int coluna, const base::FormatoRegional& formato) const;
    // Stores texto_editado in the cell, as the column's kind; false when it is no value of that kind.
    bool guarda_edicao(int linha, int coluna, const base::FormatoRegional& formato);
    bool pintada(int linha) const;

    // Grows with every change, so that a window knows when to read the matrix again.
    std::uint64_t versao() const { return versao_; }

  private:
    std::vector<ColunaGrelha> colunas_;
    std::vector<std::vector<base::Variante>> valores_;
    std::optional<Ordem> ordem_;
    std::uint64_t versao_ = 0;
};

} // namespace orvex::common
