#include "adjust/mov_stocks.h"

#include "base/descricao.h"
#include "base/falha.h"
#include "base/texto.h"
#include "livro/artigos.h"
#include "livro/detentores.h"

#include <exception>
#include <optional>

namespace orvex::adjust {

using base::DataHora;
using base::FalhaGuarda;
using base::Moeda;
using startup::ChaveDocumento;

namespace {

const Moeda limite_aviso = Moeda::de_decimos_milesimos(1'500); // 150 kg, in tonnes

} // namespace

void MovStocks::RecomecaEcra() {
    limparform();
    SetFocus(campo(0));
}

bool MovStocks::entrada_aceite() {
    const auto recusa = [this](const char* aviso) {
        Avisa("", aviso, 2);
        SetFocus(campo(3));
        return false;
    };
    const bool consumo = especie_do_modo() == Especie::consumo;
    if (campo(3).Text.empty())
        return recusa(consumo ? "Deve introduzir a quantidade do Consumo!"
                              : "Deve introduzir a nova Existência!");
    const auto novo = formato().le(campo(3).Text);
    if (!novo) return recusa("Valor inválido!");
    if (!consumo && *novo < Moeda()) return recusa("A nova Existência não pode ser negativa!");
    // The field refused it when it was typed, and does not look again at what stayed in it.
    if ((consumo || (bCarregado && especie_do_modo() == Especie::quebra)) && ConsumoExcessivo())
        return recusa(consumo_invalido);
    return true;
}

void MovStocks::btConf_Click() {
    try {
        if (!entrada_aceite()) return;
        if (campo(1).Text.empty()) campo(1).Text = "0";
        const Ajuste ajuste = ajuste_pedido();
        if (ajuste.Tipo == Especie::nenhuma) return RecomecaEcra();
        if (!bCarregado && !AceitaDatas({&DTPicker1})) return;
        if (Pergunta(ajuste)) Confirma(ajuste);
    } catch (const startup::FalhaParametro&) {
        throw; // read before anything begins: a matter of the file, which costs the user nothing
    } catch (const std::exception& falha) {
        compensa(falha);
        RecomecaEcra();
    }
}

MovStocks::Ajuste MovStocks::ajuste_pedido() {
    const Moeda novo = valor(3), stock = valor(1);
    Ajuste ajuste;
    if (bCarregado || especie_do_modo() == Especie::consumo) {
        ajuste.Tipo = especie_do_modo();
        ajuste.Qtd = novo;
    } else if (novo != stock) {
        ajuste.Tipo = novo > stock ? Especie::sobra : Especie::quebra;
        ajuste.Qtd = (novo - stock).absoluta();
    }
    if (ajuste.Tipo == Especie::nenhuma) return ajuste;
    // Before anything is written: a short list must not leave an adjustment half replaced.
    const startup::ListaParametros& chave = chave_documento(ajuste.Tipo);
    ajuste.TpDoc = chave[0];
    ajuste.Serie = chave.serie(1);
    ajuste.Sector = chave[2];
    return ajuste;
}

bool MovStocks::Pergunta(const Ajuste& ajuste) {
    constexpr const char* continuar = "\r\nPretende continuar?";
    const bool grande = ajuste.Qtd >= limite_aviso;
    const std::string quantidade = formato().texto(ajuste.Qtd) + " Tn !";
    const char* aviso = nullptr;
    std::string texto;
    switch (ajuste.Tipo) {
    case Especie::sobra:
        if (grande) aviso = "A Sobra é supeior ou igual a 150 Kg!";
        texto = grande ? "Vai proceder à geração de uma Sobra de  " + quantidade
                       : "Vai proceder à geração de uma Sobra!";
        break;
    case Especie::quebra:
        if (grande) aviso = "A Quebra é superior ou igual a 150 Kg!";
        texto = "Vai proceder à geração de uma Quebra de  " + quantidade;
        break;
    default:
        texto = "Vai proceder à geração de um Consumo de  " + quantidade;
        break;
    }
    if (aviso != nullptr && Avisa("", std::string(aviso) + continuar, 3) != common::resposta_ok) {
        SetFocus(campo(0));
        return false;
    }
    if (Avisa("", texto + continuar, 3) == common::resposta_ok) return true;
    RecomecaEcra();
    return false;
}

void MovStocks::Confirma(const Ajuste& ajuste) {
    BD.IniciaTransaccao();
    // Before the lock, with which the ERP's tables are seen anew: the price is that of after the
    // cancellation.
    if (bCarregado) ConfereSubstituicao(ajuste);
    BD.Tranca();
    if (!bCarregado) ConfereArtigo();
    const DataHora Data = bCarregado ? RemoveInf() : DTPicker1.Value;
    if (bCarregado) ConfereStock(ajuste, PorAnular.empty() ? Moeda() : cQtdCarregada);
    const std::int32_t NumDoc = ValidaMovimento(ajuste, Data);
    ActualizaMov(ajuste, NumDoc, Data);
    const std::vector<ChaveDocumento> por_anular = PorAnular;
    ConfirmaGravacao();
    Avisa("", "Foi gerado o Documento   :  " + std::to_string(NumDoc), 2);
    avisa_por_anular(por_anular);
    RecomecaEcra();
}

// All that the ERP and the ledger can be known to refuse is refused before the document that is replaced is
// cancelled: that could not be taken back.
void MovStocks::ConfereSubstituicao(const Ajuste& ajuste) {
    if (ajuste.Qtd < Moeda()) throw FalhaGuarda("A quantidade não pode ser negativa.");
    const auto cabe = [this](const std::string& texto, const char* tabela, const char* coluna,
                             const char* nome) {
        const std::size_t maximo = BD.Comprimento(tabela, coluna);
        if (maximo != 0 && base::comprimento(texto) > maximo)
            throw FalhaGuarda(std::string(nome) + " não pode ter mais de " + std::to_string(maximo) +
                              " caracteres.");
    };
    cabe(campo(2).Text, "DocGcCab", "Processo", "O Processo");
    cabe(campo(4).Text, "xel_ORVEX", "Obs", "O texto das Observações");
    for (const char* tabela : {"xel_ORVEX", "DocGcCab"})
        cabe(ajuste.TpDoc, tabela, "TpDoc", "O tipo de documento dos parâmetros");
    for (const char* tabela : {"DocGcCab", "DocGcLin"})
        cabe(ajuste.Sector, tabela, "Sector", "O sector dos parâmetros");
    cabe(ArmazemActual, "DocGcLin", "Armazem", "O armazém dos parâmetros");
    PrecoMovimento(campo(0).Text); // an article without its values fails here
    ConfereStock(ajuste, cQtdCarregada);
}

// What the loaded one took can be taken again; the rest must be there now, not when it was loaded.
void MovStocks::ConfereStock(const Ajuste& ajuste, Moeda por_repor) {
    if (ajuste.Tipo == Especie::sobra) return;
    const auto existencia = livro::existencia(BD, campo(0).Text, ArmazemActual);
    const Moeda stock = existencia && !existencia->nulo() ? existencia->moeda() : Moeda();
    if (ajuste.Qtd - por_repor > stock) throw FalhaGuarda(consumo_invalido);
}

std::optional<std::string> MovStocks::DetentorActual() {
    const auto ultimo = livro::ultimo_movimento(BD, campo(0).Text);
    if (!ultimo) return {};
    return ultimo->Cliente;
}

// What the user decided on must still be so: another program may have moved the item since it was typed.
void MovStocks::ConfereArtigo() {
    const bool mesmo = DetentorActual() == Detentor;
    const auto existencia = livro::existencia(BD, campo(0).Text, ArmazemActual);
    const bool igual = existencia && (existencia->nulo() ? Moeda() : existencia->moeda()) == valor(1);
    if (!mesmo || !igual)
        throw FalhaGuarda("A Existência ou o detentor do Artigo mudou. Volte a introduzir o Artigo.");
}

std::int32_t MovStocks::ValidaMovimento(const Ajuste& ajuste, const DataHora& Data) {
    const std::string& Artigo = campo(0).Text;
    const startup::PedidoDocStock pedido{.tipo_documento = ajuste.TpDoc,
                                         .sector = ajuste.Sector,
                                         .serie = ajuste.Serie,
                                         .destino = ajuste.Sector,
                                         .processo = campo(2).Text,
                                         .texto_8 = "",
                                         .data = Data.data(),
                                         .texto_10 = "",
                                         .armazem = ArmazemActual,
                                         .inteiro_12 = 0,
                                         .texto_13 = "",
                                         .artigos = {"", Artigo},
                                         .textos_15 = {"", ""},
                                         .quantidades = {0, ajuste.Qtd.real()},
                                         .precos = {0, PrecoMovimento(Artigo)},
                                         .textos_18 = {"", ""}};
    gERP.PreparaDocStock(true);
    try {
        return CriaDocStock(pedido).NossoNoDocumento;
    } catch (const base::Falha& falha) {
        if (falha.numero() == erp_recusou) UltimoErro = falha.what();
        throw;
    }
}

void MovStocks::ActualizaMov(const Ajuste& ajuste, std::int32_t NumDoc, const DataHora& Data) {
    regista_falha_numerada([&] {
        livro::acrescenta_detentor(BD, {.NumSerie = campo(0).Text,
                                        .Cliente = Detentor,
                                        .Data = Data,
                                        .Quantidade = ajuste.com_sinal(),
                                        .Obs = campo(4).Text,
                                        .CliFinal = Detentor,
                                        .Documento = {.Ano = static_cast<std::int16_t>(Data.ano),
                                                      .TipoDocumento = ajuste.TpDoc,
                                                      .Serie = ajuste.Serie,
                                                      .NossoNoDocumento = NumDoc}});
    });
}

DataHora MovStocks::RemoveInf() {
    const auto registo = livro::movimento(BD, lRegisto);
    if (!registo) throw FalhaGuarda("O movimento carregado já não existe. Volte a escolhê-lo da lista.");
    Detentor = registo->Cliente;
    const ChaveDocumento& chave = registo->Documento;
    // The new row would be the item's newest, and give it back to whoever held it then.
    if (DetentorActual() != Detentor)
        throw FalhaGuarda(
            "O Artigo mudou de detentor depois deste movimento, que já não pode ser substituído.");
    // Refused or not, the replacement goes on; a document left in force is named once it is done.
    if (!AnulaNoERP(chave, [&] { return gERP.AnulaDocumento(1, chave); }).sucesso) PorAnular.push_back(chave);
    livro::apaga_movimento(BD, lRegisto);
    return registo->Data;
}

void MovStocks::btAnular_Click() {
    if (Avisa("", "Vai proceder à anulação.\n\rPretende continuar?", 3) != common::resposta_ok)
        return RecomecaEcra();
    std::string texto_erro;
    try {
        const auto registo = livro::movimento_a_anular(BD, lRegisto);
        if (!registo) {
            Avisa("", "Impossível a anulação!", 2);
            return;
        }
        const ChaveDocumento& chave = registo->Documento;
        const std::optional<std::string> detentor = DetentorActual();
        if (!AceitaReposicao(registo->Cliente, detentor)) return RecomecaEcra();
        BD.IniciaTransaccao();
        BD.Tranca();
        if (DetentorActual() != detentor)
            throw FalhaGuarda("O Artigo mudou de detentor. Volte a escolher o documento da lista.");
        const auto resultado = AnulaNoERP(chave, [&] { return gERP.AnulaDocumento(1, chave); });
        if (!resultado.sucesso) {
            texto_erro = resultado.mensagem;
            throw base::Falha(texto_erro);
        }
        DocsCriados.push_back(chave);
        livro::apaga_movimento(BD, lRegisto);
        ConfirmaGravacao();
    } catch (const std::exception& falha) {
        compensa(falha, texto_erro.empty() ? base::descricao(falha) : texto_erro);
    }
    RecomecaEcra();
}

// The ERP puts the stock back where the document took it from, wherever the item is by now.
bool MovStocks::AceitaReposicao(const std::string& cliente, const std::optional<std::string>& detentor) {
    if (detentor == cliente) return true;
    return Avisa("",
                 "O Artigo mudou de detentor depois deste movimento: é agora de " + detentor.value_or("") +
                     ".\r\nA anulação repõe o stock no armazém " + ArmazemDe(cliente) +
                     ".\r\nPretende continuar?",
                 3) == common::resposta_ok;
}

} // namespace orvex::adjust
