#include "delivery/guias_remessa.h"

#include "base/falha.h"
#include "base/texto.h"
#include "livro/detentores.h"
#include "livro/movimentos.h"
#include "livro/perguntas.h"

#include <utility>
#include <vector>

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
    for (const livro::LinhaERP& L : livro::linhas_no_erp(BD, cab.documento(NoDoc))) {
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
    livro::Perguntas anunciadas;
    std::vector<std::pair<livro::ChaveLinha, livro::Pesos>> retiradas;
    for (const LinhaGuia& linha : guia.linhas) {
        const auto origem = linha.Artigo.empty() ? std::nullopt : livro::le_chave(linha.OutroDocMesmo);
        if (!origem) continue;
        anunciadas.junta_linha(*origem);
        retiradas.push_back({*origem, {linha.Quant, linha.Quant, linha.PesoBruto}});
    }
    anunciadas.junta(livro::perguntas::linhas_no_erp(guia.cab.documento(NoDoc)));
    com_ultimo_erro([&] {
        BD.EmPasso(anunciadas.todas(), [&] {
            for (const auto& [origem, pesos] : retiradas)
                livro::retira(BD, origem, pesos);
            EscreveLinhasERP(guia.cab, NoDoc);
        });
    });
}

void GuiasRemessa::ActualizaMovGR(std::int32_t NoDoc) {
    com_ultimo_erro([&] {
        BD.Tranca();
        livro::retira_guia(BD, DocumentoDaGuia(NoDoc), GUIADEVOLUCAO.TpDoc());
    });
}

} // namespace orvex::delivery
