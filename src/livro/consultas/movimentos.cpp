// What moved in a period.
#include "base/texto.h"
#include "livro/consultas/partes.h"

#include <algorithm>

namespace orvex::livro::consultas {
namespace {

using base::Moeda;
using base::Variante;

// That a row is of a kind; empty for those that no parameter names, which are told when they are read.
std::string da_especie(const Casa& casa, const std::string& palavra) {
    const auto das = [](const Numeracao& estas, const char* numero) {
        return "(x.TpDoc=" + base::entre_plicas(estas.TpDoc) + " and x.Serie=" + std::to_string(estas.Serie) +
               " and " + numero + ")";
    };
    constexpr const char* sem_numero = "(x.NNumDoc=0 or x.NNumDoc is null)";
    if (palavra == nome(Especie::saida))
        return "(" + das(casa.quebras, sem_numero) + " or " + das(casa.sobras, sem_numero) + ")";
    for (const auto& [qual, numeracao] : {std::pair{Especie::guia, &casa.guias},
                                          {Especie::devolucao, &casa.devolucoes},
                                          {Especie::sobra, &casa.sobras},
                                          {Especie::quebra, &casa.quebras},
                                          {Especie::consumo, &casa.consumos}})
        if (palavra == nome(qual)) return das(*numeracao, "x.NNumDoc>0");
    return {};
}

std::string onde(const Meios& meios, const PedidoMovimentos& pedido) {
    std::string sql = " where " + perto_de("x.Data", pedido.de, pedido.ate);
    if (!pedido.artigo.empty()) sql += " and x.NumSerie=" + base::entre_plicas(pedido.artigo);
    if (!pedido.cliente.empty()) {
        const std::string ele = base::entre_plicas(pedido.cliente);
        sql += " and (x.Cliente=" + ele + " or m.Cliente=" + ele + ")";
    }
    if (const auto qual = le_documento(pedido.documento)) {
        sql += " and x.NNumDoc=" + std::to_string(qual->Numero);
        if (!qual->TpDoc.empty()) sql += " and x.TpDoc=" + base::entre_plicas(qual->TpDoc);
        if (qual->Serie) sql += " and x.Serie=" + std::to_string(*qual->Serie);
        if (qual->Ano) sql += " and x.Ano=" + std::to_string(*qual->Ano);
    }
    if (const std::string desta = da_especie(meios.casa, pedido.especie); !desta.empty())
        sql += " and " + desta;
    return sql;
}

// Totals by kind: how many, what came in and what went out.
struct Soma {
    int quantos = 0;
    Moeda peso;
};

class Escrita {
  public:
    Escrita(const Meios& meios, const PedidoMovimentos& pedido, Destino& destino)
        : meios_(meios), pedido_(pedido), destino_(destino) {}

    // Rows come by date and time; those of one day are told by `Registo`.
    bool junta(Registo& r) {
        const int deste = r.dia;
        if (deste < dia(pedido_.de) || deste > dia(pedido_.ate)) return true;
        if (!pedido_.especie.empty() && nome(r.especie) != pedido_.especie) return true;
        const bool segue = deste == dia_ || despeja();
        dia_ = deste;
        do_dia_.push_back(std::move(r));
        return segue;
    }
    bool despeja() {
        const auto antes = [](const Registo& a, const Registo& b) { return a.Registo < b.Registo; };
        if (!std::is_sorted(do_dia_.begin(), do_dia_.end(), antes)) // as an index mostly gives them
            std::sort(do_dia_.begin(), do_dia_.end(), antes);
        // Of an article that the ERP has twice, whose rows need not come one after the other.
        const auto mesmo = [](const Registo& a, const Registo& b) { return a.Registo == b.Registo; };
        do_dia_.erase(std::unique(do_dia_.begin(), do_dia_.end(), mesmo), do_dia_.end());
        for (const Registo& r : do_dia_) {
            Soma& soma = somas_[nome(r.especie)];
            ++soma.quantos;
            soma.peso += r.peso();
            if (!destino_.linha({ou_nulo(r.Data), nome(r.especie), ou_nulo(r.documento()), r.NumSerie,
                                 ou_nulo(r.Nome), ou_nulo(r.ClienteDaGuia), ou_nulo(r.Cliente),
                                 r.Quantidade ? Variante(*r.Quantidade) : Variante(), ou_nulo(r.Obs)}))
                return false;
        }
        do_dia_.clear();
        return true;
    }
    void totais() {
        for (const std::string& especie : especies())
            if (const auto soma = somas_.find(especie); soma != somas_.end())
                destino_.total({"Total",
                                especie,
                                {},
                                {},
                                std::to_string(soma->second.quantos) +
                                    (soma->second.quantos == 1 ? " movimento" : " movimentos"),
                                {},
                                {},
                                soma->second.peso,
                                {}});
    }

  private:
    const Meios& meios_;
    const PedidoMovimentos& pedido_;
    Destino& destino_;
    std::vector<Registo> do_dia_;
    int dia_ = 0;
    std::map<std::string, Soma> somas_;
};

} // namespace

bool movimentos(const Meios& meios, const PedidoMovimentos& pedido, Destino& destino) {
    if (!pedido.documento.empty() && !le_documento(pedido.documento)) return false;
    Vista esta{"movimentos", "Movimentos", {{"De", pedido.de.data()}, {"Até", pedido.ate.data()}}, true};
    for (const auto& [nome, valor] : {std::pair{"Tipo", &pedido.especie},
                                      {"Artigo", &pedido.artigo},
                                      {"Cliente", &pedido.cliente},
                                      {"Documento", &pedido.documento}})
        if (!valor->empty()) esta.filtros.push_back({nome, *valor});
    destino.vista(esta);
    destino.quadro({"movimentos",
                    "Do mais antigo para o mais recente, sem os que não têm data",
                    {col::data, col::especie, col::documento, col::artigo, col::designacao, col::cliente,
                     col::detentor, col::peso, col::observacoes}});
    Escrita escrita(meios, pedido, destino);
    bool inteira = true;
    le_registos(meios, {.com_guias = true, .onde = onde(meios, pedido), .ordem = "x.Data"},
                [&](Registo& r) { return inteira = escrita.junta(r); });
    if (inteira && escrita.despeja()) escrita.totais();
    return true;
}

} // namespace orvex::livro::consultas
