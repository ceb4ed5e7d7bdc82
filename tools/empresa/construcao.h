// The steps that fill a demo company, in the order they run: each writes its tables from the plan.
#pragma once

#include "escrita.h"
#include "plano.h"
#include "platform/erp/base_erp.h"

namespace orvex::demo {

struct Construcao {
    const OpcoesEmpresa& opcoes;
    platform::erp::BaseErp& erp;
    SQLite::Database& livro;
    Sorteio sorteio;
    Plano plano;
};

// An invoice line that a delivery note is going to take from.
struct Origem {
    Factura factura;
    std::int64_t linha = 0;
    LinhaFactura conteudo;
};

void escreve_tabelas_base(Construcao& construcao); // company, users, document types, warehouses, VAT, vendors
void escreve_clientes(Construcao& construcao);
// Adds what it invoices to the stock of the plan's articles. The result holds one invoice per element.
std::vector<std::vector<Origem>> escreve_facturas(Construcao& construcao);
void escreve_artigos(Construcao& construcao); // with their stock and the ledger rows of their holders
void escreve_guias(Construcao& construcao, const std::vector<std::vector<Origem>>& origens);
void escreve_ajustes(Construcao& construcao);

} // namespace orvex::demo
