// The history of each item, row by row: L4, L6, L7; and where it ends, E4 and E5.
#include "anulados.h"
#include "base/texto.h"
#include "livro/leitura.h"
#include "ponto.h"
#include "valores.h"

#include <map>

namespace orvex::auditoria {
namespace {

namespace C = livro::detentor_lido;
using base::Moeda;

struct Linha {
    std::string Cliente, CliFinal, TpDoc;
    std::int64_t Registo = 0, Ano = 0, Serie = 0, NNumDoc = 0;
    std::optional<Moeda> Quantidade;
    std::optional<base::DataHora> Data;
    enum class Papel { outro, ajuste, saida, entrada };
    Papel papel = Papel::outro;

    std::string documento() const {
        if (papel == Papel::saida || papel == Papel::entrada) return "uma transferência";
        return TpDoc + "/" + std::to_string(Serie) + "/" + std::to_string(NNumDoc);
    }
    Moeda peso() const { return Quantidade.value_or(Moeda()).absoluta(); }
};

class Historias {
  public:
    explicit Historias(Contexto& contexto) : contexto_(contexto), casa_(contexto.casa), anulados_(contexto) {}
    void percorre();

  private:
    Linha le(const Leitura& l) const;
    void comeca(const Leitura& l);
    void linha(const Linha& l);
    void cadeia(const Linha& l);
    void transfere(const Linha& l, const Linha& outra);
    void acaba();
    void stock();
    void nota();
    void quebra(const char* verificacao, Gravidade gravidade, const Linha& l, std::string esperado,
                std::string encontrado, std::string que_fazer);
    void meia(const Linha& l, std::string esperado, std::string encontrado);

    Contexto& contexto_;
    const Casa& casa_;
    Anulados anulados_;

