// What has been out too long.
#include "livro/consultas/partes.h"

#include <algorithm>

namespace orvex::livro::consultas {
namespace {

using base::Moeda;

struct Parado {
    std::string artigo, nome;
    Posse posse;
};

// Nothing when it was given up. `ha` says whether the ledger has any history of what was asked for.
std::optional<std::vector<Parado>> le_parados(const Meios& meios, const PedidoParados& pedido,
                                              Destino& destino, bool& ha) {
    std::vector<Parado> parados;
    const int ate = pedido.data ? dia(*pedido.data) : sempre;
    const int antes_de = dia(pedido.data.value_or(meios.hoje)) - pedido.dias;
    const auto junta = [&](std::vector<Registo>& registos) {
        ha = true;
        // Mostly the newest row says at once that it is not out.
        if (!pedido.data && registos.back().da_orvex) return;
        Posse esta = posse(registos, ate);
        const bool fora = esta.ha && !esta.na_orvex &&
                          (pedido.cliente.empty() || mesmo_codigo(esta.detentor, pedido.cliente));
        if (fora && dia(esta.desde) < antes_de)
            parados.push_back({registos.back().NumSerie, registos.back().Nome, std::move(esta)});
    };
    if (!le_historias(meios, pedido.cliente.empty() ? "" : dos_artigos_de(pedido.cliente), destino, junta))
        return std::nullopt;
    std::stable_sort(parados.begin(), parados.end(), [](const Parado& a, const Parado& b) {
        return dia(a.posse.desde) < dia(b.posse.desde);
    });
    return parados;
}

std::map<std::string, std::string> nomes_dos_clientes(startup::SessaoBD& BD) {
    std::map<std::string, std::string> nomes;
    for (const auto linhas = BD.Consulta("Select CODIGO, Nome from Clientes"); !linhas->fim();
         linhas->move_seguinte())
        nomes[codigo_normal(linhas->valor(0).texto())] = linhas->valor(1).texto();
    return nomes;
}

} // namespace

bool parados(const Meios& meios, const PedidoParados& pedido, Destino& destino) {
    const auto nomes = nomes_dos_clientes(meios.BD);
    const base::DataHora ate = pedido.data.value_or(meios.hoje);
    Vista esta{"parados",
               "Artigos parados há mais de " + std::to_string(pedido.dias) + " dias",
               {{"À data", ate.data()}},
               true};
    if (!pedido.cliente.empty()) esta.filtros.push_back({"Cliente", pedido.cliente});
    bool ha = pedido.cliente.empty() || nomes.contains(codigo_normal(pedido.cliente));
    const auto lidos = le_parados(meios, pedido, destino, ha);
    if (!lidos) return true;
    if (!ha) return false;
    const auto& todos = *lidos;
    destino.vista(esta);
    destino.quadro({"parados",
                    "Os mais antigos primeiro",
                    {col::artigo, col::designacao, col::cliente, col::nome, col::desde, col::dias, col::peso,
                     col::ressalvas}});
    Moeda soma;
    for (const Parado& este : todos) {
        if (este.posse.com_inicio) soma += este.posse.peso;
        const auto dele = nomes.find(codigo_normal(este.posse.detentor));
        if (!destino.linha({este.artigo, ou_nulo(este.nome), ou_nulo(este.posse.detentor),
                            dele == nomes.end() ? base::Variante() : base::Variante(dele->second),
                            ou_nulo(este.posse.desde), dias_desde(este.posse.desde, dia(ate)),
                            este.posse.peso_conhecido(), ou_nulo(este.posse.ressalvas)}))
            return true;
    }
    destino.total({"Total",
                   std::to_string(todos.size()) + (todos.size() == 1 ? " artigo" : " artigos"),
                   {},
                   {},
                   {},
                   {},
                   soma,
                   {}});
    return true;
}

} // namespace orvex::livro::consultas
