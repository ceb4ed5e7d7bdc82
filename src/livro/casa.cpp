#include "livro/casa.h"

#include "base/texto.h"

#include <algorithm>

namespace orvex::livro {
namespace {

Numeracao numeracao(const startup::ParametroDocumento& documento) {
    return {documento.TpDoc(), documento.Serie(), documento.SerieEscrita()};
}

} // namespace

std::string codigo_normal(std::string_view codigo) {
    while (!codigo.empty() && codigo.back() == ' ')
        codigo.remove_suffix(1);
    return base::maiusculas(codigo);
}

// Most codes that are not the same differ in a letter that needs no table.
bool mesmo_codigo(const std::string& a, const std::string& b) {
    const auto simples = [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z'); };
    for (std::size_t i = 0; i < a.size() && i < b.size(); ++i) {
        if (a[i] == b[i]) continue;
        if (simples(a[i]) && simples(b[i])) return false;
        return codigo_normal(a) == codigo_normal(b);
    }
    return a.size() == b.size() || codigo_normal(a) == codigo_normal(b);
}

bool Numeracao::e(const std::string& tipo, std::int64_t serie) const {
    return serie == Serie && mesmo_codigo(tipo, TpDoc);
}

std::string Numeracao::documento(std::int64_t numero) const { return texto() + "/" + std::to_string(numero); }

Casa Casa::le(const startup::Parametros& parametros) {
    const auto lista = [&](const char* chave) { return parametros.lista(chave); };
    Casa casa{.guias = numeracao(lista("GUIASREMESSA")),
              .devolucoes = numeracao(lista("GUIADEVOLUCAO")),
              .sobras = numeracao(lista("SOBRAS")),
              .quebras = numeracao(lista("QUEBRAS")),
              .consumos = numeracao(lista("CONSUMOS")),
              .transferencias = numeracao(lista("TRF")),
              .facturas = {},
              .lugares = {startup::ParametroArmazem(lista("ARMAZEM")).Codigo(),
                          startup::ParametroArmazem(lista("ARMAZEMORVEX")).Codigo(),
                          startup::ParametroCliente(lista("CLIENTEORVEX")).Codigo()},
              .FACTURAS = parametros.lista_de_grupos("FACTURAS")};
    for (const auto& [TpDoc, SerieEscrita] : casa.FACTURAS.grupos())
        casa.facturas.push_back(
            {TpDoc, static_cast<std::int16_t>(*base::le_inteiro(SerieEscrita)), SerieEscrita});
    return casa;
}

bool Casa::factura(const std::string& tipo, std::int64_t serie) const {
    return std::any_of(facturas.begin(), facturas.end(),
                       [&](const Numeracao& esta) { return esta.e(tipo, serie); });
}

bool Casa::e_orvex(const std::string& cliente) const { return mesmo_codigo(cliente, lugares.ClienteOrvex); }

const std::string& Casa::armazem(const std::string& detentor) const {
    return lugares.armazem(e_orvex(detentor) ? lugares.ClienteOrvex : detentor);
}

} // namespace orvex::livro
