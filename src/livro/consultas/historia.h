// The history of an item, of its holder rows: the rules that every enquiry shares.
#pragma once

#include "livro/consultas/consultas.h"

#include <cstdint>
#include <functional>

namespace orvex::livro::consultas {

enum class Especie { guia, devolucao, sobra, quebra, consumo, saida, entrada, outra };
Especie especie(const Casa& casa, const std::string& TpDoc, std::int64_t Serie, std::int64_t NNumDoc);
// In words; a transfer's exit and entry are "Transferência" both.
const std::string& nome(Especie qual);

// Days as numbers that go up by one; 0 where there is no date.
int dia(const std::optional<base::DataHora>& data);
int dia(const base::DataHora& data);
base::DataHora data_do_dia(int dia);

struct Registo {                                               // a holder row
    std::string NumSerie, Cliente, CliFinal, TpDoc, Obs, Nome; // Nome: of the article, as the ERP has it
    std::int64_t Registo = 0, Ano = 0, Serie = 0, NNumDoc = 0, NumLin = 0;
    std::optional<base::DataHora> Data;
    std::optional<base::Moeda> Quantidade;
    std::string ClienteDaGuia; // of its movement line, where that was asked for
    Especie especie = Especie::outra;
    bool da_orvex = false; // Cliente is ORVEX
    int dia = 0;           // of Data, as a number

    base::Moeda peso() const { return Quantidade.value_or(base::Moeda()); }
    std::string documento() const; // 2019/GR/1/7; empty of a transfer
};

// Rows as they are read: of items, item by item, oldest first; or of any.
struct Leitura {
    bool com_guias = false; // the client of the movement line too
    std::string onde{};     // "where ..." of x, with blanks around
    std::string ordem = "x.NumSerie, x.Registo";
};
// Until `cada` is false.
void le_registos(const Meios& meios, const Leitura& leitura, const std::function<bool(Registo&)>& cada);
// Item by item: all its rows, oldest first. False when it was given up.
bool le_historias(const Meios& meios, const std::string& onde, Destino& destino,
                  const std::function<void(std::vector<Registo>&)>& cada);
// Of the items that the client ever had.
std::string dos_artigos_de(const std::string& cliente);

// Where an item is, after its rows until a day.
struct Posse {
    bool ha = false; // any row by then
    bool na_orvex = false;
    std::string detentor; // empty where its row names nobody
    std::optional<base::DataHora> desde;
    base::Moeda saldo; // all that it weighs, by the ledger
    base::Moeda peso;  // what lies in the warehouse of its holder
    bool com_inicio = true;
    std::string ressalvas; // what the ledger cannot tell; empty where it tells all
    std::string da_linha;  // of these, what the row just seen brought

    // Nothing where the ledger does not know the beginning.
    base::Variante peso_conhecido() const { return com_inicio ? base::Variante(peso) : base::Variante(); }
};
// `cada` sees each row that counts, with what is so far.
Posse posse(const std::vector<Registo>& registos, int ate_ao_dia,
            const std::function<void(const Registo&, const Posse&)>& cada = {});
inline constexpr int sempre = 0x7fffffff;

// Of the same as `posse`, without the reservations: for many days.
struct Resumo {
    const std::string& detentor;
    base::Moeda peso;
};
std::optional<Resumo> resumo_da_posse(const std::vector<Registo>& registos, int ate_ao_dia);

// Some of the reservations, for who must know them.
inline constexpr const char* sem_inicio = "O livro não tem o início deste artigo: veio por outra via";
inline constexpr const char* movimento_sem_peso = "Há um movimento sem peso";
inline constexpr const char* movimento_sem_data = "Há um movimento sem data";
void junta_ressalva(std::string& ressalvas, const std::string& esta);

} // namespace orvex::livro::consultas