    // Of the item at hand.
    std::string artigo_, nota_;
    std::optional<Moeda> existencia_[2]; // at ORVEX, at the clients
    Moeda somas_[2];
    std::optional<Linha> anterior_, saida_; // an exit whose entry is still to come
    std::string destino_;                   // of the last transfer
    bool primeira_ = true, quebrada_ = false;
};

Linha Historias::le(const Leitura& l) const {
    Linha linha{.Cliente = l.texto(C::Cliente),
                .CliFinal = l.texto(C::CliFinal),
                .TpDoc = l.texto(C::TpDoc),
                .Registo = l.inteiro(C::Registo),
                .Ano = l.inteiro(C::Ano),
                .Serie = l.inteiro(C::Serie),
                .NNumDoc = l.inteiro(C::NNumDoc),
                .Quantidade = l.moeda(C::Quantidade),
                .Data = l.data(C::Data)};
    using Papel = Linha::Papel;
    if (linha.NNumDoc > 0)
        linha.papel = casa_.ajuste(linha.TpDoc, linha.Serie) ? Papel::ajuste : Papel::outro;
    else if (casa_.quebras.e(linha.TpDoc, linha.Serie))
        linha.papel = Papel::saida;
    else if (casa_.sobras.e(linha.TpDoc, linha.Serie))
        linha.papel = Papel::entrada;
    return linha;
}

void Historias::percorre() {
    const auto& lugares = casa_.lugares;
    Leitura l(contexto_.sessoes[0], livro::historias(lugares.ArmazemOrvex, lugares.Armazem),
              contexto_.progresso);
    Valores valores(contexto_);
    std::int64_t ultimo = -1;
    for (; l.ha(); l.seguinte()) {
        const std::string artigo = l.texto(C::NumSerie);
        if (artigo != artigo_ || primeira_) {
            if (primeira_ || !mesmo_codigo(artigo, artigo_)) {
                acaba();
                comeca(l);
            }
            artigo_ = artigo;
        }
        const Linha esta = le(l);
        if (esta.Registo == ultimo) continue; // the ERP has its article twice in a warehouse
        ultimo = esta.Registo;
        valores.confere_detentor(l);
        linha(esta);
    }
    acaba();
    std::sort(contexto_.artigos_do_livro.begin(), contexto_.artigos_do_livro.end());
}

void Historias::comeca(const Leitura& l) {
    artigo_ = l.texto(C::NumSerie);
    contexto_.artigos_do_livro.push_back(resumo(artigo_));
    nota_ = l.texto(C::Observ);
    existencia_[0] = l.moeda(C::Existencia1);
    existencia_[1] = l.moeda(C::Existencia2);
    somas_[0] = somas_[1] = Moeda();
    anterior_.reset();
    saida_.reset();
    destino_.clear();
    primeira_ = true;
    quebrada_ = false;
}

void Historias::quebra(const char* verificacao, Gravidade gravidade, const Linha& l, std::string esperado,
                       std::string encontrado, std::string que_fazer) {
    if (quebrada_) return; // what follows may follow from it
    quebrada_ = true;
    contexto_.junta({.gravidade = gravidade,
                     .verificacao = verificacao,
                     .chave = "registo " + std::to_string(l.Registo),
                     .artigo = artigo_,
                     .cliente = l.Cliente,
                     .esperado = std::move(esperado),
                     .encontrado = std::move(encontrado),
                     .peso = l.peso(),
                     .desde = l.documento(),
                     .data = l.Data,
                     .que_fazer = std::move(que_fazer)});
}

void Historias::meia(const Linha& l, std::string esperado, std::string encontrado) {
    quebra("L4", Gravidade::erro, l, std::move(esperado), std::move(encontrado),
           "veja com o armazém quem tem o artigo, e peça que a metade em falta da transferência seja "
           "acrescentada, ou a que está a mais retirada");
}

void Historias::linha(const Linha& l) {
    using Papel = Linha::Papel;
    somas_[casa_.e_orvex(l.Cliente) ? 0 : 1] += l.Quantidade.value_or(Moeda());
    if (saida_ && l.papel != Papel::entrada) {
        meia(*saida_, "a entrada logo a seguir à saída", "só a saída de " + saida_->Cliente);
        transfere(*saida_, *saida_);
        saida_.reset();
    }
    if (l.papel == Papel::saida) {
        cadeia(l);
        saida_ = l;
    } else if (l.papel == Papel::entrada && saida_) {
        if (l.peso() != saida_->peso())
            meia(l, "a entrada de " + toneladas(saida_->peso()) + ", como a saída", toneladas(l.Quantidade));
        transfere(*saida_, l);
        saida_.reset();
    } else if (l.papel == Papel::entrada && !primeira_) {
        meia(l, "a saída antes da entrada", "só a entrada em " + l.Cliente);
        transfere(*anterior_, l);
    } else if (l.papel == Papel::ajuste) {
        cadeia(l);
    }
    anterior_ = l;
    primeira_ = false;
}

// An adjustment and an exit name the holder of then.
void Historias::cadeia(const Linha& l) {
    if (!anterior_ || l.Cliente.empty() || anterior_->Cliente.empty()) return;
    if (mesmo_codigo(l.Cliente, anterior_->Cliente)) return;
    if (l.papel == Linha::Papel::saida && mesmo_codigo(l.Cliente, anterior_->CliFinal)) return;
    if (anulados_.deu(artigo_, l.Cliente)) return;
    const bool substituido = l.papel == Linha::Papel::ajuste && anulados_.ajuste(artigo_);
    quebra("L6", substituido ? Gravidade::aviso : Gravidade::erro, l, "detentor " + anterior_->Cliente,
           "detentor " + l.Cliente,
           substituido ? "um ajuste deste artigo foi substituído ou anulado depois de ele mudar de mãos: "
                         "confirme com o armazém quem o tem"
                       : "confirme com o armazém quem tem o artigo; se é " + anterior_->Cliente +
                             ", peça a correcção deste registo, e se não, transfira-o");
}

// Either row may be the half that is there. Only what goes from a client to ORVEX has a document of the ERP.
void Historias::transfere(const Linha& l, const Linha& outra) {
    const bool saida = outra.papel != Linha::Papel::entrada;
    const bool da_orvex =
        casa_.e_orvex(l.Cliente); // which this program never sends away: an item's beginning
    destino_ = da_orvex ? "" : saida ? outra.CliFinal : outra.Cliente;
    if (!casa_.e_orvex(destino_)) return;
    constexpr int casas = 3;
    const Linha& com_peso = l.papel == Linha::Papel::saida ? l : outra; // where they differ, L4 has told it
    const Linha& com_data = outra.Data ? outra : l;
    contexto_.transferencias.junta({.artigo = resumo(artigo_),
                                    .quantidade = com_peso.peso().arredondada(casas).decimos_milesimos(),
                                    .dia = com_data.Data ? dia(*com_data.Data) : 0,
                                    .no_erp = false,
                                    .numero = static_cast<std::int32_t>(outra.Registo)});
}

void Historias::acaba() {
    if (saida_) {
        meia(*saida_, "a entrada logo a seguir à saída", "só a saída de " + saida_->Cliente);
        transfere(*saida_, *saida_);
    }
    if (quebrada_ || !anterior_ || anterior_->Cliente.empty()) return;
    stock();
    nota();
}

// A note may have taken all that lay at the holder, and left what lies elsewhere: the ledger's own sums then
// say so, too.
void Historias::stock() {
    const int dele = casa_.e_orvex(anterior_->Cliente) ? 0 : 1;
    const Moeda no_outro = existencia_[1 - dele].value_or(Moeda());
    if (existencia_[dele].value_or(Moeda()) > Moeda() || no_outro <= Moeda()) return;
    if (somas_[1 - dele] > Moeda()) return;
    const auto& lugares = casa_.lugares;
    const std::string& outro = dele == 0 ? lugares.Armazem : lugares.ArmazemOrvex;
    contexto_.junta({.gravidade = Gravidade::aviso,
                     .verificacao = "E4",
                     .chave = artigo_,
                     .artigo = artigo_,
                     .cliente = anterior_->Cliente,
                     .esperado = "stock no armazém " + casa_.armazem(anterior_->Cliente),
                     .encontrado = toneladas(no_outro) + " no armazém " + outro,
                     .peso = no_outro,
                     .desde = anterior_->documento(),
                     .data = anterior_->Data,
                     .que_fazer = "veja onde o artigo está: se está com " + anterior_->Cliente +
                                  ", mude o stock de armazém no ERP; se não, transfira-o"});
}

// Only a transfer to a client writes it; it stays as it was when the item goes elsewhere afterwards.
void Historias::nota() {
    if (destino_.empty() || casa_.e_orvex(destino_) || !mesmo_codigo(destino_, anterior_->Cliente)) return;
    const std::string inicio = base::maiusculas(destino_ + " - ");
    if (base::maiusculas(nota_).starts_with(inicio)) return;
    contexto_.junta({.gravidade = Gravidade::aviso,
                     .verificacao = "E5",
                     .chave = artigo_,
                     .artigo = artigo_,
                     .cliente = anterior_->Cliente,
                     .esperado = "«" + destino_ + " - ...»",
                     .encontrado = "«" + nota_ + "»",
                     .desde = anterior_->documento(),
                     .data = anterior_->Data,
                     .que_fazer = "escreva na nota (Observ) do artigo, no ERP, o cliente que o tem"});
}

} // namespace

void examina_historias(Contexto& contexto) { Historias(contexto).percorre(); }

} // namespace orvex::auditoria
