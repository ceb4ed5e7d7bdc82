#include "construcao.h"
#include "livro/movimentos.h"

#include <algorithm>
#include <set>

namespace orvex::demo {
namespace {

using base::Moeda;

struct Insercoes {
    explicit Insercoes(Construcao& construcao)
        : cabecalho(
              construcao.erp.bd(),
              "insert into DocGcCab (Ano, TpDoc, Serie, NNumDoc, Data, AreaGestao, Sector, TpTerc, Terceiro)"
              " values (?, ?, 1, ?, ?, 4, '1', 2, ?)"),
          linha(
              construcao.erp.bd(),
              "insert into DocGcLin (Ano, TpDocum, Serie, NNumDoc, NumLinha, Artigo, Descr, Quant, QuantOrig,"
              " Armazem, Unidade, DataMvStock, PrecoUnit, Sector, TxIva)"
              " values (?, ?, 1, ?, ?, ?, ?, ?, ?, ?, 'TN', ?, ?, '1', 23)") {}

    Insercao cabecalho;
    Insercao linha;
};

LinhaFactura nova_linha(Construcao& construcao, std::int64_t cliente, std::int64_t numero) {
    const auto seus = construcao.plano.de_clientes.find(cliente);
    // Clients who hold articles of their own buy from both warehouses in turn.
    const bool do_cliente = numero % 2 == 0 && seus != construcao.plano.de_clientes.end();
    LinhaFactura linha;
    linha.artigo = construcao.sorteio.de(do_cliente ? seus->second : construcao.plano.de_orvex);
    const std::int64_t quilos = construcao.sorteio.entre(180, 6200);
    linha.peso_liquido = Moeda::de_decimos_milesimos(quilos * 10);
    linha.peso_bruto =
        Moeda::de_decimos_milesimos((quilos + quilos * construcao.sorteio.entre(15, 60) / 1000) * 10);
    return linha;
}

void escreve_linha(Construcao& construcao, Insercoes& insercoes, const Artigo& artigo, const Origem& origem,
                   bool com_peso) {
    const Factura& factura = origem.factura;
    const LinhaFactura& linha = origem.conteudo;
    insercoes.linha(factura.data.ano, factura.tipo, factura.numero, origem.linha, artigo.codigo, artigo.nome,
                    linha.peso_liquido, linha.peso_liquido, artigo.armazem(), factura.data.data_hora_iso(),
                    artigo.preco);
    const auto chave = chave_documento(factura.tipo, factura.data, factura.numero);
    const auto numero = static_cast<std::int32_t>(origem.linha);
    livro::acrescenta_movimento(construcao.livro,
                                {.Documento = chave,
                                 .NumLinha = numero,
                                 .Data = factura.data,
                                 .Artigo = artigo.codigo,
                                 .Cliente = codigo_cliente(factura.cliente, construcao.opcoes),
                                 .Descritivo = artigo.nome,
                                 .Quantidade = linha.peso_liquido,
                                 .Origem = "",
                                 .PesoLiquido = com_peso ? std::optional(linha.peso_liquido) : std::nullopt,
                                 .PesoBruto = com_peso ? std::optional(linha.peso_bruto) : std::nullopt});
    livro::acrescenta_peso_bruto(construcao.livro, chave, numero, linha.peso_bruto);
}

// Invoices for the delivery notes to take from: spread over the whole, and leaving the first client's list
// whole.
std::set<std::size_t> facturas_para_guias(const Construcao& construcao) {
    const auto& facturas = construcao.plano.facturas;
    std::set<std::size_t> escolhidas;
    for (std::size_t guia = 0; guia < guias_emitidas; ++guia) {
        std::size_t i = (2 * guia + 1) * facturas.size() / (std::size_t{2} * guias_emitidas);
        while (i < facturas.size() && (escolhidas.contains(i) || facturas[i].cliente == 1))
            ++i;
        if (i < facturas.size()) escolhidas.insert(i);
    }
    return escolhidas;
}

void escreve_numeradores(Construcao& construcao) {
    construcao.erp.bd().exec(
        "insert into Numeradores (Ano, TpDoc, Serie, Ultimo)"
        " select Ano, TpDoc, Serie, max(NNumDoc) from DocGcCab group by Ano, TpDoc, Serie");
}

} // namespace

std::vector<std::vector<Origem>> escreve_facturas(Construcao& construcao) {
    const auto para_guias = facturas_para_guias(construcao);
    std::vector<std::vector<Origem>> origens;
    Insercoes insercoes(construcao);
    for (std::size_t i = 0; i < construcao.plano.facturas.size(); ++i) {
        const Factura& factura = construcao.plano.facturas[i];
        insercoes.cabecalho(factura.data.ano, factura.tipo, factura.numero, factura.data.data_hora_iso(),
                            codigo_cliente(factura.cliente, construcao.opcoes));
        const bool para_guia = para_guias.contains(i);
        if (para_guia) origens.emplace_back();
        for (std::int64_t numero = 1; numero <= factura.linhas; ++numero) {
            const Origem linha{factura, numero, nova_linha(construcao, factura.cliente, numero)};
            Artigo& artigo = construcao.plano.artigos[linha.conteudo.artigo];
            artigo.existencia += linha.conteudo.peso_liquido;
            // Here and there the ledger lacks the weights; the screen copies them from the ERP's line.
            const bool com_peso = para_guia || !construcao.sorteio.uma_em(10);
            escreve_linha(construcao, insercoes, artigo, linha, com_peso);
            if (para_guia) origens.back().push_back(linha);
        }
    }
    escreve_numeradores(construcao);
    return origens;
}

} // namespace orvex::demo
