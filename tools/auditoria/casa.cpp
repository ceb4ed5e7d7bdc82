#include "casa.h"

#include "base/texto.h"
#include "ponto.h"

#include <algorithm>

namespace orvex::auditoria {
namespace {

Numeracao numeracao(const startup::ParametroDocumento& documento) {
    return {documento.TpDoc(), documento.Serie()};
}

} // namespace

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
                          startup::ParametroCliente(lista("CLIENTEORVEX")).Codigo()}};
    for (const auto& [TpDoc, SerieEscrita] :
         startup::ParametroGrupos(parametros.lista_de_grupos("FACTURAS")).grupos())
        casa.facturas.push_back({TpDoc, static_cast<std::int16_t>(*base::le_inteiro(SerieEscrita))});
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

} // namespace orvex::auditoria
