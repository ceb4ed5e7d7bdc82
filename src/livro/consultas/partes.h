// What several views have in common: columns, conditions of statements, and tables of their own.
#pragma once

#include "livro/chaves.h"
#include "livro/consultas/historia.h"

#include <map>

namespace orvex::livro::consultas {

namespace col {
inline const Coluna artigo{"artigo", "Artigo", Tipo::codigo, Ligacao::artigo};
inline const Coluna designacao{"designacao", "Designação"};
inline const Coluna cliente{"cliente", "Cliente", Tipo::codigo, Ligacao::cliente};
inline const Coluna nome{"nome", "Nome"};
inline const Coluna detentor{"detentor", "Detentor", Tipo::codigo, Ligacao::cliente};
inline const Coluna documento{"documento", "Documento", Tipo::codigo, Ligacao::documento};
inline const Coluna data{"data", "Data", Tipo::data};
inline const Coluna desde{"desde", "Desde", Tipo::data};
inline const Coluna dias{"dias", "Dias", Tipo::inteiro};
inline const Coluna especie{"tipo", "Tipo"};
inline const Coluna linha{"linha", "Linha", Tipo::inteiro};
inline const Coluna peso{"peso", "Peso (t)", Tipo::peso};
inline const Coluna liquido{"peso_liquido", "Líquido (t)", Tipo::peso};
inline const Coluna bruto{"peso_bruto", "Bruto (t)", Tipo::peso};
inline const Coluna observacoes{"observacoes", "Observações"};
inline const Coluna ressalvas{"ressalvas", "Ressalvas"};
} // namespace col

// Null for nothing to be shown.
base::Variante ou_nulo(const std::string& texto);
base::Variante ou_nulo(const std::optional<base::DataHora>& data);
// A number that may be null in old rows, as 0.
std::int64_t inteiro(const base::Variante& lido);
// A weight, whatever form the driver gives its column; null stays null.
base::Variante peso(const base::Variante& lido);
// Days of holding, at a day.
base::Variante dias_desde(const std::optional<base::DataHora>& desde, int no_dia);

// "coluna" lies between two days, both included, or up to one day more on either side: the engines tell the
// days at the ends apart differently, so whoever reads the rows looks at their day again. In a form of date
// that no language of a server reads otherwise.
std::string perto_de(const char* coluna, const base::DataHora& de, const base::DataHora& ate);

struct NomeDeCodigo {
    std::string codigo; // as the ERP writes it, or as asked for
    std::string nome;
    bool ha = false;
};
NomeDeCodigo cliente_no_erp(startup::SessaoBD& BD, const std::string& codigo);

// The table of the open invoice lines of an article or a client: `coluna` of xel_ORVEX_Mov is `valor`.
bool mostra_abertas(const Meios& meios, const char* coluna, const std::string& valor, Destino& destino);

// A document, as movement lines and the ERP name it.
struct Referencia {
    std::int64_t Ano = 0;
    std::string TpDoc;
    std::int64_t Serie = 0, Numero = 0;

    static Referencia de(const ChaveLinha& linha); // of the line's document, normal
    Referencia normal() const;                     // the type as the database compares it
    std::string texto() const;                     // 2019/GR/1/7
    friend auto operator<=>(const Referencia&, const Referencia&) = default;
};
// As people write one: "2019/GR/1/7", "GR/1/7", "GR/7" or "7", of which what is left out is any. Nothing for
// what is no document.
struct DocumentoEscrito {
    std::optional<std::int64_t> Ano;
    std::string TpDoc; // as it was written; empty: any
    std::optional<std::int64_t> Serie;
    std::int64_t Numero = 0;
};
std::optional<DocumentoEscrito> le_documento(std::string_view texto);

std::string tipo_em_palavras(const Casa& casa, const std::string& TpDoc, std::int64_t Serie);
// Years that documents are looked for in, where none is named: of the key of both tables, so that a number
// alone is found without reading them whole. "(2027,2026,...)"
std::string anos(const Meios& meios);

} // namespace orvex::livro::consultas
