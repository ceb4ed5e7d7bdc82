// The note as a draft: taken from the screen, put back on it, and the steps that can be taken back.
#include "delivery/guias_remessa.h"

#include <algorithm>
#include <unordered_map>

namespace orvex::delivery {

using base::DataHora;
using base::Moeda;

namespace {

constexpr std::size_t passos_atras = 50;

std::optional<DataHora> dada(const common::SelectorData& selector) {
    return selector.do_utilizador() ? std::optional(selector.Value) : std::nullopt;
}

void repoe(common::SelectorData& selector, const std::optional<DataHora>& valor) {
    if (!valor) return;
    selector.Value = *valor;
    selector.escolhida = valor; // asked about again, should it be far from today
}

constexpr int do_cabecalho[] = {campos::gestor,    campos::vendedor,     campos::contribuinte,
                                campos::processo,  campos::vosso_numero, campos::transporte,
                                campos::matricula, campos::local_carga,  campos::local_descarga};

} // namespace

Rascunho GuiasRemessa::RascunhoNoEcra() const {
    Rascunho r{.Cliente = campo(campos::cliente).Text, .Armazem = cb1(combos::armazem).ListIndex};
    for (const int i : do_cabecalho)
        r.Campos[i] = campo(i).Text;
    if (UltimaLinha >= 0 && r.Cliente != ClienteLinhas) { // another one was typed over the lines
        r.Cliente = ClienteLinhas;
        for (const int i : {campos::contribuinte, campos::gestor, campos::vendedor})
            r.Campos.erase(i); // which are the other's
    }
    r.Data = dada(DTPicker1);
    r.Carga = dada(DTPicker2(momentos::carga));
    r.Descarga = dada(DTPicker2(momentos::descarga));
    for (const LinhaGuia& linha : GuiaNoEcra().linhas)
        r.linhas.push_back({linha.OutroDocMesmo, linha.Artigo, linha.Nome, linha.Quant, linha.PesoBruto});
    return r;
}

std::optional<Rascunho> GuiasRemessa::rascunho() const {
    if (GuiaCarregada()) return std::nullopt;
    Rascunho r = RascunhoNoEcra();
    return r.linhas.empty() ? std::nullopt : std::optional(std::move(r));
}

bool GuiasRemessa::utilizador_repoe(const Rascunho& rascunho) {
    bool reposto = false;
    corre([&] {
        reposto = pode_repor() && Repoe(rascunho);
        if (reposto) EsquecePassos();
    });
    return reposto;
}

void GuiasRemessa::utilizador_desfaz() {
    corre([this] {
        if (GuiaCarregada()) return;
        const Rascunho este = RascunhoNoEcra();
        const bool com_linhas = !este.linhas.empty();
        std::vector<Passo> atras = Passado;
        if (com_linhas && este.Cliente != campo(campos::cliente).Text)
            return Volta({este}, std::move(atras)); // the lines under their own client again
        const auto igual = [&](const Rascunho& r) {
            return r.Cliente == este.Cliente && r.Armazem == este.Armazem && r.linhas == este.linhas;
        };
        while (!atras.empty() && igual(atras.back().guia))
            atras.pop_back();
        // A note given up before this one was begun is no step of this one.
        if (atras.empty() || (com_linhas && atras.back().abandonada)) return;
        const Passo passo = atras.back();
        atras.pop_back();
        Volta(passo, std::move(atras));
    });
}

// Nothing of it is forgotten before it is on the screen, nor what the screen loses if it cannot be put there.
void GuiasRemessa::Volta(const Passo& passo, std::vector<Passo> atras) {
    if (Estado == EstadoGuia::a_fazer && campo(campos::cliente).Text == passo.guia.Cliente &&
        Abertas == std::pair(passo.guia.Cliente, passo.guia.Armazem)) {
        RepoeLinhas(passo.guia.linhas, !passo.abandonada); // what was typed beside them since then stays
    } else {
        LembraPorGravar();
        if (!Repoe(passo.guia)) return;
    }
    Passado = std::move(atras);
}

void GuiasRemessa::lembra(const Rascunho& rascunho) { Lembra({rascunho, true}); }

void GuiasRemessa::LembraPasso(const Rascunho& rascunho) { Lembra({rascunho}); }

void GuiasRemessa::Lembra(Passo passo) {
    if (Passado.size() == passos_atras) Passado.erase(Passado.begin());
    Passado.push_back(std::move(passo));
}

void GuiasRemessa::LembraPorGravar() {
    if (const auto este = rascunho()) lembra(*este);
}

void GuiasRemessa::PoeDeLado() {
    if (auto este = rascunho()) DeLado = std::move(este);
    EsquecePassos();
}

void GuiasRemessa::EsquecePassos() {
    while (!Passado.empty() && !Passado.back().abandonada)
        Passado.pop_back();
}

bool GuiasRemessa::Repoe(const Rascunho& rascunho) {
    larga_o_digitado();
    try {
        limparform();
        if (RepoeCabecalho(rascunho)) {
            RepoeLinhas(rascunho.linhas, false);
            SetFocus(Gr);
            if (rascunho.linhas.empty() || UltimaLinha >= 0) return true;
        }
        RecomecaEcra();
        return false;
    } catch (...) { // half of a note is none
        limparform();
        throw;
    }
}

// False when the client is none any more, or the user gave up the list of his lines.
bool GuiasRemessa::RepoeCabecalho(const Rascunho& rascunho) {
    common::Combo& armazem = cb1(combos::armazem);
    if (rascunho.Armazem == armazens::dos_clientes) armazem.ListIndex = armazens::dos_clientes;
    campo(campos::cliente).Text = rascunho.Cliente;
    bool Cancel = false;
    if (!LeCliente(Cancel) || !ListaFacturas(campo(campos::cliente).Text)) return false;
    for (const int i : do_cabecalho)
        if (const auto dele = rascunho.Campos.find(i); dele != rascunho.Campos.end())
            campo(i).Text = dele->second;
    repoe(DTPicker1, rascunho.Data);
    repoe(DTPicker2(momentos::carga), rascunho.Carga);
    repoe(DTPicker2(momentos::descarga), rascunho.Descarga);
    return true;
}

void GuiasRemessa::RepoeLinhas(const std::vector<LinhaRascunho>& linhas, bool como_estavam) {
    std::unordered_map<std::string, int> abertas; // the first row with each key
    for (int r = 0; r < Detalhe.linhas(); ++r)
        if (!Detalhe.texto(r, "Artigo").empty()) {
            abertas.try_emplace(ChaveLinhaAberta(r), r);
            DesmarcaLinha(r);
        }
    Act_Gr();
    std::string faltas;
    bool com_artigo = false; // the article that a text stands under was put back
    for (const LinhaRascunho& linha : linhas) {
        if (linha.Origem.empty()) {
            if (com_artigo)
                PoeTexto(linha.Nome);
            else
                faltas += "\r\nTexto «" + linha.Nome + "»";
            continue;
        }
        const auto aberta = abertas.find(linha.Origem);
        com_artigo = aberta != abertas.end() && Detalhe.texto(aberta->second, "Artigo") == linha.Artigo &&
                     RepoeLinha(aberta->second, linha, como_estavam, faltas);
        if (!com_artigo) faltas += "\r\n" + linha.Artigo + ": já não há nada em aberto";
    }
    Gr.linha_actual = std::max(UltimaLinha + 1, 1);
    Gr.coluna_actual = Gr.coluna("Quant");
    if (!faltas.empty())
        Avisa("", "O que estava em aberto mudou entretanto. Da guia falta agora:" + faltas, aviso_informacao);
}

// False where nothing of it is left to be taken.
bool GuiasRemessa::RepoeLinha(int aberta, const LinhaRascunho& linha, bool como_estava, std::string& faltas) {
    const Moeda livre =
        como_estava ? linha.Quant : Detalhe.moeda(aberta, "Quant") - JaEscolhido(ChaveLinhaAberta(aberta));
    if (livre <= Moeda() && linha.Quant > Moeda()) return false;
    const Moeda quantidade = std::min(linha.Quant, livre);
    EscolheLinha(aberta, quantidade);
    Gr.define_valor(UltimaLinha, "Nome", linha.Nome);
    // A smaller weight, when it is typed, is gross as well.
    Gr.define_valor(UltimaLinha, "PesoBruto", quantidade == linha.Quant ? linha.PesoBruto : quantidade);
    if (quantidade < linha.Quant)
        faltas += "\r\n" + linha.Artigo + ": de " + formato().texto(linha.Quant) + " t restam " +
                  formato().texto(quantidade) + " t";
    return true;
}

void GuiasRemessa::PoeTexto(const std::string& texto) {
    const int linha = UltimaLinha + 1;
    Gr.garante_linha(linha);
    Gr.define_valor(linha, "Nome", texto);
    LigaTexto(linha);
}

} // namespace orvex::delivery
