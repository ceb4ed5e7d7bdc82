// Where an item is, since when, and its whole life.
#include "base/texto.h"
#include "livro/consultas/partes.h"

#include <set>

namespace orvex::livro::consultas {
namespace {

using base::Variante;

struct Ficha {
    std::string codigo, designacao, nota;
    bool ha = false;
};

Ficha le_ficha(startup::SessaoBD& BD, const std::string& codigo) {
    const auto artigo =
        BD.Consulta("Select CODIGO, Nome, Observ from Artigos where CODIGO=" + base::entre_plicas(codigo));
    if (artigo->fim()) return {codigo, {}, {}, false};
    return {artigo->valor(0).texto(), artigo->valor(1).texto(), artigo->valor(2).texto(), true};
}

// From whom to whom, as far as the rows say it.
struct Sentido {
    std::string de, para;
};

Sentido sentido(const Registo& r, const std::string& antes) {
    const std::string& cliente = r.ClienteDaGuia;
    switch (r.especie) {
    case Especie::guia:
        return {r.da_orvex ? r.Cliente : antes, cliente.empty() ? r.Cliente : cliente};
    case Especie::devolucao:
        return {cliente, r.Cliente};
    case Especie::saida:
        return {r.Cliente, r.CliFinal};
    case Especie::entrada:
        return {{}, r.Cliente};
    case Especie::outra:
        return r.peso() < base::Moeda() ? Sentido{r.Cliente, {}} : Sentido{{}, r.Cliente};
    default: // an adjustment moves it to nobody
        return {};
    }
}

std::vector<Linha> movimentos_de(const std::vector<Registo>& registos, Posse& fim) {
    std::vector<Linha> linhas;
    const Registo* anterior = nullptr;
    fim = posse(registos, sempre, [&](const Registo& r, const Posse& agora) {
        auto [de, para] = sentido(r, anterior != nullptr ? anterior->Cliente : "");
        std::string obs = r.Obs;
        // A transfer is one movement of two rows.
        if (r.especie == Especie::entrada && anterior != nullptr && anterior->especie == Especie::saida) {
            de = anterior->Cliente;
            if (obs.empty()) obs = anterior->Obs;
            linhas.pop_back();
        }
        const bool inicio = r.especie == Especie::entrada && anterior == nullptr;
        linhas.push_back({ou_nulo(r.Data), inicio ? "Início" : nome(r.especie), ou_nulo(r.documento()),
                          ou_nulo(de), ou_nulo(para), ou_nulo(r.Cliente),
                          r.Quantidade ? Variante(*r.Quantidade) : Variante(), agora.saldo, ou_nulo(obs),
                          ou_nulo(agora.da_linha)});
        anterior = &r;
    });
    return linhas;
}

void mostra_stock(startup::SessaoBD& BD, const std::string& codigo, Destino& destino) {
    destino.quadro({"stock",
                    "Stock por armazém, no ERP",
                    {{"armazem", "Armazém", Tipo::codigo}, {"existencia", "Existência (t)", Tipo::peso}}});
    const auto stock =
        BD.Consulta("Select Armazem, Existenc from artarm where Artigo=" + base::entre_plicas(codigo) +
                    " order by Armazem");
    for (; !stock->fim(); stock->move_seguinte())
        if (!destino.linha({stock->valor(0), peso(stock->valor(1))})) return;
}

// Lines of notes that no return brought back.
void mostra_guias_por_devolver(const Meios& meios, const std::string& codigo, Destino& destino) {
    destino.quadro({"por_devolver",
                    "Linhas de guia por devolver agora",
                    {col::documento, col::linha, col::data, col::cliente, col::peso, col::bruto}});
    const Numeracao& notas = meios.casa.guias;
    const auto linhas = meios.BD.Consulta(
        "Select Ano, TpDoc, SerieDoc, NumDoc, NumLinha, Data, Cliente, QtdOrig, PesoBruto, Origem from "
        "xel_ORVEX_Mov where Artigo=" +
        base::entre_plicas(codigo) + " and ((TpDoc=" + base::entre_plicas(notas.TpDoc) +
        " and SerieDoc=" + std::to_string(notas.Serie) +
        ") or TpDoc=" + base::entre_plicas(meios.casa.devolucoes.TpDoc) + ") order by Ano, NumDoc, NumLinha");
    using Chave = std::pair<Referencia, std::int64_t>;
    std::vector<std::pair<Chave, Linha>> guias;
    std::set<Chave> devolvidas;
    for (; !linhas->fim(); linhas->move_seguinte()) {
        const Referencia deste{linhas->valor(0).inteiro(), linhas->valor(1).texto(),
                               linhas->valor(2).inteiro(), linhas->valor(3).inteiro()};
        if (notas.e(deste.TpDoc, deste.Serie))
            guias.push_back({{deste, linhas->valor(4).inteiro()},
                             {deste.texto(), linhas->valor(4), linhas->valor(5), linhas->valor(6),
                              peso(linhas->valor(7)), peso(linhas->valor(8))}});
        else if (const auto origem = le_chave(linhas->valor(9).texto()))
            devolvidas.insert({Referencia::de(*origem), *base::le_inteiro(origem->NumLinha)});
    }
    for (const auto& [chave, linha] : guias)
        if (!devolvidas.contains({chave.first.normal(), chave.second}))
            if (!destino.linha(linha)) return;
}

} // namespace

bool artigo(const Meios& meios, const std::string& codigo, Destino& destino) {
    Ficha ficha = le_ficha(meios.BD, codigo);
    std::vector<Registo> registos;
    le_registos(meios, {.com_guias = true, .onde = " where x.NumSerie=" + base::entre_plicas(codigo)},
                [&](Registo& r) {
                    registos.push_back(std::move(r));
                    return true;
                });
    if (!ficha.ha && registos.empty()) return false;
    if (!ficha.ha) ficha.codigo = registos.back().NumSerie;
    Posse fim;
    const std::vector<Linha> movimentos = movimentos_de(registos, fim);
    std::string faltas = fim.ressalvas;
    if (!fim.ha) junta_ressalva(faltas, "O livro não tem movimentos deste artigo");
    if (!ficha.ha) junta_ressalva(faltas, "O ERP não tem este artigo");

    destino.vista({"artigo", "Artigo " + ficha.codigo, {}, false});
    destino.quadro({"ficha",
                    "Onde está",
                    {col::artigo,
                     col::designacao,
                     col::detentor,
                     col::nome,
                     col::desde,
                     col::dias,
                     col::peso,
                     {"saldo", "Saldo do livro (t)", Tipo::peso},
                     {"nota", "Nota"},
                     col::ressalvas},
                    true});
    if (!destino.linha({ficha.codigo, ou_nulo(ficha.designacao), ou_nulo(fim.detentor),
                        ou_nulo(cliente_no_erp(meios.BD, fim.detentor).nome), ou_nulo(fim.desde),
                        dias_desde(fim.desde, dia(meios.hoje)), fim.ha ? fim.peso_conhecido() : Variante(),
                        fim.ha ? Variante(fim.saldo) : Variante(), ou_nulo(ficha.nota), ou_nulo(faltas)}))
        return true;
    mostra_stock(meios.BD, ficha.codigo, destino);
    destino.quadro({"movimentos",
                    "Movimentos, do mais recente para o mais antigo",
                    {col::data,
                     col::especie,
                     col::documento,
                     {"de", "De", Tipo::codigo, Ligacao::cliente},
                     {"para", "Para", Tipo::codigo, Ligacao::cliente},
                     col::detentor,
                     col::peso,
                     {"saldo", "Saldo (t)", Tipo::peso},
                     col::observacoes,
                     col::ressalvas}});
    for (auto linha = movimentos.rbegin(); linha != movimentos.rend(); ++linha)
        if (!destino.linha(*linha)) return true;
    if (mostra_abertas(meios, "Artigo", ficha.codigo, destino))
        mostra_guias_por_devolver(meios, ficha.codigo, destino);
    return true;
}

} // namespace orvex::livro::consultas
