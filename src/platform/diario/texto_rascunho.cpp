#include "platform/diario/texto_rascunho.h"

#include "base/falha.h"

#include <nlohmann/json.hpp>

namespace orvex::platform::diario {
namespace {

using base::DataHora;
using base::Moeda;
using delivery::LinhaRascunho;
using delivery::Rascunho;
using Json = nlohmann::json;

constexpr int versao = 1;

void poe_data(Json& json, const char* nome, const std::optional<DataHora>& data) {
    if (data) json[nome] = data->data_hora_iso();
}

DataHora data_de(const Json& json) {
    const auto lida = DataHora::le(json.get<std::string>());
    if (!lida) throw base::Falha("Data inválida.");
    return *lida;
}

std::optional<DataHora> le_data(const Json& json, const char* nome) {
    return json.contains(nome) ? std::optional(data_de(json.at(nome))) : std::nullopt;
}

Moeda le_peso(const Json& json) {
    const auto lido = Moeda::le(json.get<std::string>());
    if (!lido || *lido < Moeda()) throw base::Falha("Peso inválido.");
    return *lido;
}

Json de(const LinhaRascunho& linha) {
    return {{"origem", linha.Origem},
            {"artigo", linha.Artigo},
            {"nome", linha.Nome},
            {"quant", linha.Quant.texto()},
            {"bruto", linha.PesoBruto.texto()}};
}

Rascunho rascunho_de(const Json& json) {
    Rascunho r{.Cliente = json.at("cliente").get<std::string>(), .Armazem = json.at("armazem").get<int>()};
    for (const auto& [campo, texto] : json.at("campos").items())
        r.Campos[std::stoi(campo)] = texto.get<std::string>();
    r.Data = le_data(json, "data");
    r.Carga = le_data(json, "carga");
    r.Descarga = le_data(json, "descarga");
    for (const Json& linha : json.at("linhas"))
        r.linhas.push_back({linha.at("origem").get<std::string>(), linha.at("artigo").get<std::string>(),
                            linha.at("nome").get<std::string>(), le_peso(linha.at("quant")),
                            le_peso(linha.at("bruto"))});
    return r;
}

} // namespace

std::string texto_de(const RascunhoEscrito& escrito) {
    const Rascunho& r = escrito.rascunho;
    Json campos = Json::object(), linhas = Json::array();
    for (const auto& [campo, texto] : r.Campos)
        campos[std::to_string(campo)] = texto;
    for (const LinhaRascunho& linha : r.linhas)
        linhas.push_back(de(linha));
    Json json{{"versao", versao},
              {"empresa", escrito.empresa},
              {"quando", escrito.quando.data_hora_iso()},
              {"diarios", escrito.diarios},
              {"cliente", r.Cliente},
              {"armazem", r.Armazem},
              {"campos", campos},
              {"linhas", linhas}};
    poe_data(json, "data", r.Data);
    poe_data(json, "carga", r.Carga);
    poe_data(json, "descarga", r.Descarga);
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::optional<RascunhoEscrito> le_rascunho(std::string_view texto) {
    try {
        const Json json = Json::parse(texto);
        if (json.at("versao") != versao) return std::nullopt;
        return RascunhoEscrito{.empresa = json.at("empresa").get<std::string>(),
                               .quando = data_de(json.at("quando")),
                               .diarios = json.at("diarios").get<std::vector<std::string>>(),
                               .rascunho = rascunho_de(json)};
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

} // namespace orvex::platform::diario
