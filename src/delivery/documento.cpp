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
constexpr int origem_devolucao = 3;
constexpr std::int16_t especie_guia = 3; // what SubmeteDocumento is told it gets

} // namespace

bool GuiasRemessa::LibertaDocumento() {
    DocActual.reset();
    return true;
}

bool GuiasRemessa::CriaCabecalhoGuia(const CabecalhoGuia& cab) { return CriaCabecalho(cab); }
bool GuiasRemessa::CriaCabecalhoDevolucao(const CabecalhoGuia& cab) { return CriaCabecalho(cab); }

bool GuiasRemessa::CriaCabecalho(const CabecalhoGuia& cab) {
    if (DocActual) return true;
    DocActual = CriaObjectoERP(classe_documento);
    const ReferenciaERP Cab = DocActual->obtem("Cab").objecto;

    Cab->poe("Ano", cab.Data.ano);
    Cab->poe("Data", cab.Data.data());
    Cab->poe("AreaGestao", area_gestao);
    Cab->poe("Sector", cab.Sector);
    Cab->poe("Serie", cab.Serie);
    Cab->poe("TipoDocumento", cab.Documento.TpDoc);
    Cab->poe("TipoTerceiro", startup::terceiro_cliente);
    Cab->poe("Terceiro", cab.Cliente);
    Cab->poe("TipoPreco", 0);
    if (cab.devolucao) DocActual->poe("Origem", origem_devolucao);
    DocActual->chama("Validar", {});
    Cab->poe("NumeroContribuinte", cab.NumeroContribuinte);
    Cab->poe("Processo", cab.Processo);
    Cab->poe("VossoNoDocumento", cab.VossoNoDocumento);
    Cab->poe("Vendedor", cab.Vendedor);
    Cab->poe("MeiodeTransporte", cab.MeiodeTransporte);
    Cab->poe("Matricula", cab.Matricula);
    Cab->poe("LocalCarga", cab.LocalCarga);
    Cab->poe("LocalDescarga", cab.LocalDescarga);
    if (!cab.devolucao) {
        Cab->poe("HoraCarga", cab.Carga.so_hora());
        Cab->poe("HoraDescarga", cab.Descarga.so_hora());
    }
    Cab->poe("DataCarga", cab.Carga.data());
    Cab->poe("DataDescarga", cab.Descarga.data());
    Cab->poe("IvaIncluido", false);
    return true;
}

ReferenciaERP GuiasRemessa::NovaLinha(const std::string& Artigo) {
    ReferenciaERP lin = CriaObjectoERP(classe_linha);
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

void GuiasRemessa::PoeMovimento(startup::ObjectoERP& lin, const CabecalhoGuia& cab) {
    lin.poe("DataMvStock", cab.Data.data());
    lin.poe("PrecoUnitario", 0);
    lin.poe("Sector", cab.Sector);
    lin.poe("Desconto", 0);
    lin.poe("TaxaDesconto", 0);
}

void GuiasRemessa::AdicionaLinhaTexto(const CabecalhoGuia& cab, const std::string& texto) {
    const ReferenciaERP lin = NovaLinha("");
    SugereValores(lin);
    lin->poe("descricao", texto);
    lin->poe("Quantidade", 0);
    lin->poe("Unidade", "");
    lin->poe("TaxaIVA", 0);
    PoeMovimento(*lin, cab);
    lin->poe("Armazem", "");
    AcrescentaLinha(lin, "", Moeda(), {});
}

void GuiasRemessa::AdicionaLinha(const CabecalhoGuia& cab, const LinhaGuia& linha) {
    const ReferenciaERP lin = NovaLinha(linha.Artigo);
    lin->poe("Armazem", cab.Armazem);
    SugereValores(lin);
    lin->poe("descricao", linha.Nome);
    lin->poe("Quantidade", linha.Quant);
    lin->poe("QuantidadeOrigem", linha.Quant);
    if (!cab.devolucao) lin->poe("Unidade", linha.Unidade);
    PoeMovimento(*lin, cab);
    AcrescentaLinha(lin, linha.OutroDoc, linha.sem_peso_original ? Moeda() : linha.PesoBruto,
                    {linha.Artigo, linha.Quant});
}

bool GuiasRemessa::CriaLinhasGuia(const Guia& guia, Confirmacao& confirmacao, std::int16_t TipoEnvio,
                                  std::int32_t& Erro, std::string& Mensagem) {
    bool criado = false;
    com_ultimo_erro([&] {
        ComecaLinhas();
        std::string ultimo_doc = "?\?!!"; // a value no document has
        for (const LinhaGuia& linha : guia.linhas) {
            if (!linha.Doc.empty() && linha.Doc != ultimo_doc) {
                AdicionaLinhaTexto(guia.cab,
                                   "O material constante desta posição foi facturado no documento ");
                AdicionaLinhaTexto(guia.cab, livro::sem_ano(linha.Doc) + " de " + linha.Data);
            }
            AdicionaLinha(guia.cab, linha);
            ultimo_doc = linha.Doc;
        }
        criado = EnviaDocumento(confirmacao, TipoEnvio, Erro, Mensagem);
    });
    return criado;
}

bool GuiasRemessa::CriaLinhasDevolucao(const Guia& devolucao, Confirmacao& confirmacao,
                                       std::int16_t TipoEnvio, std::int32_t& Erro, std::string& Mensagem) {
    bool criado = false;
    com_ultimo_erro([&] {
        ComecaLinhas();
        for (const LinhaGuia& linha : devolucao.linhas)
            AdicionaLinha(devolucao.cab, linha);
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
        Erro = base::verdadeiro;
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
        const startup::ChaveDocumento criada = ChaveDe(doc);
        confirmacao::ExigeNumero(criada);
        anota(criada);
        return true;
    };
    const auto porque = [&] {
        if (doc) UltimoErro = doc->chama("UltimaMensagem", {}).valor.texto();
        const startup::ResultadoERP resultado = gERP.ResultadoUltimo();
        Erro = resultado.sucesso ? base::verdadeiro : 0;
        Mensagem = resultado.mensagem;
        if (!doc) UltimoErro = Mensagem;
        return UltimoErro;
    };
    if (!confirmacao.Cria(pedida, {.conteudo = ConteudoEnviado(), .pede = pede, .porque = porque}).sucesso)
        return false;
    campo(campos::numero).Text = std::to_string(confirmacao.Criado().NossoNoDocumento);
    return true;
}

} // namespace orvex::delivery
