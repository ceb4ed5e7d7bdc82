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

// Of xel_ORVEX_Mov; start-up adds them, both at once, where they are missing.
inline constexpr const char* colunas_de_pesos[] = {"PesoLiquido", "PesoBruto"};

// Those of docs/indices.sql: the program works without them, more slowly.
struct IndiceFacultativo {
    const char* tabela;
    const char* nome;
};
const std::vector<IndiceFacultativo>& indices_facultativos();

} // namespace orvex::diagnostico
