#include "delivery/guias_remessa.h"

#include "base/falha.h"
#include "base/texto.h"
#include "livro/detentores.h"
#include "livro/movimentos.h"

namespace orvex::delivery {

namespace {

bool mesmo_artigo(const std::string& a, const std::string& b) {
    return base::maiusculas(base::apara(a)) == base::maiusculas(base::apara(b));
}

} // namespace

livro::Documento GuiasRemessa::DocumentoDaGuia(std::int32_t NoDoc) const {
    return {DTPicker1.Value.ano, GUIASREMESSA.TpDoc(), GUIASREMESSA.SerieEscrita(), NoDoc};
}

void GuiasRemessa::EscreveLinhasERP(const CabecalhoGuia& cab, std::int32_t NoDoc) {
    livro::Documento documento = cab.Documento;
    documento.Numero = NoDoc;
    for (const livro::LinhaERP& L : livro::linhas_no_erp(BD, documento)) {
        const auto n = static_cast<std::size_t>(L.NumLinha);
        if (n >= PesosLinha.size())
            throw base::FalhaGuarda("O ERP deu à guia a linha " + std::to_string(n) +
                                    ", que a guia não tem.");
        livro::acrescenta_movimento(BD, {.Documento = L.Documento,
                                         .NumLinha = L.NumLinha,
                                         .Data = cab.Data,
                                         .Artigo = L.Artigo,
                                         .Cliente = cab.Cliente,
                                         .Descritivo = L.Descr,
                                         .Quantidade = L.Quant,
                                         .Origem = OutrosDocsLinha[n],
                                         .PesoLiquido = L.Quant,
                                         .PesoBruto = PesosLinha[n]});
        livro::acrescenta_detentor(BD, {.NumSerie = L.Artigo,
                                        .Cliente = cab.Detentor,
                                        .Data = cab.Data,
                                        .Quantidade = cab.devolucao ? L.Quant : -L.Quant,
                                        .Obs = cab.NomeCliente,
                                        .CliFinal = cab.Detentor,
                                        .Documento = L.Documento,
                                        .NumLin = L.NumLinha});
        livro::acrescenta_peso_bruto(BD, L.Documento, L.NumLinha, PesosLinha[n]);
        LinhasEnviadas[n].mostrada = mesmo_artigo(L.Artigo, LinhasEnviadas[n].Artigo);
    }
}

void GuiasRemessa::ExigeLinhasMostradas(const startup::ChaveDocumento& criado) const {
    for (const LinhaEnviada& linha : LinhasEnviadas)
        if (!linha.Artigo.empty() && !linha.mostrada)
            throw base::FalhaGuarda("O ERP não mostra o artigo " + linha.Artigo + " no documento " +
                                    criado.texto() + " que acabou de criar.");
}

void GuiasRemessa::ActualizaMov(const Guia& guia, std::int32_t NoDoc) {
    com_ultimo_erro([&] {
        for (const LinhaGuia& linha : guia.linhas) {
            if (linha.Artigo.empty()) continue;
            if (const auto origem = livro::le_chave(linha.OutroDocMesmo))
                livro::retira(BD, *origem, {linha.Quant, linha.Quant, linha.PesoBruto});
        }
        EscreveLinhasERP(guia.cab, NoDoc);
    });
}

void GuiasRemessa::ActualizaMovGR(std::int32_t NoDoc) {
    com_ultimo_erro([&] {
        BD.Tranca();
        livro::retira_guia(BD, DocumentoDaGuia(NoDoc), GUIADEVOLUCAO.TpDoc());
    });
}

} // namespace orvex::delivery
