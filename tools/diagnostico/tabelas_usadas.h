// The tables the program's statements use, with each of their columns: the one list of them.
#pragma once

#include <vector>

namespace orvex::diagnostico {

struct TabelaUsada {
    const char* nome;
    bool do_livro; // made by start-up; the others are the ERP's
    std::vector<const char*> colunas;
    std::vector<const char*> direitos; // that the database's user needs on it
};

const std::vector<TabelaUsada>& tabelas_usadas();

// Those of docs/indices.sql: the program works without them, more slowly.
struct IndiceFacultativo {
    const char* tabela;
    const char* nome;
};
const std::vector<IndiceFacultativo>& indices_facultativos();

} // namespace orvex::diagnostico
