// A prepared statement with what is known of its columns.
#pragma once

#include "platform/registos/conjunto.h"
#include "platform/sqlite/forma.h"
#include "platform/sqlite/traducao.h"

#include <SQLiteCpp/Statement.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3_stmt;

namespace orvex::platform::sqlite {

using registos::Celula;
using registos::Coluna;
using registos::Colunas;
using registos::TipoSQL;

class Preparada {
  public:
    Preparada(const SQLite::Database& base, const Traducao& traducao);

    // Gives the statement its parameters, from the start. Throws Falha when the literals are not as many.
    void associa(const Forma& forma);
    // Of the row that the statement stands on; a text lives until its next step.
    Celula celula(std::size_t coluna) const;
    // True once the engine had to prepare the statement anew because somebody changed the schema.
    bool caduca() const;

    const std::shared_ptr<const Colunas>& colunas() const { return leitura_; }
    // With the table and its key, where rows of this query can be found again in one.
    std::shared_ptr<const Colunas> colunas_actualizaveis();

    SQLite::Statement instrucao;
    const Traducao::Genero genero;

  private:
    const SQLite::Database& base_;
    std::string tabela_;
    std::vector<std::string> textos_; // of the parameters, which the engine reads here
    sqlite3_stmt* ponteiro_;          // of the same statement, for what its class has no procedure for
    std::shared_ptr<const Colunas> leitura_;
    std::shared_ptr<const Colunas> escrita_;
};

// A value as normaliza gave it, in the engine's form for a column of this type. A text is read where it
// stands whenever the statement runs.
void associa_valor(SQLite::Statement& instrucao, int parametro, const TipoSQL& tipo,
                   const base::Variante& valor);
void associa_celula(SQLite::Statement& instrucao, int parametro, const Celula& celula);

} // namespace orvex::platform::sqlite
