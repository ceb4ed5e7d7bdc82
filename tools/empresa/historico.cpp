// What the company has done this year before anybody opens it: delivery notes and adjustments, saved by the
// ERP emulation itself and recorded in the ledger as the screens record them.
#include "construcao.h"

#include "base/falha.h"
#include "livro/detentores.h"
#include "livro/movimentos.h"
#include "platform/erp/documentos.h"
#include "platform/erp/stock.h"

#include <algorithm>

namespace orvex::demo {
namespace {

using base::DataHora;
using base::Moeda;
using platform::erp::Comando;
using platform::erp::Documento;
using platform::erp::Registo;

constexpr std::size_t guia_anulada = 3; // positions, from 0
constexpr std::size_t guia_convertida = 6;

struct LinhaGuia {
    Origem origem;
    Moeda quantidade;
    Moeda peso_bruto;
    std::int32_t numero = 0; // in the note
};

void grava(Construcao& construcao, const std::function<void()>& operacao) {
    const auto resultado = construcao.erp.executa(operacao, SQLite::TransactionBehavior::IMMEDIATE);
    if (!resultado.sucesso) throw base::Falha(resultado.mensagem);
}

// The lines of the invoice that lie where the one given lies; half of the first, the others whole.
std::vector<LinhaGuia> linhas_da_guia(const Construcao& construcao, const std::vector<Origem>& factura,
                                      const Origem& escolhida) {
    const auto armazem = [&](const Origem& origem) {
        return std::string_view(construcao.plano.artigos[origem.conteudo.artigo].armazem());
    };
    std::vector<LinhaGuia> linhas;
    for (const Origem& origem : factura) {
        if (armazem(origem) != armazem(escolhida)) continue;
        LinhaGuia linha{origem, origem.conteudo.peso_liquido, origem.conteudo.peso_bruto, 0};
        if (linhas.empty()) {
            linha.quantidade = Moeda::de_real(linha.quantidade.real() / 2).arredondada(3);
            linha.peso_bruto = Moeda::de_real(linha.peso_bruto.real() / 2).arredondada(3);
        }
        linhas.push_back(linha);
    }
    return linhas;
}

Registo& acrescenta_linha(Documento& documento, const std::string& descricao) {
    documento.linhas.push_back(platform::erp::nova_linha());
    Registo& linha = *documento.linhas.back();
    linha.poe("TipoDeLinha", 1);
    linha.poe("descricao", descricao);
    linha.poe("DataMvStock", documento.cabecalho.obtem("Data"));
    linha.poe("Sector", "1");
    return linha;
}

Documento documento(const char* tipo, const DataHora& data) {
    Documento novo;
    Registo& cab = novo.cabecalho;
    cab.poe("Ano", data.ano);
    cab.poe("Data", data);
    cab.poe("Sector", "1");
    cab.poe("Serie", 1);
    cab.poe("TipoDocumento", tipo);
    return novo;
}

Documento documento_guia(Construcao& construcao, std::vector<LinhaGuia>& linhas, const DataHora& data) {
    Documento guia = documento("GR", data);
    const Factura& factura = linhas.front().origem.factura;
    Registo& cab = guia.cabecalho;
    cab.poe("AreaGestao", 4);
    cab.poe("TipoTerceiro", 2);
    cab.poe("Terceiro", codigo_cliente(factura.cliente, construcao.opcoes));
    cab.poe("MeiodeTransporte", "Camião");
    cab.poe("Matricula", "AX-" + std::to_string(construcao.sorteio.entre(10, 99)) + "-RT");
    cab.poe("LocalCarga", "Águeda");
    cab.poe("LocalDescarga", "Instalações do cliente");
    cab.poe("DataCarga", data);
    cab.poe("HoraCarga", "09:30:00");
    cab.poe("DataDescarga", data);
    cab.poe("HoraDescarga", "15:00:00");
    acrescenta_linha(guia, "O material constante desta posição foi facturado no documento ");
    acrescenta_linha(guia, std::string(factura.tipo) + "/1/" + std::to_string(factura.numero) + " de " +
                               factura.data.data());
    for (LinhaGuia& linha : linhas) {
        const Artigo& artigo = construcao.plano.artigos[linha.origem.conteudo.artigo];
        Registo& nova = acrescenta_linha(guia, artigo.nome);
        nova.poe("Artigo", artigo.codigo);
        nova.poe("Armazem", artigo.armazem());
        nova.poe("Quantidade", linha.quantidade);
        nova.poe("QuantidadeOrigem", linha.quantidade);
        nova.poe("Unidade", "TN");
        linha.numero = static_cast<std::int32_t>(guia.linhas.size());
    }
    return guia;
}

std::string nome_cliente(Construcao& construcao, const std::string& codigo) {
    Comando procura(construcao.erp, "select Nome from Clientes where CODIGO = ?");
    return procura.com(codigo).linha() ? procura.texto(0) : std::string();
}

void regista_guia(Construcao& construcao, const startup::ChaveDocumento& guia, const LinhaGuia& linha,
                  const DataHora& data) {
    const Artigo& artigo = construcao.plano.artigos[linha.origem.conteudo.artigo];
    const std::string cliente = codigo_cliente(linha.origem.factura.cliente, construcao.opcoes);
    const livro::ChaveLinha origem = linha.origem.chave();
    livro::retira(construcao.livro, origem, {linha.quantidade, linha.quantidade, linha.peso_bruto});
    livro::acrescenta_movimento(construcao.livro, {.Documento = guia,
                                                   .NumLinha = linha.numero,
                                                   .Data = data,
                                                   .Artigo = artigo.codigo,
                                                   .Cliente = cliente,
                                                   .Descritivo = artigo.nome,
                                                   .Quantidade = linha.quantidade,
                                                   .Origem = origem.origem(),
                                                   .PesoLiquido = linha.quantidade,
                                                   .PesoBruto = linha.peso_bruto});
    const std::string detentor = artigo.dono == 0 ? std::string(cliente_orvex) : cliente;
    livro::acrescenta_detentor(construcao.livro, {.NumSerie = artigo.codigo,
                                                  .Cliente = detentor,
                                                  .Data = data,
                                                  .Quantidade = -linha.quantidade,
                                                  .Obs = nome_cliente(construcao, cliente),
                                                  .CliFinal = detentor,
                                                  .Documento = guia,
                                                  .NumLin = linha.numero});
}

struct Ajuste {
    const char* tipo;
    const char* observacao;
    Moeda quantidade; // signed, tonnes
};

void regista_ajuste(Construcao& construcao, const Artigo& artigo, const Ajuste& ajuste, const DataHora& data,
                    std::int64_t numero) {
    livro::acrescenta_detentor(construcao.livro, {.NumSerie = artigo.codigo,
                                                  .Cliente = cliente_orvex,
                                                  .Data = data,
                                                  .Quantidade = ajuste.quantidade,
                                                  .Obs = ajuste.observacao,
                                                  .CliFinal = cliente_orvex,
                                                  .Documento = chave_documento(ajuste.tipo, data, numero)});
}

// One whose document the ERP has archived: only the ledger still knows it.
void escreve_ajuste_arquivado(Construcao& construcao, const Artigo& artigo) {
    const Ajuste ajuste{"SB", "Excesso de Peso", Moeda::de_decimos_milesimos(1200)};
    grava(construcao, [&] {
        platform::erp::move_armazem(construcao.erp, artigo.codigo, artigo.armazem(), ajuste.quantidade);
        platform::erp::move_artigo(construcao.erp, artigo.codigo, ajuste.quantidade);
    });
    const DataHora data{.ano = construcao.opcoes.hoje.ano - 1, .mes = 11, .dia = 15};
    regista_ajuste(construcao, artigo, ajuste, data, 37);
}

} // namespace

void escreve_guias(Construcao& construcao, const std::vector<std::vector<Origem>>& origens) {
    const DataHora primeiro_dia{.ano = construcao.opcoes.hoje.ano};
    for (std::size_t i = 0; i < origens.size(); ++i) {
        // After its invoice and after the note before it, but never after today.
        const DataHora data =
            std::max(data_entre(primeiro_dia, construcao.opcoes.hoje, i + 1, origens.size()),
                     origens[i].front().factura.data);
        const Origem& escolhida = i % 2 == 0 ? origens[i].front() : origens[i].back();
        auto linhas = linhas_da_guia(construcao, origens[i], escolhida);
        Documento guia = documento_guia(construcao, linhas, data);
        grava(construcao, [&] { platform::erp::grava(construcao.erp, guia); });
        const startup::ChaveDocumento chave = guia.chave();
        for (const LinhaGuia& linha : linhas) {
            livro::acrescenta_peso_bruto(construcao.livro, chave, linha.numero, linha.peso_bruto);
            if (i != guia_anulada) regista_guia(construcao, chave, linha, data);
        }
        if (i == guia_anulada) grava(construcao, [&] { platform::erp::anula(construcao.erp, chave); });
        if (i == guia_convertida)
            Insercao(construcao.erp.bd(),
                     "update DocGcCab set [Convert] = -1 where TpDoc = 'GR' and Serie = 1"
                     " and Ano = ? and NNumDoc = ?")(chave.Ano, chave.NossoNoDocumento);
    }
}

void escreve_ajustes(Construcao& construcao) {
    const auto artigo = [&](std::size_t vez) -> const Artigo& {
        const auto& de_orvex = construcao.plano.de_orvex;
        return construcao.plano.artigos[de_orvex[vez % de_orvex.size()]];
    };
    const Moeda quantidade = Moeda::de_decimos_milesimos(450);
    const Ajuste ajustes[] = {{"SB", "Excesso de Peso", quantidade},
                              {"QB", "Sucata", -quantidade},
                              {"CI", "Consumo Interno", -quantidade}};
    const DataHora data{.ano = construcao.opcoes.hoje.ano};
    std::size_t vez = 0;
    for (const Ajuste& ajuste : ajustes) {
        const Artigo& ajustado = artigo(vez++);
        Documento novo = documento(ajuste.tipo, data);
        novo.cabecalho.poe("AreaGestao", 6);
        novo.cabecalho.poe("TipoTerceiro", 1);
        novo.cabecalho.poe("Processo", "PESAGEM");
        Registo& linha = acrescenta_linha(novo, ajustado.nome);
        linha.poe("Artigo", ajustado.codigo);
        linha.poe("Armazem", ajustado.armazem());
        linha.poe("Quantidade", quantidade);
        linha.poe("PrecoUnitario", ajustado.preco);
        grava(construcao, [&] { platform::erp::grava(construcao.erp, novo); });
        regista_ajuste(construcao, ajustado, ajuste, data, novo.chave().NossoNoDocumento);
    }
    escreve_ajuste_arquivado(construcao, artigo(vez));
}

} // namespace orvex::demo
