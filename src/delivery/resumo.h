// What a note is, in a few words and figures, for whoever shows or prints it: the rules need none of it.
#pragma once

#include "base/formato_regional.h"
#include "common/grelha.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace orvex::delivery {

enum class Situacao { emitida, devolvida_em_parte, devolvida, anulada };
const char* texto(Situacao situacao); // "DEVOLVIDA EM PARTE"

// Of an issued note, as ERP and ledger had it when they were asked.
struct ResumoGuia {
    Situacao situacao = Situacao::emitida;
    std::string NomeCliente;                        // empty where the ERP knows no such client
    std::map<std::int64_t, std::string> devolvidas; // the number of a line, and the return: GD/1/7
};

// Of the rows of a grid that have an article.
struct Totais {
    int linhas = 0;
    base::Moeda liquido; // tonnes
    base::Moeda bruto;   //

    // "3 linhas   P.Liq. 4,685 t   Peso Bruto 6,456 t"
    std::string texto(const base::FormatoRegional& formato) const;
};
Totais totais(const common::Grelha& grelha, std::string_view liquido, std::string_view bruto,
              const std::function<bool(int linha)>& conta = {});

} // namespace orvex::delivery
