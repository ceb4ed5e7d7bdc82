// What a client holds, how long, and what went to and fro.
#include "base/texto.h"
#include "livro/consultas/partes.h"

#include <algorithm>
#include <array>

namespace orvex::livro::consultas {
namespace {

using base::DataHora;
using base::Moeda;
using base::Variante;

constexpr int meses = 24;

struct Detido {
    std::string artigo, nome;
    Posse posse;
};

struct Mes {
    DataHora fim; // the last day
    int dia = 0;
    int artigos = 0;
    Moeda peso;
};

// The ends of the months before the day, and the day itself.
std::array<Mes, meses> ultimos_meses(const DataHora& ate) {
    std::array<Mes, meses> todos;
    DataHora primeiro{ate.ano, ate.mes, 1};
    for (auto mes = todos.rbegin(); mes != todos.rend(); ++mes) {
        mes->fim =
            mes == todos.rbegin() ? DataHora{ate.ano, ate.mes, ate.dia} : data_do_dia(dia(primeiro) - 1);
        mes->dia = dia(mes->fim);
        primeiro = {mes->fim.ano, mes->fim.mes, 1};
    }
    return todos;
}

struct Posses {
    std::vector<Detido> detidos;
    std::array<Mes, meses> evolucao;
    bool algum_dia = false; // the client had something once
};

// Nothing when it was given up.
std::optional<Posses> le_posses(const Meios& meios, const PedidoCliente& pedido, Destino& destino) {
    Posses lidas{.detidos = {}, .evolucao = ultimos_meses(pedido.data.value_or(meios.hoje))};
    const int ate = pedido.data ? dia(*pedido.data) : sempre;
    const auto junta = [&](std::vector<Registo>& registos) {
        lidas.algum_dia = true;
        Posse esta = posse(registos, ate);
        for (Mes& mes : lidas.evolucao) {
            const auto entao = resumo_da_posse(registos, mes.dia);
            if (!entao || !mesmo_codigo(entao->detentor, pedido.codigo)) continue;
            ++mes.artigos;
            if (esta.com_inicio) mes.peso += entao->peso;
        }
        if (esta.ha && mesmo_codigo(esta.detentor, pedido.codigo))
            lidas.detidos.push_back({registos.back().NumSerie, registos.back().Nome, std::move(esta)});
    };
    if (!le_historias(meios, dos_artigos_de(pedido.codigo), destino, junta)) return std::nullopt;
    return lidas;
}

bool mostra_detidos(const std::vector<Detido>& detidos, int no_dia, Destino& destino) {
    destino.quadro({"artigos",
                    "Artigos em poder do cliente",
                    {col::artigo, col::designacao, col::desde, col::dias, col::peso, col::ressalvas}});
    Moeda soma;
    for (const Detido& este : detidos) {
        if (este.posse.com_inicio) soma += este.posse.peso;
        if (!destino.linha({este.artigo, ou_nulo(este.nome), ou_nulo(este.posse.desde),
                            dias_desde(este.posse.desde, no_dia), este.posse.peso_conhecido(),
                            ou_nulo(este.posse.ressalvas)}))
            return false;
    }
    const std::size_t quantos = detidos.size();
    destino.total(
        {"Total", std::to_string(quantos) + (quantos == 1 ? " artigo" : " artigos"), {}, {}, soma, {}});
    return true;
}

bool mostra_idades(const std::vector<Detido>& detidos, int no_dia, Destino& destino) {
    struct Faixa {
        const char* nome;
        int ate;
        int artigos = 0;
        Moeda peso{};
    };
    std::array<Faixa, 5> faixas{{{"Até 30 dias", 30},
                                 {"Até 90 dias", 90},
                                 {"Até 180 dias", 180},
                                 {"Mais de 180 dias", sempre},
                                 {"Sem data", 0}}};
    for (const Detido& este : detidos) {
        auto faixa = faixas.end() - 1;
        if (este.posse.desde)
            for (faixa = faixas.begin(); no_dia - dia(*este.posse.desde) > faixa->ate;)
                ++faixa;
        ++faixa->artigos;
        if (este.posse.com_inicio) faixa->peso += este.posse.peso;
    }
    destino.quadro(
        {"idades", "Há quanto tempo", {{"faixa", "Há"}, {"artigos", "Artigos", Tipo::inteiro}, col::peso}});
    for (const Faixa& faixa : faixas)
        if (faixa.ate > 0 || faixa.artigos > 0)
            if (!destino.linha({faixa.nome, faixa.artigos, faixa.peso})) return false;
    return true;
}

// A document of notes or returns, of its movement lines.
struct Guia {
    Referencia qual;
    std::optional<DataHora> Data;
    int linhas = 0;
    Moeda liquido, bruto;
};

std::vector<Guia> le_guias(const Meios& meios, const std::string& cliente, const DataHora& de,
                           const DataHora& ate) {
    const auto nas = [](const Numeracao& estas) {
        return "(TpDoc=" + base::entre_plicas(estas.TpDoc) + " and SerieDoc=" + std::to_string(estas.Serie) +
               ")";
    };
    const auto linhas = meios.BD.Consulta(
        "Select Ano, TpDoc, SerieDoc, NumDoc, Data, PesoLiquido, PesoBruto from xel_ORVEX_Mov where "
        "Cliente=" +
        base::entre_plicas(cliente) + " and (" + nas(meios.casa.guias) + " or " + nas(meios.casa.devolucoes) +
        ") and " + perto_de("Data", de, ate) + " order by Ano desc, TpDoc, SerieDoc, NumDoc desc");
    std::vector<Guia> guias;
    for (; !linhas->fim(); linhas->move_seguinte()) {
        const Referencia deste{linhas->valor(0).inteiro(), linhas->valor(1).texto(),
                               linhas->valor(2).inteiro(), linhas->valor(3).inteiro()};
        const DataHora data = linhas->valor(4).data();
        if (dia(data) < dia(de) || dia(data) > dia(ate)) continue;
        if (guias.empty() || guias.back().qual != deste) guias.push_back({deste, data, 0, {}, {}});
        const auto soma = [&](Moeda& em, std::size_t coluna) {
            if (!linhas->valor(coluna).nulo()) em += linhas->valor(coluna).moeda();
        };
        ++guias.back().linhas;
        soma(guias.back().liquido, 5);
        soma(guias.back().bruto, 6);
    }
    std::stable_sort(guias.begin(), guias.end(),
                     [](const Guia& a, const Guia& b) { return dia(a.Data) > dia(b.Data); });
    return guias;
}

bool mostra_guias(const Casa& casa, const std::vector<Guia>& guias, Destino& destino) {
    destino.quadro({"guias",
                    "Guias e devoluções",
                    {col::data,
                     col::especie,
                     col::documento,
                     {"linhas", "Linhas", Tipo::inteiro},
                     col::liquido,
                     col::bruto}});
    std::map<std::string, Guia> somas;
    for (const Guia& guia : guias) {
        const std::string tipo = tipo_em_palavras(casa, guia.qual.TpDoc, guia.qual.Serie);
        Guia& soma = somas[tipo];
        soma.linhas += guia.linhas;
        soma.liquido += guia.liquido;
        soma.bruto += guia.bruto;
        if (!destino.linha(
                {ou_nulo(guia.Data), tipo, guia.qual.texto(), guia.linhas, guia.liquido, guia.bruto}))
            return false;
    }
    for (const auto& [tipo, soma] : somas)
        destino.total({"Total", tipo, {}, soma.linhas, soma.liquido, soma.bruto});
    return true;
}

void mostra_evolucao(const std::array<Mes, meses>& evolucao, Destino& destino) {
    destino.quadro({"evolucao",
                    "Em poder do cliente nos últimos 24 meses",
                    {{"data", "Em", Tipo::data}, {"artigos", "Artigos", Tipo::inteiro}, col::peso}});
    for (const Mes& mes : evolucao)
        if (!destino.linha({mes.fim, mes.artigos, mes.peso})) return;
}

} // namespace

bool cliente(const Meios& meios, const PedidoCliente& pedido, Destino& destino) {
    const NomeDeCodigo quem = cliente_no_erp(meios.BD, pedido.codigo);
    const std::optional<Posses> lidas = le_posses(meios, pedido, destino);
    if (!lidas) return true;
    const Posses& posses = *lidas;
    if (!quem.ha && !posses.algum_dia) return false;
    const DataHora ate = pedido.data.value_or(meios.hoje);
    const DataHora de = pedido.de.value_or(data_do_dia(dia(ate) - 365));
    const int no_dia = dia(ate);

    Moeda peso_detido;
    std::string faltas = quem.ha ? "" : "O ERP não tem este cliente";
    for (const Detido& este : posses.detidos)
        if (este.posse.com_inicio)
            peso_detido += este.posse.peso;
        else
            junta_ressalva(faltas, "O peso dos artigos sem início no livro não é conhecido, nem somado");
    destino.vista({"cliente",
                   "Cliente " + quem.codigo,
                   {{"À data", pedido.data ? pedido.data->data() : "de hoje, " + ate.data()},
                    {"Guias e devoluções", de.data() + " a " + ate.data()}},
                   false});
    destino.quadro({"ficha",
                    "Em poder do cliente",
                    {col::cliente,
                     col::nome,
                     col::data,
                     {"artigos", "Artigos", Tipo::inteiro},
                     col::peso,
                     col::ressalvas},
                    true});
    if (!destino.linha({quem.codigo, ou_nulo(quem.nome), data_do_dia(no_dia),
                        static_cast<std::int64_t>(posses.detidos.size()), peso_detido, ou_nulo(faltas)}) ||
        !mostra_detidos(posses.detidos, no_dia, destino) || !mostra_idades(posses.detidos, no_dia, destino) ||
        !mostra_abertas(meios, "Cliente", quem.codigo, destino) ||
        !mostra_guias(meios.casa, le_guias(meios, quem.codigo, de, ate), destino))
        return true;
    mostra_evolucao(posses.evolucao, destino);
    return true;
}

} // namespace orvex::livro::consultas
