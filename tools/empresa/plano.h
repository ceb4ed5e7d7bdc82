// What a demo company is going to hold, before any of it is written.
//
// An article is one serial-numbered item: it lies whole in ORVEX's warehouse, or whole in that of the goods
// at clients and is then held by one client. So its stock is what was invoiced and not yet sent, and a
// remainder nobody bought.
#pragma once

#include "base/datahora.h"
#include "base/moeda.h"
#include "empresa_demo.h"
#include "sorteio.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace orvex::demo {

struct Artigo {
    std::string codigo;
    const char* nome = "";
    base::Moeda preco;      // euro per tonne
    std::int64_t dono = 0;  // client that holds it; 0 for ORVEX
    base::Moeda existencia; // tonnes: the remainder, then what is invoiced of it as well

    const char* armazem() const { return dono == 0 ? armazem_orvex : armazem_clientes; }
};

struct LinhaFactura {
    std::size_t artigo = 0; // position in Plano::artigos
    base::Moeda peso_liquido;
    base::Moeda peso_bruto;
};

struct Factura {
    std::int64_t cliente = 1;
    std::int64_t linhas = 1;
    const char* tipo = "";
    std::int64_t numero = 0; // per year and type
    base::DataHora data;
};

struct Plano {
    std::vector<Artigo> artigos;
    std::vector<std::size_t> de_orvex; // articles for sale from ORVEX's warehouse
    std::unordered_map<std::int64_t, std::vector<std::size_t>>
        de_clientes;               // for sale, by the client that holds them
    std::vector<Factura> facturas; // in the order of their dates
};

Plano planeia(const OpcoesEmpresa& opcoes, Sorteio& sorteio);

// The day so many parts of the way from one to the other.
base::DataHora data_entre(const base::DataHora& inicio, const base::DataHora& fim, std::size_t parte,
                          std::size_t partes);

} // namespace orvex::demo
