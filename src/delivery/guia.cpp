#include "delivery/guia.h"

#include "delivery/guias_remessa.h"
#include "livro/detencao.h"

namespace orvex::delivery {

using confirmacao::Fluxo;
using confirmacao::Intencao;

namespace {

Intencao comum(const Guia& guia, Fluxo fluxo) {
    Intencao intencao{.fluxo = fluxo, .Cliente = guia.cab.Cliente, .Data = guia.cab.Data};
    for (const LinhaGuia& linha : guia.linhas)
        if (!linha.Artigo.empty()) intencao.artigos.push_back({linha.Artigo, linha.Quant, guia.cab.Armazem});
    return intencao;
}

startup::ChaveDocumento chave(const CabecalhoGuia& cab, std::int32_t numero) {
    return {static_cast<std::int16_t>(cab.Documento.Ano), cab.Documento.TpDoc, cab.Serie, numero};
}

} // namespace

std::string Guia::texto(const base::FormatoRegional& formato) const {
    int com_artigo = 0;
    base::Moeda total;
    for (const LinhaGuia& linha : linhas) {
        if (linha.Artigo.empty()) continue;
        ++com_artigo;
        total += linha.Quant;
    }
    return cab.Cliente + ", " + std::to_string(com_artigo) + (com_artigo == 1 ? " linha, " : " linhas, ") +
           formato.peso_inteiro(total) + " t";
}

Intencao Guia::intencao() const {
    Intencao intencao = comum(*this, cab.devolucao ? Fluxo::devolve : Fluxo::emite_guia);
    intencao.cria = chave(cab, 0);
    return intencao;
}

Intencao Guia::intencao_de_anular(std::int32_t numero) const {
    Intencao intencao = comum(*this, Fluxo::anula_guia);
    intencao.anula = {chave(cab, numero)};
    return intencao;
}

CabecalhoGuia GuiasRemessa::CabecalhoNoEcra(const startup::ParametroDocumento& documento,
                                            const base::DataHora& data) const {
    return {.Documento = {data.ano, documento.TpDoc(), documento.SerieEscrita(), 0},
            .Serie = documento.Serie(),
            .Sector = documento.Sector(),
            .Data = data,
            .Cliente = campo(campos::cliente).Text,
            .NomeCliente = Label2(rotulos::nome_cliente).Caption,
            .NumeroContribuinte = campo(campos::contribuinte).Text,
            .Processo = campo(campos::processo).Text,
            .VossoNoDocumento = campo(campos::vosso_numero).Text,
            .Vendedor = campo(campos::gestor).Text,
            .MeiodeTransporte = campo(campos::transporte).Text,
            .Matricula = campo(campos::matricula).Text,
            .LocalCarga = campo(campos::local_carga).Text,
            .LocalDescarga = campo(campos::local_descarga).Text,
            .Carga = DTPicker2(momentos::carga).Value,
            .Descarga = DTPicker2(momentos::descarga).Value,
            .Armazem = ArmazemGuia,
            .Detentor =
                livro::Lugares{ARMAZEM.Codigo(), ARMAZEMORVEX.Codigo(), CLIENTEORVEX.Codigo()}.detentor(
                    ArmazemGuia, campo(campos::cliente).Text)};
}

Guia GuiasRemessa::GuiaNoEcra() const {
    Guia guia{.cab = CabecalhoNoEcra(GUIASREMESSA, DTPicker1.Value)};
    for (int i = 0; i < Gr.linhas(); ++i) {
        if (Gr.valor(i, "Artigo").vazio() && Gr.valor(i, "Nome").vazio()) continue;
        guia.linhas.push_back({.Artigo = Gr.texto(i, "Artigo"),
                               .Nome = Gr.texto(i, "Nome"),
                               .Quant = Gr.moeda(i, "Quant"),
                               .PesoBruto = Gr.moeda(i, "PesoBruto"),
                               .sem_peso_original = Gr.moeda(i, "QtOrig") == base::Moeda(),
                               .Unidade = Gr.texto(i, "Unidade"),
                               .Doc = Gr.texto(i, "Doc"),
                               .Data = Gr.texto(i, "Data"),
                               .OutroDocMesmo = Gr.texto(i, "OutroDocMesmo"),
                               .OutroDoc = Gr.texto(i, "OutroDoc")});
    }
    return guia;
}

Guia GuiasRemessa::DevolucaoNoEcra() const {
    Guia devolucao{.cab = CabecalhoNoEcra(GUIADEVOLUCAO, DTPicker3.Value)};
    CabecalhoGuia& cab = devolucao.cab;
    cab.devolucao = true;
    cab.Processo.clear();
    cab.VossoNoDocumento = campo(campos::numero).Text;
    std::swap(cab.LocalCarga, cab.LocalDescarga); // what was unloaded there is loaded there on its way back
    cab.Carga = cab.Descarga = DTPicker3.Value;
    for (int i = 0; i < Final.linhas(); ++i) {
        if (!Devolvida(i)) continue;
        const std::string NumLinha = Final.texto(i, "NumLinha");
        devolucao.linhas.push_back({.Artigo = Final.texto(i, "Artigo"),
                                    .Nome = Final.texto(i, "Nome"),
                                    .Quant = Final.moeda(i, "Qtd"),
                                    .PesoBruto = Final.moeda(i, "PesoBruto"),
                                    .OutroDoc = DocumentoDaGuia(NumGuia).linha(NumLinha).origem(),
                                    .NumLinha = Final.valor(i, "NumLinha").inteiro()});
    }
    return devolucao;
}

} // namespace orvex::delivery
