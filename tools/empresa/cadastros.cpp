#include "construcao.h"
#include "livro/detentores.h"
#include "nomes.h"
#include "platform/erp/esquema_erp.h"

namespace orvex::demo {
namespace {

using base::Moeda;
using platform::erp::MovimentoStock;

constexpr int vendedores = 8;

std::string codigo_vendedor(std::int64_t numero) { return "V" + std::to_string(numero); }

void escreve_tipos_documento(SQLite::Database& bd) {
    const struct {
        const char* codigo;
        const char* descricao;
        MovimentoStock movimento;
    } tipos[] = {{"FA", "Factura", MovimentoStock::nenhum},
                 {"FR", "Factura-recibo", MovimentoStock::nenhum},
                 {"GR", "Guia de remessa", MovimentoStock::saida},
                 {"GD", "Guia de devolução", MovimentoStock::entrada},
                 {"SB", "Sobras", MovimentoStock::entrada},
                 {"QB", "Quebras", MovimentoStock::saida},
                 {"CI", "Consumos internos", MovimentoStock::saida},
                 {"TR", "Transferência entre armazéns", MovimentoStock::transferencia}};
    for (const auto& tipo : tipos)
        platform::erp::acrescenta_tipo_documento(bd, tipo.codigo, tipo.descricao, tipo.movimento, 1);
}

Moeda valor(const Artigo& artigo) {
    return Moeda::de_real(artigo.existencia.real() * artigo.preco.real()).arredondada(2);
}

} // namespace

std::string codigo_cliente(std::int64_t numero, const OpcoesEmpresa& opcoes) {
    const std::size_t largura = std::max<std::size_t>(4, std::to_string(opcoes.clientes).size());
    const std::string digitos = std::to_string(numero);
    return "C" + std::string(largura - digitos.size(), '0') + digitos;
}

void escreve_tabelas_base(Construcao& construcao) {
    SQLite::Database& bd = construcao.erp.bd();
    Insercao(bd, "insert into Empresa (Codigo, Nome) values (?, ?)")(codigo_empresa,
                                                                     "ORVEX (empresa de treino)");
    Insercao(bd, "insert into Utilizadores (Utilizador) values (?)")(utilizador);
    Insercao armazem(bd, "insert into Armazens (Codigo, Descr) values (?, ?)");
    armazem(armazem_orvex, "Armazém da ORVEX");
    armazem(armazem_clientes, "Artigos em clientes");
    Insercao regime(bd, "insert into RGIVA (Codigo, Descr, Mercado) values (?, ?, ?)");
    regime("NAC", "Mercado nacional", 1);
    regime("UE", "Mercado intracomunitário", 2);
    regime("EXT", "Outros mercados", 3);
    Insercao vendedor(bd, "insert into Vendedor (Codigo, NOME) values (?, ?)");
    for (int i = 1; i <= vendedores; ++i)
        vendedor(codigo_vendedor(i), nome_pessoa(construcao.sorteio));
    escreve_tipos_documento(bd);
}

void escreve_clientes(Construcao& construcao) {
    Sorteio& sorteio = construcao.sorteio;
    const OpcoesEmpresa& opcoes = construcao.opcoes;
    Insercao insere(
        construcao.erp.bd(),
        "insert into Clientes (CODIGO, Nome, Morada, Localidade, CodPostal, Pais, NContrib, GesCnt,"
        " Vendedor, RegIva, Inactivo) values (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    insere(cliente_orvex, "ORVEX - Bobines e Cabos, S.A.", "Parque Empresarial, Lote 12", "Águeda",
           "3750-064", "PT", contribuinte_nacional(sorteio), codigo_vendedor(1), codigo_vendedor(1), "NAC",
           0);
    for (std::int64_t i = 1; i <= opcoes.clientes; ++i) {
        Terceiro cliente = i % 8 == 0 ? cliente_estrangeiro(sorteio) : cliente_nacional(sorteio);
        if (i == 3) cliente.nome = "Trefilaria D'Orey & Irmãos, Lda."; // a name that statements must quote
        // The last one has left; the plan sells it nothing.
        const bool inactivo = opcoes.clientes > 1 && i == opcoes.clientes;
        insere(codigo_cliente(i, opcoes), cliente.nome, cliente.morada, cliente.localidade,
               cliente.codigo_postal, cliente.pais, cliente.contribuinte,
               codigo_vendedor(sorteio.entre(1, vendedores)), codigo_vendedor(sorteio.entre(1, vendedores)),
               cliente.regime_iva, inactivo ? base::verdadeiro : 0);
    }
}

void escreve_artigos(Construcao& construcao) {
    const OpcoesEmpresa& opcoes = construcao.opcoes;
    SQLite::Database& bd = construcao.erp.bd();
    Insercao artigo(bd,
                    "insert into Artigos (CODIGO, Nome, Familia, UnBase, TaxaIva, VLREXIST, STDISP, ULTPRCOM,"
                    " artoudes, Inactivo) values (?, ?, ?, 'TN', 23, ?, ?, ?, 0, ?)");
    Insercao armazem(bd, "insert into artarm (Artigo, Armazem, Existenc) values (?, ?, ?)");
    const base::DataHora data{
        .ano = opcoes.hoje.ano - 1, .mes = 1, .dia = 1, .hora = 9, .minuto = 0, .segundo = 0};
    const auto detentor = [&](const std::string& NumSerie, const std::string& Cliente, Moeda Quantidade,
                              const std::string& Obs, const std::string& CliFinal, const char* TpDoc) {
        livro::acrescenta_detentor(construcao.livro, {.NumSerie = NumSerie,
                                                      .Cliente = Cliente,
                                                      .Data = data,
                                                      .Quantidade = Quantidade,
                                                      .Obs = Obs,
                                                      .CliFinal = CliFinal,
                                                      .Documento = chave_documento(TpDoc, data)});
    };
    for (std::size_t i = 0; i < construcao.plano.artigos.size(); ++i) {
        const Artigo& novo = construcao.plano.artigos[i];
        const bool inactivo = i % 4 == 3 && i + 4 >= construcao.plano.artigos.size(); // the last one at rest
        artigo(novo.codigo, novo.nome, familia(static_cast<std::int64_t>(i)).prefixo, valor(novo),
               novo.existencia, novo.preco, inactivo ? base::verdadeiro : 0);
        armazem(novo.codigo, novo.armazem(), novo.existencia);
        detentor(novo.codigo, cliente_orvex, novo.existencia, "Entrada inicial", cliente_orvex, "SB");
        if (novo.dono == 0) continue;
        const std::string cliente = codigo_cliente(novo.dono, opcoes);
        const std::string colocacao = "Colocação no cliente " + cliente;
        detentor(novo.codigo, cliente_orvex, -novo.existencia, colocacao, cliente, "QB");
        detentor(novo.codigo, cliente, novo.existencia, colocacao, cliente, "SB");
    }
    // A service: never listed among the goods.
    bd.exec("insert into Artigos (CODIGO, Nome, UnBase, TaxaIva, artoudes) values ('PORTES', 'Portes de "
            "transporte',"
            " 'UN', 23, -1)");
}

} // namespace orvex::demo
