// The steps that fill a demo company, in the order they run: each writes its tables from the plan.
#pragma once

#include "escrita.h"
#include "livro/chaves.h"
#include "plano.h"
#include "platform/erp/base_erp.h"
#include "startup/sessao_erp.h"

namespace orvex::demo {

struct Construcao {
    const OpcoesEmpresa& opcoes;
    platform::erp::BaseErp& erp;
    startup::SessaoBD& livro; // whose rows are written as the screens write them
    Sorteio sorteio;
    Plano plano;
};

// An invoice line that a delivery note is going to take from.
struct Origem {
    Factura factura;
    std::int64_t linha = 0;
    LinhaFactura conteudo;

    livro::ChaveLinha chave() const {
        return livro::Documento{factura.data.ano, factura.tipo, "1",
                                static_cast<std::int32_t>(factura.numero)}
            .linha(std::to_string(linha));
    }
};

// Of the only series there is.
inline startup::ChaveDocumento chave_documento(const char* tipo, const base::DataHora& data,
                                               std::int64_t numero = 0) {
    return {static_cast<std::int16_t>(data.ano), tipo, 1, static_cast<std::int32_t>(numero)};
}

void escreve_tabelas_base(Construcao& construcao); // company, users, document types, warehouses, VAT, vendors
void escreve_clientes(Construcao& construcao);
// Adds what it invoices to the stock of the plan's articles. The result holds one invoice per element.
std::vector<std::vector<Origem>> escreve_facturas(Construcao& construcao);
void escreve_artigos(Construcao& construcao); // with their stock and the ledger rows of their holders
void escreve_guias(Construcao& construcao, const std::vector<std::vector<Origem>>& origens);
void escreve_ajustes(Construcao& construcao);

} // namespace orvex::demo
