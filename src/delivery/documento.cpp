#include "delivery/guias_remessa.h"

#include "livro/chaves.h"

namespace orvex::delivery {

using base::Moeda;
using confirmacao::Confirmacao;
using startup::ReferenciaERP;

namespace {

constexpr const char* classe_documento = "SageApiNextPlus.DocumentoComercial";
constexpr const char* classe_linha = "SageApiNextPlus.DocumentosGcLin";
constexpr const char* sem_linhas = "Documento inválido. Obrigatório ter linhas.";

constexpr int area_gestao = 4;
constexpr int terceiro_cliente = 2;
constexpr int origem_devolucao = 3;
constexpr std::int16_t especie_guia = 3; // what SubmeteDocumento is told it gets
constexpr std::int16_t submeter = 1;     // TipoEnvio

} // namespace

bool GuiasRemessa::LibertaDocumento() {
    DocActual.reset();
    return true;
}

bool GuiasRemessa::CriaCabecalhoGuia() {
    if (DocActual) return true;
    DocActual = CriaObjectoERP(classe_documento);
    const ReferenciaERP Cab = DocActual->obtem("Cab").objecto;
    const base::DataHora &carga = DTPicker2(0).Value, &descarga = DTPicker2(1).Value;

    Cab->poe("Ano", DTPicker1.Value.ano);
    Cab->poe("Data", DTPicker1.Value.data());
    Cab->poe("AreaGestao", area_gestao);
    Cab->poe("Sector", GUIASREMESSA[2]);
    Cab->poe("Serie", GUIASREMESSA.serie(1));
    Cab->poe("TipoDocumento", GUIASREMESSA[0]);
    Cab->poe("TipoTerceiro", terceiro_cliente);
    Cab->poe("Terceiro", campo(0).Text);
    Cab->poe("TipoPreco", 0);
    DocActual->chama("Validar", {});
    Cab->poe("NumeroContribuinte", campo(19).Text);
    Cab->poe("Processo", campo(22).Text);
    Cab->poe("VossoNoDocumento", campo(23).Text);
    Cab->poe("Vendedor", campo(2).Text);
    Cab->poe("MeiodeTransporte", campo(24).Text);
    Cab->poe("Matricula", campo(25).Text);
    Cab->poe("LocalCarga", campo(26).Text);
    Cab->poe("LocalDescarga", campo(27).Text);
    Cab->poe("HoraCarga", carga.so_hora());
    Cab->poe("HoraDescarga", descarga.so_hora());
    Cab->poe("DataCarga", carga.data());
    Cab->poe("DataDescarga", descarga.data());
    Cab->poe("IvaIncluido", false);
    return true;
}

bool GuiasRemessa::CriaCabecalhoDevolucao() {
    if (DocActual) return true;
    DocActual = CriaObjectoERP(classe_documento);
    const ReferenciaERP Cab = DocActual->obtem("Cab").objecto;
    const base::DataHora& data = DTPicker3.Value;

    Cab->poe("Ano", data.ano);
    Cab->poe("Data", data.data());
    Cab->poe("AreaGestao", area_gestao);
    Cab->poe("Sector", GUIADEVOLUCAO[2]);
    Cab->poe("Serie", GUIADEVOLUCAO.serie(1));
    Cab->poe("TipoDocumento", GUIADEVOLUCAO[0]);
    Cab->poe("TipoTerceiro", terceiro_cliente);
    Cab->poe("Terceiro", campo(0).Text);
    Cab->poe("TipoPreco", 0);
    DocActual->poe("Origem", origem_devolucao);
    DocActual->chama("Validar", {});
    Cab->poe("NumeroContribuinte", campo(19).Text);
    Cab->poe("Processo", "");
    Cab->poe("VossoNoDocumento", campo(1).Text);
    Cab->poe("Vendedor", campo(2).Text);
    Cab->poe("MeiodeTransporte", campo(24).Text);
    Cab->poe("Matricula", campo(25).Text);
    // What was unloaded there is loaded there on its way back.
    Cab->poe("LocalCarga", campo(27).Text);
    Cab->poe("LocalDescarga", campo(26).Text);
    Cab->poe("DataCarga", data.data());
    Cab->poe("DataDescarga", data.data());
    Cab->poe("IvaIncluido", false);
    return true;
}

ReferenciaERP GuiasRemessa::NovaLinha(const std::string& Artigo) {
    const ReferenciaERP lin = CriaObjectoERP(classe_linha);
    lin->poe("TipoDeLinha", 1);
    lin->poe("Artigo", Artigo);
    return lin;
}

void GuiasRemessa::SugereValores(const ReferenciaERP& lin) {
    DocActual->chama("SugereValoresLin", {lin, true, true, true, true, true, false, true});
}

void GuiasRemessa::ComecaLinhas() {
    OutrosDocsLinha.assign(1, {});
    PesosLinha.assign(1, {});
    LinhasEnviadas.assign(1, {});
}

void GuiasRemessa::AcrescentaLinha(const ReferenciaERP& lin, const std::string& OutroDoc, Moeda peso,
                                   LinhaEnviada enviada) {
    DocActual->chama("AdicionaLinha", {lin});
    OutrosDocsLinha.push_back(OutroDoc);
    PesosLinha.push_back(peso);
    LinhasEnviadas.push_back(std::move(enviada));
}

std::string GuiasRemessa::ConteudoEnviado() const {
    std::string texto;
    for (const LinhaEnviada& linha : LinhasEnviadas)
        if (!linha.Artigo.empty())
            texto +=
                (texto.empty() ? "" : ", ") + linha.Artigo + " " + formato().texto(linha.Quantidade) + " t";
    return texto;
}

void GuiasRemessa::PoeMovimento(startup::ObjectoERP& lin, const base::DataHora& data,
                                const std::string& sector) {
    lin.poe("DataMvStock", data.data());
    lin.poe("PrecoUnitario", 0);
    lin.poe("Sector", sector);
    lin.poe("Desconto", 0);
    lin.poe("TaxaDesconto", 0);
}

void GuiasRemessa::AdicionaLinhaTexto(const std::string& texto) {
    const ReferenciaERP lin = NovaLinha("");
    SugereValores(lin);
    lin->poe("descricao", texto);
    lin->poe("Quantidade", 0);
    lin->poe("Unidade", "");
    lin->poe("TaxaIVA", 0);
    PoeMovimento(*lin, DTPicker1.Value, GUIASREMESSA[2]);
    lin->poe("Armazem", "");
    AcrescentaLinha(lin, "", Moeda(), {});
}

void GuiasRemessa::AdicionaLinhaGuia(int linha) {
    const ReferenciaERP lin = NovaLinha(Gr.texto(linha, "Artigo"));
    lin->poe("Armazem", ArmazemGuia);
    SugereValores(lin);
    lin->poe("descricao", Gr.texto(linha, "Nome"));
    lin->poe("Quantidade", Gr.moeda(linha, "Quant"));
    lin->poe("QuantidadeOrigem", Gr.moeda(linha, "Quant"));
    lin->poe("Unidade", Gr.texto(linha, "Unidade"));
    PoeMovimento(*lin, DTPicker1.Value, GUIASREMESSA[2]);
    const bool sem_origem = Gr.moeda(linha, "QtOrig") == Moeda();
    AcrescentaLinha(lin, Gr.texto(linha, "OutroDoc"), sem_origem ? Moeda() : Gr.moeda(linha, "PesoBruto"),
                    {Gr.texto(linha, "Artigo"), Gr.moeda(linha, "Quant")});
}

void GuiasRemessa::AdicionaLinhaDevolucao(int linha) {
    const ReferenciaERP lin = NovaLinha(Final.texto(linha, "Artigo"));
    lin->poe("Armazem", ArmazemGuia);
    SugereValores(lin);
    lin->poe("descricao", Final.texto(linha, "Nome"));
    lin->poe("Quantidade", Final.moeda(linha, "Qtd"));
    lin->poe("QuantidadeOrigem", Final.moeda(linha, "Qtd"));
    PoeMovimento(*lin, DTPicker3.Value, GUIADEVOLUCAO[2]);
    AcrescentaLinha(lin, Guia(NumGuia).linha(Final.texto(linha, "NumLinha")).origem(),
                    Final.moeda(linha, "PesoBruto"),
                    {Final.texto(linha, "Artigo"), Final.moeda(linha, "Qtd")});
}

bool GuiasRemessa::CriaLinhasGuia(Confirmacao& confirmacao, std::int16_t TipoEnvio, std::int32_t& Erro,
                                  std::string& Mensagem) {
    bool criado = false;
    regista_falha([&] {
        ComecaLinhas();
        std::string ultimo_doc = "?\?!!"; // a value no document has
        for (int i = 0; i < Gr.linhas(); ++i) {
            if (Gr.valor(i, "Artigo").vazio() && Gr.valor(i, "Nome").vazio()) continue;
            const std::string doc = Gr.texto(i, "Doc");
            if (!doc.empty() && doc != ultimo_doc) {
                AdicionaLinhaTexto("O material constante desta posição foi facturado no documento ");
                AdicionaLinhaTexto(livro::sem_ano(doc) + " de " + Gr.texto(i, "Data"));
            }
            AdicionaLinhaGuia(i);
            ultimo_doc = doc;
        }
        criado = EnviaDocumento(confirmacao, TipoEnvio, Erro, Mensagem);
    });
    return criado;
}

bool GuiasRemessa::CriaLinhasDevolucao(Confirmacao& confirmacao, std::int16_t TipoEnvio, std::int32_t& Erro,
                                       std::string& Mensagem) {
    bool criado = false;
    regista_falha([&] {
        ComecaLinhas();
        for (int i = 0; i < Final.linhas(); ++i)
            if (Devolvida(i)) AdicionaLinhaDevolucao(i);
        criado = EnviaDocumento(confirmacao, TipoEnvio, Erro, Mensagem);
    });
    return criado;
}

startup::ChaveDocumento GuiasRemessa::ChaveDe(const ReferenciaERP& documento) {
    const ReferenciaERP Cab = documento->obtem("Cab").objecto;
    startup::ChaveDocumento chave;
    chave.Ano = static_cast<std::int16_t>(Cab->obtem("Ano").valor.inteiro());
    chave.Serie = static_cast<std::int16_t>(Cab->obtem("Serie").valor.inteiro());
    chave.NossoNoDocumento = static_cast<std::int32_t>(Cab->obtem("NossoNoDocumento").valor.inteiro());
    chave.TipoDocumento = Cab->obtem("TipoDocumento").valor.texto();
    return chave;
}

bool GuiasRemessa::EnviaDocumento(Confirmacao& confirmacao, std::int16_t TipoEnvio, std::int32_t& Erro,
                                  std::string& Mensagem) {
    if (OutrosDocsLinha.size() <= 1) {
        Erro = -1;
        Mensagem = UltimoErro = sem_linhas;
        return false;
    }
    const startup::ChaveDocumento pedida = ChaveDe(DocActual);
    if (TipoEnvio != submeter) return true;

    ReferenciaERP doc;
    const auto pede = [&](const auto& anota) {
        if (gERP.SubmeteDocumento(especie_guia, DocActual) != 0) return false;
        doc = gERP.DocumentoSubmetido();
        const auto r =
            doc->chama("Finalizar", {pedida.NossoNoDocumento, 0, pedida.TipoDocumento, pedida.Ano});
        if (r.valor.inteiro() != 0) return false;
        anota(ChaveDe(doc));
        return true;
    };
    const auto porque = [&] {
        if (doc) UltimoErro = doc->chama("UltimaMensagem", {}).valor.texto();
        const startup::ResultadoERP resultado = gERP.ResultadoUltimo();
        Erro = resultado.sucesso ? -1 : 0;
        Mensagem = resultado.mensagem;
        if (!doc) UltimoErro = Mensagem;
        return UltimoErro;
    };
    if (!confirmacao.Cria(pedida, {.conteudo = ConteudoEnviado(), .pede = pede, .porque = porque}).sucesso)
        return false;
    campo(1).Text = std::to_string(confirmacao.Criado().NossoNoDocumento);
    return true;
}

} // namespace orvex::delivery
