// The enquiries: what the ledger can say of an item, a client, a document, of what is out too long and of
// what moved. Each reads and nothing else, with a number of requests that does not grow with its rows, and
// tells its view to a Destino.
//
// Who holds an item is what `livro/detencao.h` says: the `Cliente` of its newest row, by `Registo`, which
// also orders what happened on one day. At a date, the rows of later days are left out; a row without a date
// counts at any. What the ledger cannot tell is said in the column "Ressalvas" of the row that it concerns.
#pragma once

#include "livro/casa.h"
#include "livro/consultas/quadro.h"
#include "startup/sessao_bd.h"

#include <optional>

namespace orvex::livro::consultas {

// What every enquiry needs.
struct Meios {
    startup::SessaoBD& BD;
    const Casa& casa;
    base::DataHora hoje;
};

// Each is false, and tells nothing, where neither ledger nor ERP know what is asked for.

// The item's card, its stock, its movements from the newest, and what is still open of it.
bool artigo(const Meios& meios, const std::string& codigo, Destino& destino);

struct PedidoCliente {
    std::string codigo;
    std::optional<base::DataHora> data{}; // nothing: as the ledger stands
    std::optional<base::DataHora> de{};   // notes and returns from this day on; nothing: of a year
    friend bool operator==(const PedidoCliente&, const PedidoCliente&) = default;
};
// What the client holds, its age, what is open, notes and returns until the date, and the last 24 months.
bool cliente(const Meios& meios, const PedidoCliente& pedido, Destino& destino);

// By "2019/GR/1/7", "GR/1/7", "GR/7" or "7": the newest of that number; a note, where the type is left out.
bool documento(const Meios& meios, const std::string& qual, Destino& destino);

struct PedidoParados {
    int dias = 0;        // out for longer than so many
    std::string cliente; // empty: any
    std::optional<base::DataHora> data{};
    friend bool operator==(const PedidoParados&, const PedidoParados&) = default;
};
// Oldest first.
bool parados(const Meios& meios, const PedidoParados& pedido, Destino& destino);

struct PedidoMovimentos {
    base::DataHora de, ate;                                  // days, both included
    std::string especie{}, artigo{}, cliente{}, documento{}; // empty: any; `especie` is one of `especies()`
    friend bool operator==(const PedidoMovimentos&, const PedidoMovimentos&) = default;
};
// Oldest first, with a total for each kind.
bool movimentos(const Meios& meios, const PedidoMovimentos& pedido, Destino& destino);

// The first of each kind that the text is found in: what begins with it before what has it anywhere.
inline constexpr int primeira_pagina = 20;
bool procura(const Meios& meios, const std::string& texto, Destino& destino);

// The kinds of movements in words: Guia, Devolução, ...
const std::vector<std::string>& especies();

} // namespace orvex::livro::consultas
