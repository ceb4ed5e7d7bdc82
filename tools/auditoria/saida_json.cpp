#include "saida.h"

#include <map>

#include <nlohmann/json.hpp>

namespace orvex::auditoria {
namespace {

using nlohmann::ordered_json;

// Exact: a tenth of a kilogram is the smallest weight there is.
double em_quilos(base::Moeda peso) {
    constexpr double decimas = 10;
    return static_cast<double>(peso.decimos_milesimos()) / decimas;
}

ordered_json de(const Achado& achado) {
    ordered_json este{{"gravidade", nome(achado.gravidade)},
                      {"verificacao", achado.verificacao},
                      {"chave", achado.chave},
                      {"artigo", achado.artigo},
                      {"cliente", achado.cliente},
                      {"esperado", achado.esperado},
                      {"encontrado", achado.encontrado},
                      {"diferenca_kg", em_quilos(achado.peso)},
                      {"desde", achado.desde},
                      {"data", nullptr},
                      {"que_fazer", achado.que_fazer},
                      {"identidade", achado.identidade()}};
    if (achado.data) este["data"] = achado.data->data_iso();
    return este;
}

ordered_json de(const std::map<std::string, Total>& totais) {
    ordered_json todos = ordered_json::object();
    for (const auto& [nome, total] : totais)
        todos[nome] = {{"erros", total.erros},
                       {"avisos", total.avisos},
                       {"informacoes", total.informacoes},
                       {"diferenca_kg", em_quilos(total.peso)}};
    return todos;
}

} // namespace

std::string json(const Relatorio& relatorio, const std::string& empresa, const base::DataHora& quando) {
    std::map<std::string, Total> por_verificacao, por_cliente;
    ordered_json achados = ordered_json::array(), nao_vistos = ordered_json::array();
    for (const Achado& achado : relatorio.achados) {
        por_verificacao[achado.verificacao].conta(achado);
        por_cliente[achado.cliente].conta(achado);
        achados.push_back(de(achado));
    }
    for (const NaoVisto& este : relatorio.nao_vistos)
        nao_vistos.push_back({{"verificacoes", este.verificacoes}, {"porque", este.porque}});
    const ordered_json tudo{{"empresa", empresa},
                            {"data", quando.data_hora_iso()},
                            {"por_verificacao", de(por_verificacao)},
                            {"por_cliente", de(por_cliente)},
                            {"achados", achados},
                            {"aceites", relatorio.aceites.size()},
                            {"nao_verificado", nao_vistos}};
    return tudo.dump(2, ' ', false, ordered_json::error_handler_t::replace) + "\n";
}

} // namespace orvex::auditoria
