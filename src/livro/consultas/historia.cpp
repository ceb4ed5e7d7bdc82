#include "livro/consultas/historia.h"

#include "base/texto.h"
#include "livro/consultas/partes.h"

#include <array>
#include <chrono>

namespace orvex::livro::consultas {
namespace {

using base::DataHora;
using base::Moeda;
using base::Variante;

namespace coluna {
enum Coluna : std::size_t {
    NumSerie,
    Registo,
    Cliente,
    CliFinal,
    Data,
    Quantidade,
    Ano,
    TpDoc,
    Serie,
    NNumDoc,
    NumLin,
    Obs,
    Nome,
    ClienteDaGuia
};
} // namespace coluna

std::string texto_da(const Leitura& leitura) {
    std::string sql = "Select x.NumSerie, x.Registo, x.Cliente, x.CliFinal, x.Data, x.Quantidade, x.Ano, "
                      "x.TpDoc, x.Serie, x.NNumDoc, x.NumLin, x.Obs, a.Nome";
    if (leitura.com_guias) sql += ", m.Cliente";
    sql += " from xel_ORVEX x left outer join Artigos a on a.CODIGO=x.NumSerie";
    if (leitura.com_guias)
        sql += " left outer join xel_ORVEX_Mov m on m.Ano=x.Ano and m.TpDoc=x.TpDoc and m.NumDoc=x.NNumDoc "
               "and m.SerieDoc=x.Serie and m.NumLinha=x.NumLin";
    return sql + leitura.onde + " order by " + leitura.ordem;
}

Registo le(const Casa& casa, startup::ConjuntoRegistos& linha, bool com_guias) {
    namespace C = coluna;
    const Variante Data = linha.valor(C::Data), Quantidade = linha.valor(C::Quantidade);
    Registo registo{.NumSerie = linha.valor(C::NumSerie).texto(),
                    .Cliente = linha.valor(C::Cliente).texto(),
                    .CliFinal = linha.valor(C::CliFinal).texto(),
                    .TpDoc = linha.valor(C::TpDoc).texto(),
                    .Obs = linha.valor(C::Obs).texto(),
                    .Nome = linha.valor(C::Nome).texto(),
                    .Registo = linha.valor(C::Registo).inteiro(),
                    .Ano = inteiro(linha.valor(C::Ano)),
                    .Serie = inteiro(linha.valor(C::Serie)),
                    .NNumDoc = inteiro(linha.valor(C::NNumDoc)),
                    .NumLin = inteiro(linha.valor(C::NumLin)),
                    .Data = Data.nulo() ? std::nullopt : std::optional(Data.data()),
                    .Quantidade = Quantidade.nulo() ? std::nullopt : std::optional(Quantidade.moeda()),
                    .ClienteDaGuia = com_guias ? linha.valor(C::ClienteDaGuia).texto() : std::string(),
                    .especie = {},
                    .da_orvex = false,
                    .dia = {}};
    registo.da_orvex = casa.e_orvex(registo.Cliente);
    registo.dia = dia(registo.Data);
    registo.especie = especie(casa, registo.TpDoc, registo.Serie, registo.NNumDoc);
    return registo;
}

std::string passou(const std::string& de, const std::string& para) {
    const auto quem = [](const std::string& cliente) { return cliente.empty() ? "ninguém" : cliente; };
    return "O livro não diz como passou de " + quem(de) + " para " + quem(para);
}

// Item after item, row after row.
class Percurso {
  public:
    void anda(const Registo& r) {
        posse.da_linha.clear();
        posse.ha ? continua(r) : comeca(r);
        if (!r.Quantidade) ressalva(movimento_sem_peso);
        if (!r.Data) ressalva(movimento_sem_data);
        if (!anterior_ || !mesmo_codigo(r.Cliente, posse.detentor)) posse.desde = r.Data;
        posse.detentor = r.Cliente;
        posse.na_orvex = r.da_orvex;
        somas_[r.da_orvex ? 0 : 1] += r.peso();
        posse.saldo += r.peso();
        posse.peso = somas_[r.da_orvex ? 0 : 1];
        anterior_ = &r;
    }
    void acaba() {
        if (anterior_ != nullptr && anterior_->especie == Especie::saida) so_a_saida();
    }

    Posse posse;

  private:
    // What stands first is the beginning if it came in by itself; what this program does later needs one.
    void comeca(const Registo& r) {
        posse.ha = true;
        const bool por_si = r.especie == Especie::entrada || r.especie == Especie::outra;
        posse.com_inicio = por_si && r.peso() >= Moeda();
        if (!posse.com_inicio) ressalva(sem_inicio);
    }
    void continua(const Registo& r) {
        const bool depois_da_saida = anterior_->especie == Especie::saida;
        if (depois_da_saida && r.especie != Especie::entrada) so_a_saida();
        if (r.especie == Especie::entrada && !depois_da_saida)
            ressalva(passou(anterior_->Cliente, r.Cliente));
        // An adjustment and an exit name the holder of then.
        const bool nomeia = r.especie == Especie::sobra || r.especie == Especie::quebra ||
                            r.especie == Especie::consumo || r.especie == Especie::saida;
        if (nomeia && !depois_da_saida && !mesmo_codigo(r.Cliente, anterior_->Cliente))
            ressalva(passou(anterior_->Cliente, r.Cliente));
    }
    void so_a_saida() { ressalva("O livro tem a saída para " + anterior_->CliFinal + ", e não a entrada"); }
    void ressalva(const std::string& esta) {
        junta_ressalva(posse.ressalvas, esta);
        junta_ressalva(posse.da_linha, esta);
    }

