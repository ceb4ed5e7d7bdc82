#include "platform/diario/passos.h"

#include "base/moeda.h"

#include <array>
#include <charconv>
#include <nlohmann/json.hpp>
#include <zlib.h>

namespace orvex::platform::diario {
namespace {

using confirmacao::AccaoERP;
using confirmacao::Desfecho;
using confirmacao::Intencao;
using confirmacao::PedidoERP;
using confirmacao::RespostaERP;
using startup::ChaveDocumento;
using Json = nlohmann::json;

constexpr int versao = 1;
constexpr std::size_t digitos_soma = 8;

std::uint32_t soma(std::string_view texto) {
    return static_cast<std::uint32_t>(
        ::crc32_z(0, reinterpret_cast<const Bytef*>(texto.data()), texto.size()));
}

std::string linha(const Json& passo) {
    // A text that another program left ill-formed must not keep a confirmation from being recorded.
    const std::string texto = passo.dump(-1, ' ', false, Json::error_handler_t::replace);
    std::array<char, digitos_soma + 1> digitos{};
    std::snprintf(digitos.data(), digitos.size(), "%08x", soma(texto));
    return std::string(digitos.data()) + " " + texto + "\n";
}

// The JSON of a line that is whole.
std::optional<Json> passo_de(std::string_view texto) {
    if (texto.size() <= digitos_soma || texto[digitos_soma] != ' ') return std::nullopt;
    std::uint32_t dita = 0;
    const char* fim = texto.data() + digitos_soma;
    if (std::from_chars(texto.data(), fim, dita, 16).ptr != fim) return std::nullopt;
    texto.remove_prefix(digitos_soma + 1);
    if (soma(texto) != dita) return std::nullopt;
    Json passo = Json::parse(texto, nullptr, false);
    if (!passo.is_object()) return std::nullopt;
    return passo;
}

Json de(const ChaveDocumento& chave) {
    return {{"ano", chave.Ano},
            {"tipo", chave.TipoDocumento},
            {"serie", chave.Serie},
            {"numero", chave.NossoNoDocumento}};
}

ChaveDocumento chave_de(const Json& json) {
    return {json.at("ano").get<std::int16_t>(), json.at("tipo").get<std::string>(),
            json.at("serie").get<std::int16_t>(), json.at("numero").get<std::int32_t>()};
}

constexpr const char* accoes[] = {"cria", "anula"};
constexpr const char* desfechos[] = {"feito", "recusado", "sem_resposta"};
constexpr const char* resultados[] = {"feita", "desfeita", "por_ver"};

template <typename Enumeracao, std::size_t N>
Enumeracao le_nome(const char* const (&nomes)[N], const Json& json) {
    for (std::size_t i = 0; i < N; ++i)
        if (json.get<std::string>() == nomes[i]) return static_cast<Enumeracao>(i);
    throw base::Falha("Nome desconhecido.");
}

base::Moeda moeda_de(const Json& json) {
    const auto lida = base::Moeda::le(json.get<std::string>());
    if (!lida) throw base::Falha("Peso inválido.");
    return *lida;
}

base::DataHora data_de(const Json& json) {
    const auto lida = base::DataHora::le(json.get<std::string>());
    if (!lida) throw base::Falha("Data inválida.");
    return *lida;
}

Json do_pedido(const char* passo, const PedidoERP& pedido) {
    return {{"passo", passo},
            {"accao", accoes[static_cast<std::size_t>(pedido.accao)]},
            {"chave", de(pedido.chave)}};
}

Intencao intencao_de(const Json& json) {
    Intencao intencao;
    const auto fluxo = confirmacao::le_fluxo(json.at("fluxo").get<std::string>());
    if (!fluxo) throw base::Falha("Fluxo desconhecido.");
    intencao.fluxo = *fluxo;
    intencao.cria = chave_de(json.at("cria"));
    for (const Json& anulado : json.at("anula"))
        intencao.anula.push_back(chave_de(anulado));
    intencao.Cliente = json.at("cliente").get<std::string>();
    intencao.Data = data_de(json.at("data"));
    for (const Json& artigo : json.at("artigos"))
        intencao.artigos.push_back({artigo.at("artigo").get<std::string>(), moeda_de(artigo.at("quantidade")),
                                    artigo.at("armazem").get<std::string>()});
    return intencao;
}

Cabecalho cabecalho_de(const Json& json) {
    return {.empresa = json.at("empresa").get<std::string>(),
            .utilizador = json.at("utilizador").get<std::string>(),
            .maquina = json.at("maquina").get<std::string>(),
            .hora = data_de(json.at("hora")),
            .ultimo_numero = json.at("ultimo_numero").get<std::int32_t>(),
            .ultimo_registo = json.at("ultimo_registo").get<std::int64_t>()};
}

void toma_resposta(Passos& passos, const Json& json) {
    if (passos.chamadas.empty() ||
        passos.chamadas.back().pedido.accao != le_nome<AccaoERP>(accoes, json.at("accao")))
        throw base::Falha("Resposta sem chamada.");
    passos.chamadas.back().resposta =
        RespostaERP{le_nome<Desfecho>(desfechos, json.at("desfecho")), chave_de(json.at("chave")),
                    json.at("mensagem").get<std::string>()};
}

// A step that a later version added says nothing that this one could act on, and is passed over.
void toma(Passos& passos, const Json& json) {
    const auto passo = json.at("passo").get<std::string>();
    if (passo == "chamada")
        passos.chamadas.push_back(
            {.pedido = {le_nome<AccaoERP>(accoes, json.at("accao")), chave_de(json.at("chave"))}});
    else if (passo == "resposta")
        toma_resposta(passos, json);
    else if (passo == "confirma")
        passos.a_confirmar = true;
    else if (passo == "encontrado")
        passos.encontrado = chave_de(json.at("chave"));
    else if (passo == "visto")
        passos.visto = std::chrono::sys_seconds(std::chrono::seconds(json.at("quando").get<std::int64_t>()));
    else if (passo == "fim") {
        passos.fim = true;
        if (json.contains("resultado"))
            passos.resultado = le_nome<Resultado>(resultados, json.at("resultado"));
    }
}

} // namespace

std::string linha_da_intencao(const Cabecalho& cabecalho, const Intencao& intencao) {
    Json anula = Json::array(), artigos = Json::array();
    for (const ChaveDocumento& chave : intencao.anula)
        anula.push_back(de(chave));
    for (const confirmacao::ArtigoMovido& artigo : intencao.artigos)
        artigos.push_back({{"artigo", artigo.Artigo},
                           {"quantidade", artigo.Quantidade.texto()},
                           {"armazem", artigo.Armazem}});
    return linha({{"passo", "intencao"},
                  {"versao", versao},
                  {"empresa", cabecalho.empresa},
                  {"utilizador", cabecalho.utilizador},
                  {"maquina", cabecalho.maquina},
                  {"hora", cabecalho.hora.data_hora_iso()},
                  {"fluxo", nome(intencao.fluxo)},
                  {"cria", de(intencao.cria)},
                  {"anula", anula},
                  {"cliente", intencao.Cliente},
                  {"data", intencao.Data.data_hora_iso()},
                  {"artigos", artigos},
                  {"ultimo_numero", cabecalho.ultimo_numero},
                  {"ultimo_registo", cabecalho.ultimo_registo}});
}

std::string linha_da_chamada(const PedidoERP& pedido) { return linha(do_pedido("chamada", pedido)); }

std::string linha_da_resposta(const PedidoERP& pedido, const RespostaERP& resposta) {
    Json passo = do_pedido("resposta", pedido);
    passo["desfecho"] = desfechos[static_cast<std::size_t>(resposta.desfecho)];
    passo["chave"] = de(resposta.chave);
    passo["mensagem"] = resposta.mensagem;
    return linha(passo);
}

std::string linha_de_confirmar() { return linha({{"passo", "confirma"}}); }

std::string linha_do_encontrado(const ChaveDocumento& chave) {
    return linha({{"passo", "encontrado"}, {"chave", de(chave)}});
}

std::string linha_do_visto(std::chrono::sys_seconds quando) {
    return linha({{"passo", "visto"}, {"quando", quando.time_since_epoch().count()}});
}

std::string linha_do_fim(Resultado resultado) {
    return linha({{"passo", "fim"}, {"resultado", resultados[static_cast<std::size_t>(resultado)]}});
}

const Chamada* criacao(const Passos& passos) {
    for (const Chamada& chamada : passos.chamadas)
        if (chamada.pedido.accao == AccaoERP::cria) return &chamada;
    return nullptr;
}

const Chamada* anulacao(const Passos& passos, const ChaveDocumento& chave) {
    const Chamada* ultima = nullptr;
    for (const Chamada& chamada : passos.chamadas)
        if (chamada.pedido.accao == AccaoERP::anula && chamada.pedido.chave == chave) ultima = &chamada;
    return ultima;
}

namespace {

// Only a last line can have been torn.
bool ha_linha_inteira(std::string_view texto) {
    for (std::size_t fim = texto.find('\n'); fim != std::string_view::npos; fim = texto.find('\n')) {
        if (passo_de(texto.substr(0, fim))) return true;
        texto.remove_prefix(fim + 1);
    }
    return false;
}

} // namespace

std::optional<Leitura> le_passos(std::string_view texto) {
    Leitura leitura;
    bool primeira = true;
    try {
        for (;;) {
            const std::string_view resto = texto.substr(leitura.bytes);
            const std::size_t fim = resto.find('\n');
            if (fim == std::string_view::npos) break;
            const auto passo = passo_de(resto.substr(0, fim));
            if (!passo) {
                if (ha_linha_inteira(resto.substr(fim + 1))) return std::nullopt;
                break;
            }
            if (primeira) {
                if (passo->at("passo") != "intencao" || passo->at("versao") != versao) return std::nullopt;
                leitura.passos.cabecalho = cabecalho_de(*passo);
                leitura.passos.intencao = intencao_de(*passo);
                primeira = false;
            } else {
                toma(leitura.passos, *passo);
            }
            leitura.bytes += fim + 1;
        }
    } catch (const std::exception&) { // well summed, and yet not what this program writes
        return std::nullopt;
    }
    if (primeira) return std::nullopt;
    return leitura;
}

} // namespace orvex::platform::diario
