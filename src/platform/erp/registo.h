// The fields of one record of an ERP document (its header, or one line) under the names that late binding
// knows them by.
#pragma once

#include "base/variante.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::platform::erp {

enum class TipoMembro {
    texto,
    inteiro_16,
    inteiro_32,
    decimal,
    logico,
    data,      // given back as a date
    data_texto // given back as text, dd-mm-yyyy: the programs join it with a time
};

struct Membro {
    std::string_view nome; // as the programs write it
    const char* coluna;    // where it is kept
    TipoMembro tipo;
    int comprimento = 0; // of a text, in characters
};

extern const std::span<const Membro> membros_cabecalho; // table DocGcCab
extern const std::span<const Membro> membros_linha;     // table DocGcLin

class Registo {
  public:
    Registo(std::span<const Membro> membros, const char* de_que);

    std::span<const Membro> membros() const { return membros_; }

    // As given back to the programs. Names are case-insensitive; an unknown one throws Falha.
    base::Variante obtem(std::string_view nome) const;
    // Converts to the member's type; throws Falha naming the member when the value does not convert or does
    // not fit. A text may be too long: that is for the ERP to refuse when the document is handed over.
    void poe(std::string_view nome, const base::Variante& valor);

    std::string texto(std::string_view nome) const { return guardado(indice(nome)).texto(); }
    std::int64_t inteiro(std::string_view nome) const { return guardado(indice(nome)).inteiro(); }
    base::Moeda moeda(std::string_view nome) const { return guardado(indice(nome)).moeda(); }

    // As kept in the table: dates are dates or null.
    const base::Variante& guardado(std::size_t indice) const { return valores_[indice]; }

    // The member with a text longer than its column, or null.
    const Membro* texto_excessivo() const;

  private:
    std::size_t indice(std::string_view nome) const;

    std::span<const Membro> membros_;
    const char* de_que_; // for messages
    std::vector<base::Variante> valores_;
};

} // namespace orvex::platform::erp