    Moeda somas_[2]; // at ORVEX, at the clients
    const Registo* anterior_ = nullptr;
};

} // namespace

Especie especie(const Casa& casa, const std::string& TpDoc, std::int64_t Serie, std::int64_t NNumDoc) {
    if (NNumDoc == 0) // the rows of a transfer
        return casa.quebras.e(TpDoc, Serie)  ? Especie::saida
               : casa.sobras.e(TpDoc, Serie) ? Especie::entrada
                                             : Especie::outra;
    for (const auto& [numeracao, qual] : {std::pair{&casa.guias, Especie::guia},
                                          {&casa.devolucoes, Especie::devolucao},
                                          {&casa.sobras, Especie::sobra},
                                          {&casa.quebras, Especie::quebra},
                                          {&casa.consumos, Especie::consumo}})
        if (numeracao->e(TpDoc, Serie)) return qual;
    return Especie::outra;
}

const std::vector<std::string>& especies() {
    static const std::vector<std::string> todas{"Guia",    "Devolução",     "Sobra", "Quebra",
                                                "Consumo", "Transferência", "Outro"};
    return todas;
}

const std::string& nome(Especie qual) {
    constexpr std::size_t transferencia = 5, outra = 6;
    if (qual == Especie::saida || qual == Especie::entrada) return especies()[transferencia];
    return especies()[qual == Especie::outra ? outra : static_cast<std::size_t>(qual)];
}

int dia(const DataHora& data) {
    using namespace std::chrono;
    const sys_days dias =
        year(data.ano) / month(static_cast<unsigned>(data.mes)) / day(static_cast<unsigned>(data.dia));
    return static_cast<int>(dias.time_since_epoch().count()) + 1'000'000; // the year 1 is not 0
}

int dia(const std::optional<DataHora>& data) { return data ? dia(*data) : 0; }

DataHora data_do_dia(int dia) {
    using namespace std::chrono;
    const year_month_day data{sys_days(days(dia - 1'000'000))};
    return {static_cast<int>(data.year()), static_cast<int>(static_cast<unsigned>(data.month())),
            static_cast<int>(static_cast<unsigned>(data.day()))};
}

std::string Registo::documento() const {
    if (NNumDoc == 0) return {};
    return std::to_string(Ano) + "/" + TpDoc + "/" + std::to_string(Serie) + "/" + std::to_string(NNumDoc);
}

void le_registos(const Meios& meios, const Leitura& leitura, const std::function<bool(Registo&)>& cada) {
    std::int64_t ultimo = -1;
    for (const auto linhas = meios.BD.Consulta(texto_da(leitura)); !linhas->fim(); linhas->move_seguinte()) {
        Registo registo = le(meios.casa, *linhas, leitura.com_guias);
        if (registo.Registo == ultimo) continue; // the ERP has its article twice
        ultimo = registo.Registo;
        if (!cada(registo)) return;
    }
}

bool le_historias(const Meios& meios, const std::string& onde, Destino& destino,
                  const std::function<void(std::vector<Registo>&)>& cada) {
    constexpr int entre_perguntas = 500; // rows
    std::vector<Registo> desta;
    int lidas = 0;
    bool segue = true;
    le_registos(meios, {.onde = onde}, [&](Registo& registo) {
        if (!desta.empty() && !mesmo_codigo(desta.back().NumSerie, registo.NumSerie)) {
            cada(desta);
            desta.clear();
        }
        desta.push_back(std::move(registo));
        return segue = ++lidas % entre_perguntas != 0 || destino.prossegue();
    });
    if (segue && !desta.empty()) cada(desta);
    return segue;
}

std::string dos_artigos_de(const std::string& cliente) {
    return " where x.NumSerie in (Select NumSerie from xel_ORVEX where Cliente=" +
           base::entre_plicas(cliente) + ")";
}

Posse posse(const std::vector<Registo>& registos, int ate_ao_dia,
            const std::function<void(const Registo&, const Posse&)>& cada) {
    Percurso percurso;
    for (const Registo& registo : registos) {
        if (registo.dia > ate_ao_dia) continue;
        percurso.anda(registo);
        if (cada) cada(registo, percurso.posse);
    }
    percurso.acaba();
    return percurso.posse;
}

std::optional<Resumo> resumo_da_posse(const std::vector<Registo>& registos, int ate_ao_dia) {
    Moeda somas[2];
    const Registo* ultimo = nullptr;
    for (const Registo& registo : registos) {
        if (registo.dia > ate_ao_dia) continue;
        somas[registo.da_orvex ? 0 : 1] += registo.peso();
        ultimo = &registo;
    }
    if (ultimo == nullptr) return std::nullopt;
    return Resumo{ultimo->Cliente, somas[ultimo->da_orvex ? 0 : 1]};
}

void junta_ressalva(std::string& ressalvas, const std::string& esta) {
    if (ressalvas.find(esta) == std::string::npos) ressalvas += (ressalvas.empty() ? "" : ". ") + esta;
}

} // namespace orvex::livro::consultas
