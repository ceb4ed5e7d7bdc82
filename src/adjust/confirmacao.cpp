#include "adjust/mov_stocks.h"

#include "base/falha.h"
#include "base/texto.h"

#include <exception>
#include <optional>

namespace orvex::adjust {

using base::DataHora;
using base::Moeda;
using startup::ChaveDocumento;

namespace {

const Moeda limite_aviso = Moeda::de_decimos_milesimos(1'500); // 150 kg, in tonnes
constexpr std::int32_t erp_recusou = 5000;

ChaveDocumento chave_do_registo(startup::ConjuntoRegistos& registo) {
    return {.Ano = static_cast<std::int16_t>(registo.valor("Ano").inteiro()),
            .TipoDocumento = registo.valor("TpDoc").texto(),
            .Serie = static_cast<std::int16_t>(registo.valor("Serie").inteiro()),
            .NossoNoDocumento = static_cast<std::int32_t>(registo.valor("NNumDoc").inteiro())};
}

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
    std::optional<ChaveDocumento> anulado;
    try {
        if (!entrada_aceite()) return;
        if (campo(1).Text.empty()) campo(1).Text = "0";
        const Ajuste ajuste = ajuste_pedido();
        if (ajuste.Tipo == Especie::nenhuma) return RecomecaEcra();
        if (!bCarregado && !AceitaDatas({&DTPicker1})) return;
        if (Pergunta(ajuste)) Confirma(ajuste, anulado);
    } catch (const std::exception& falha) {
        compensa(erro_a_mostrar(falha));
        // A cancellation cannot be taken back: whoever reads this must know what is left to put right.
        if (anulado)
            Avisa("",
                  "O documento " + anulado->texto() +
                      " ficou anulado no ERP, mas pode continuar nos movimentos da ORVEX.",
                  2);
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
    regista_falha([&] {
        const startup::ListaParametros& chave = chave_documento(ajuste.Tipo);
        ajuste.TpDoc = chave[0];
        ajuste.Serie = chave.serie(1);
        ajuste.Sector = chave[2];
    });
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

void MovStocks::Confirma(const Ajuste& ajuste, std::optional<ChaveDocumento>& anulado) {
    std::vector<ChaveDocumento> por_anular;
    BD.IniciaTransaccao();
    if (!bCarregado) regista_falha([this] { ConfereArtigo(); });
    const DataHora Data = bCarregado ? RemoveInf(por_anular, anulado) : DTPicker1.Value;
    const std::int32_t NumDoc = ValidaMovimento(ajuste, Data);
    ActualizaMov(ajuste, NumDoc, Data);
    BD.ConfirmaTransaccao();
    Avisa("", "Foi gerado o Documento   :  " + std::to_string(NumDoc), 2);
    avisa_por_anular(por_anular);
    RecomecaEcra();
}

std::optional<std::string> MovStocks::DetentorActual() {
    const auto ultimo =
        BD.Consulta("Select top 1 * from xel_ORVEX where NumSerie=" + base::entre_plicas(campo(0).Text) +
                    " order by Registo desc");
    if (ultimo->fim()) return {};
    return ultimo->valor("Cliente").texto();
}

// What the user decided on must still be so: another program may have moved the item since it was typed.
void MovStocks::ConfereArtigo() {
    const bool mesmo = DetentorActual() == Detentor;
    const auto existencia = Existencia(campo(0).Text, ArmazemActual);
    const bool igual = existencia && (existencia->nulo() ? Moeda() : existencia->moeda()) == valor(1);
    if (!mesmo || !igual)
        throw base::Falha("A Existência ou o detentor do Artigo mudou. Volte a introduzir o Artigo.");
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
    const ChaveDocumento criada = gERP.CriaDocStock(pedido);
    DocsCriados.push_back(criada); // at once: should the outcome be out of reach, it must not be forgotten
    const startup::ResultadoERP resultado = gERP.ResultadoUltimo();
    if (!resultado.sucesso) {
        DocsCriados.pop_back();
        UltimoErro = resultado.mensagem;
        throw base::Falha(resultado.mensagem, erp_recusou);
    }
    return criada.NossoNoDocumento;
}

void MovStocks::ActualizaMov(const Ajuste& ajuste, std::int32_t NumDoc, const DataHora& Data) {
    regista_falha_numerada([&] {
        const auto registo = BD.AbreActualizavel("Select * from xel_ORVEX where Ano=-1");
        registo->acrescenta();
        registo->define("NumSerie", campo(0).Text);
        registo->define("Cliente", Detentor);
        registo->define("Data", Data);
        registo->define("Quantidade", ajuste.com_sinal());
        registo->define("Obs", campo(4).Text);
        registo->define("Funcionario", "");
        registo->define("CliFinal", Detentor);
        registo->define("Preco", 0);
        registo->define("Ano", Data.ano);
        registo->define("TpDoc", ajuste.TpDoc);
        registo->define("NNumDoc", NumDoc);
        registo->define("Serie", ajuste.Serie);
        registo->define("NumLin", 1);
        registo->actualiza();
    });
}

DataHora MovStocks::RemoveInf(std::vector<ChaveDocumento>& por_anular,
                              std::optional<ChaveDocumento>& anulado) {
    ChaveDocumento chave;
    DataHora Data;
    {
        const auto registo =
            BD.Consulta(" Select * from xel_Orvex where Registo=" + std::to_string(lRegisto));
        if (registo->fim())
            regista_falha([] {
                throw base::Falha("O movimento carregado já não existe. Volte a escolhê-lo da lista.");
            });
        Detentor = registo->valor("Cliente").texto();
        Data = registo->valor("Data").data();
        chave = chave_do_registo(*registo);
    }
    // The new row would be the item's newest, and give it back to whoever held it then.
    if (DetentorActual() != Detentor)
        regista_falha([] {
            throw base::Falha(
                "O Artigo mudou de detentor depois deste movimento, que já não pode ser substituído.");
        });
    // Refused or not, the replacement goes on; a document left in force is named once it is done.
    if (gERP.AnulaDocumento(1, chave).sucesso)
        anulado = chave;
    else
        por_anular.push_back(chave);
    BD.Executa("Delete xel_ORVEX where registo=" + std::to_string(lRegisto) + " ");
    return Data;
}

void MovStocks::btAnular_Click() {
    if (Avisa("", "Vai proceder à anulação.\n\rPretende continuar?", 3) != common::resposta_ok)
        return RecomecaEcra();
    std::string texto_erro;
    try {
        ChaveDocumento chave;
        {
            const auto registo =
                BD.Consulta("Select * from xel_Orvex where Registo=" + std::to_string(lRegisto));
            if (registo->fim()) {
                Avisa("", "Impossível a anulação!", 2);
                return;
            }
            chave = chave_do_registo(*registo);
        }
        BD.IniciaTransaccao();
        if (const auto resultado = gERP.AnulaDocumento(1, chave); !resultado.sucesso) {
            texto_erro = resultado.mensagem;
            throw base::Falha(texto_erro);
        }
        DocsCriados.push_back(chave);
        BD.Executa("Delete xel_ORVEX where registo=" + std::to_string(lRegisto) + " ");
        BD.ConfirmaTransaccao();
    } catch (const std::exception& falha) {
        compensa(texto_erro.empty() ? falha.what() : texto_erro);
    }
    RecomecaEcra();
}

} // namespace orvex::adjust
