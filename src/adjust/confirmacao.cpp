#include "adjust/mov_stocks.h"

#include "base/falha.h"
#include "base/texto.h"
#include "livro/artigos.h"
#include "livro/detentores.h"
#include "livro/documentos.h"

#include <exception>
#include <optional>
#include <utility>
#include <vector>

namespace orvex::adjust {

using base::DataHora;
using base::FalhaGuarda;
using base::Moeda;
using confirmacao::Confirmacao;
using confirmacao::Fluxo;
using confirmacao::Intencao;
using startup::ChaveDocumento;

bool MovStocks::entrada_aceite() {
    common::Campo& quantidade = campo(campos::quantidade);
    const bool consumo = tipo_do_modo() == TipoAjuste::consumo;
    if (quantidade.Text.empty())
        return recusa(consumo ? "Deve introduzir a quantidade do Consumo!"
                              : "Deve introduzir a nova Existência!",
                      quantidade);
    const auto novo = formato().le(quantidade.Text);
    if (!novo) return recusa("Valor inválido!", quantidade);
    if (!consumo && *novo < Moeda()) return recusa("A nova Existência não pode ser negativa!", quantidade);
    // The field refused it when it was typed, and does not look again at what stayed in it.
    if ((consumo || (bCarregado && tipo_do_modo() == TipoAjuste::quebra)) && ConsumoExcessivo())
        return recusa(consumo_invalido, quantidade);
    return true;
}

void MovStocks::btConf_Click() {
    Confirmacao confirmacao(meios());
    const auto trabalho = [&] {
        if (!entrada_aceite()) return;
        if (campo(campos::existencia).Text.empty()) campo(campos::existencia).Text = "0";
        const Ajuste ajuste = ajuste_pedido();
        if (ajuste.Tipo == TipoAjuste::nenhum) return RecomecaEcra();
        if (!bCarregado && !AceitaDatas({&DTPicker1})) return;
        if (Pergunta(ajuste)) Confirma(ajuste, confirmacao);
    };
    const auto fim =
        confirmacao.executa(trabalho, [this](const std::exception& falha) { return erro_a_mostrar(falha); });
    if (fim == Confirmacao::Fim::falhou) RecomecaEcra();
}

MovStocks::Ajuste MovStocks::ajuste_pedido() {
    const Moeda novo = valor(campos::quantidade), stock = valor(campos::existencia);
    Ajuste ajuste;
    if (bCarregado || tipo_do_modo() == TipoAjuste::consumo) {
        ajuste.Tipo = tipo_do_modo();
        ajuste.Qtd = novo;
    } else if (novo != stock) {
        ajuste.Tipo = novo > stock ? TipoAjuste::sobra : TipoAjuste::quebra;
        ajuste.Qtd = (novo - stock).absoluta();
    }
    if (ajuste.Tipo == TipoAjuste::nenhum) return ajuste;
    // Before anything is written: a short list must not leave an adjustment half replaced.
    const startup::ParametroDocumento& documento = documento_de(ajuste.Tipo);
    ajuste.TpDoc = documento.TpDoc();
    ajuste.Serie = documento.Serie();
    ajuste.Sector = documento.Sector();
    return ajuste;
}

bool MovStocks::Pergunta(const Ajuste& ajuste) {
    constexpr const char* continuar = "\r\nPretende continuar?";
    const bool grande = ajuste.Qtd >= limite_aviso;
    const std::string quantidade = formato().texto(ajuste.Qtd) + " Tn !";
    const char* aviso = nullptr;
    std::string texto;
    switch (ajuste.Tipo) {
    case TipoAjuste::sobra:
        if (grande) aviso = "A Sobra é supeior ou igual a 150 Kg!";
        texto = grande ? "Vai proceder à geração de uma Sobra de  " + quantidade
                       : "Vai proceder à geração de uma Sobra!";
        break;
    case TipoAjuste::quebra:
        if (grande) aviso = "A Quebra é superior ou igual a 150 Kg!";
        texto = "Vai proceder à geração de uma Quebra de  " + quantidade;
        break;
    default:
        texto = "Vai proceder à geração de um Consumo de  " + quantidade;
        break;
    }
    if (aviso != nullptr &&
        Avisa("", std::string(aviso) + continuar, aviso_ok_cancelar) != common::resposta_ok) {
        SetFocus(campo(campos::artigo));
        return false;
    }
    if (Avisa("", texto + continuar, aviso_ok_cancelar) == common::resposta_ok) return true;
    RecomecaEcra();
    return false;
}

Intencao MovStocks::IntencaoDe(const Ajuste& ajuste) const {
    Intencao intencao{.fluxo = Fluxo::ajusta,
                      .cria = {static_cast<std::int16_t>(DTPicker1.Value.ano), ajuste.TpDoc, ajuste.Serie},
                      .Cliente = Detentor,
                      .Data = DTPicker1.Value,
                      .artigos = {{campo(campos::artigo).Text, ajuste.Qtd, ArmazemActual}}};
    if (bCarregado) {
        intencao.fluxo = Fluxo::substitui_ajuste;
        intencao.cria.Ano = static_cast<std::int16_t>(Carregado.Data.ano);
        intencao.anula = {Carregado.Documento};
        intencao.Cliente = Carregado.Cliente;
        intencao.Data = Carregado.Data;
    }
    return intencao;
}

void MovStocks::Confirma(const Ajuste& ajuste, Confirmacao& confirmacao) {
    const std::string& artigo = campo(campos::artigo).Text;
    std::vector<std::string> do_stock{livro::perguntas::existencia(artigo, ArmazemActual),
                                      livro::perguntas::preco(artigo)};
    confirmacao.Inicia(IntencaoDe(ajuste));
    if (bCarregado) {
        std::vector<std::string> anunciadas = do_stock;
        anunciadas.push_back(startup::SessaoBD::pergunta_das_colunas("DocGcLin"));
        BD.EmPasso(anunciadas, [&] { ConfereSubstituicao(ajuste); });
    }
    BD.Tranca();
    DataHora Data = DTPicker1.Value;
    const bool reposto = bCarregado && RemoveInf(confirmacao, Data);
    if (!bCarregado) do_stock.push_back(livro::perguntas::ultimo_movimento(artigo));
    double preco = 0;
    // Under the lock, with which the ERP's tables are seen anew: stock and price of after the cancellation.
    BD.EmPasso(do_stock, [&] {
        if (bCarregado) {
            livro::apaga_movimento(BD, lRegisto);
            ConfereStock(ajuste, reposto ? Moeda() : cQtdCarregada);
        } else {
            ConfereArtigo();
        }
        preco = PrecoMovimento(artigo);
    });
    const std::int32_t NumDoc = ValidaMovimento(ajuste, preco, Data, confirmacao);
    ActualizaMov(ajuste, NumDoc, Data);
    std::string feito = Descreve(ajuste, NumDoc);
    confirmacao.Confirma();
    define_feito(std::move(feito));
    Avisa("", "Foi gerado o Documento   :  " + std::to_string(NumDoc), aviso_informacao);
    confirmacao.AvisaPorAnular();
    RecomecaEcra();
}

std::string MovStocks::Descreve(const Ajuste& ajuste, std::int32_t NumDoc) const {
    constexpr const char* nomes[] = {"", "Sobra", "Quebra", "Consumo"};
    const auto nome_de = [](const ChaveDocumento& chave) {
        return livro::documento_de(chave).linha("").documento();
    };
    const std::string novo = nome_de({Carregado.Documento.Ano, ajuste.TpDoc, ajuste.Serie, NumDoc});
    return nomes[static_cast<int>(ajuste.Tipo)] + (" " + novo) +
           (bCarregado ? " em vez de " + nome_de(Carregado.Documento) : "") + ", " +
           campo(campos::artigo).Text + ", " + formato().peso_inteiro(ajuste.Qtd) + " t";
}

// All that the ERP and the ledger can be known to refuse is refused before the document that is replaced is
// cancelled: that could not be taken back.
void MovStocks::ConfereSubstituicao(const Ajuste& ajuste) {
    if (ajuste.Qtd < Moeda()) throw FalhaGuarda("A quantidade não pode ser negativa.");
    const auto cabe = [this](const std::string& texto, const char* tabela, const char* coluna,
                             const char* nome) {
        const std::size_t maximo = BD.Comprimento(tabela, coluna);
        if (maximo != 0 && base::excede(texto, maximo))
            throw FalhaGuarda(std::string(nome) + " não pode ter mais de " + std::to_string(maximo) +
                              " caracteres.");
    };
    cabe(campo(campos::processo).Text, "DocGcCab", "Processo", "O Processo");
    cabe(campo(campos::observacoes).Text, "xel_ORVEX", "Obs", "O texto das Observações");
    for (const char* tabela : {"xel_ORVEX", "DocGcCab"})
        cabe(ajuste.TpDoc, tabela, "TpDoc", "O tipo de documento dos parâmetros");
    for (const char* tabela : {"DocGcCab", "DocGcLin"})
        cabe(ajuste.Sector, tabela, "Sector", "O sector dos parâmetros");
    cabe(ArmazemActual, "DocGcLin", "Armazem", "O armazém dos parâmetros");
    PrecoMovimento(campo(campos::artigo).Text); // an article without its values fails here
    ConfereStock(ajuste, cQtdCarregada);
}

// What the loaded one took can be taken again; the rest must be there now, not when it was loaded.
void MovStocks::ConfereStock(const Ajuste& ajuste, Moeda por_repor) {
    if (ajuste.Tipo == TipoAjuste::sobra) return;
    const auto existencia = livro::existencia(BD, campo(campos::artigo).Text, ArmazemActual);
    const Moeda stock = existencia && !existencia->nulo() ? existencia->moeda() : Moeda();
    if (ajuste.Qtd - por_repor > stock) throw FalhaGuarda(consumo_invalido);
}

std::optional<std::string> MovStocks::DetentorActual() {
    const auto ultimo = livro::ultimo_movimento(BD, campo(campos::artigo).Text);
    if (!ultimo) return {};
    return ultimo->Cliente;
}

// What the user decided on must still be so: another program may have moved the item since it was typed, or
// while it was being looked at, between the warehouse and the holder.
void MovStocks::ConfereArtigo() {
    const bool mesmo = DetentorActual() == Detentor && ArmazemDe(Detentor) == ArmazemActual;
    const auto existencia = livro::existencia(BD, campo(campos::artigo).Text, ArmazemActual);
    const bool igual =
        existencia && (existencia->nulo() ? Moeda() : existencia->moeda()) == valor(campos::existencia);
    if (!mesmo || !igual)
        throw FalhaGuarda("A Existência ou o detentor do Artigo mudou. Volte a introduzir o Artigo.");
}

std::int32_t MovStocks::ValidaMovimento(const Ajuste& ajuste, double preco, const DataHora& Data,
                                        Confirmacao& confirmacao) {
    const std::string& Artigo = campo(campos::artigo).Text;
    const startup::PedidoDocStock pedido{.tipo_documento = ajuste.TpDoc,
                                         .sector = ajuste.Sector,
                                         .serie = ajuste.Serie,
                                         .destino = ajuste.Sector,
                                         .processo = campo(campos::processo).Text,
                                         .data = Data.data(),
                                         .armazem = ArmazemActual,
                                         .artigos = {"", Artigo},
                                         .textos_15 = {"", ""},
                                         .quantidades = {0, ajuste.Qtd.real()},
                                         .precos = {0, preco},
                                         .textos_18 = {"", ""}};
    gERP.PreparaDocStock(true);
    try {
        return confirmacao.CriaDocStock(pedido).NossoNoDocumento;
    } catch (const base::Falha& falha) {
        if (falha.numero() == Confirmacao::erp_recusou) UltimoErro = falha.what();
        throw;
    }
}

void MovStocks::ActualizaMov(const Ajuste& ajuste, std::int32_t NumDoc, const DataHora& Data) {
    com_ultimo_erro_numerado([&] {
        livro::acrescenta_detentor(BD, {.NumSerie = campo(campos::artigo).Text,
                                        .Cliente = Detentor,
                                        .Data = Data,
                                        .Quantidade = ajuste.com_sinal(),
                                        .Obs = campo(campos::observacoes).Text,
                                        .CliFinal = Detentor,
                                        .Documento = {.Ano = static_cast<std::int16_t>(Data.ano),
                                                      .TipoDocumento = ajuste.TpDoc,
                                                      .Serie = ajuste.Serie,
                                                      .NossoNoDocumento = NumDoc}});
    });
}

bool MovStocks::RemoveInf(Confirmacao& confirmacao, DataHora& Data) {
    std::optional<livro::LinhaDetentor> registo;
    BD.EmPasso(
        {livro::perguntas::movimento(lRegisto),
         livro::perguntas::ultimo_movimento(campo(campos::artigo).Text)},
        [&] {
            registo = livro::movimento(BD, lRegisto);
            if (!registo)
                throw FalhaGuarda("O movimento carregado já não existe. Volte a escolhê-lo da lista.");
            Detentor = registo->Cliente;
            Data = registo->Data;
            // The new row would be the item's newest, and give it back to whoever held it then.
            if (DetentorActual() != Detentor)
                throw FalhaGuarda(
                    "O Artigo mudou de detentor depois deste movimento, que já não pode ser substituído.");
        });
    return confirmacao.AnulaSubstituido(registo->Documento);
}

} // namespace orvex::adjust
