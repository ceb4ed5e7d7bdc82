// What the parameters file says is ours: types and series of documents, warehouses, and the client that is
// ORVEX.
#pragma once

#include "livro/detencao.h"
#include "startup/parametros.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvex::livro {

// Codes as the database compares them: without case and without trailing blanks.
std::string codigo_normal(std::string_view codigo);
bool mesmo_codigo(const std::string& a, const std::string& b);

struct Numeracao { // a type and series
    std::string TpDoc;
    std::int16_t Serie = 0;
    std::string SerieEscrita{}; // as the parameters have it

    bool e(const std::string& tipo, std::int64_t serie) const;
    std::string documento(std::int64_t numero) const; // GR/1/7
    std::string texto() const { return TpDoc + "/" + std::to_string(Serie); }
};

struct Casa {
    Numeracao guias, devolucoes, sobras, quebras, consumos, transferencias;
    std::vector<Numeracao> facturas;
    Lugares lugares;
    startup::ParametroGrupos FACTURAS; // as statements repeat them

    // Throws FalhaParametro for a key that is missing or incomplete.
    static Casa le(const startup::Parametros& parametros);

    bool ajuste(const std::string& tipo, std::int64_t serie) const {
        return sobras.e(tipo, serie) || quebras.e(tipo, serie) || consumos.e(tipo, serie);
    }
    bool factura(const std::string& tipo, std::int64_t serie) const;
    // Of any series, as a note of which something came back is neither cancelled nor returned again.
    bool devolve(const std::string& tipo) const { return mesmo_codigo(tipo, devolucoes.TpDoc); }
    bool e_orvex(const std::string& cliente) const;
    const std::string& armazem(const std::string& detentor) const; // where its stock lies
};

} // namespace orvex::livro
