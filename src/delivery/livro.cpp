#include "delivery/guias_remessa.h"

#include "base/falha.h"
#include "base/texto.h"
#include "livro/detentores.h"
#include "livro/movimentos.h"

namespace orvex::delivery {

using base::DataHora;
using base::Moeda;

namespace {

bool mesmo_artigo(const std::string& a, const std::string& b) {
    return base::maiusculas(base::apara(a)) == base::maiusculas(base::apara(b));
}

} // namespace

livro::Documento GuiasRemessa::Guia(std::int32_t NoDoc) const {
    return {DTPicker1.Value.ano, GUIASREMESSA[0], GUIASREMESSA[1], NoDoc};
}

std::string GuiasRemessa::Detentor() const {
    return ARMAZEM[0] != ArmazemGuia ? CLIENTEORVEX[0] : campo(0).Text;
}

void GuiasRemessa::RegistaLinhasERP(const livro::Documento& documento, const DataHora& data,
                                    Sentido sentido) {
    for (const livro::LinhaERP& L : livro::linhas_no_erp(BD, documento)) {
        const auto n = static_cast<std::size_t>(L.NumLinha);
        if (n >= PesosLinha.size())
            throw base::FalhaGuarda("O ERP deu à guia a linha " + std::to_string(n) +
                                    ", que a guia não tem.");
        livro::acrescenta_movimento(BD, {.Documento = L.Documento,
                                         .NumLinha = L.NumLinha,
                                         .Data = data,
                                         .Artigo = L.Artigo,
                                         .Cliente = campo(0).Text,
                                         .Descritivo = L.Descr,
                                         .Quantidade = L.Quant,
                                         .Origem = OutrosDocsLinha[n],
                                         .PesoLiquido = L.Quant,
                                         .PesoBruto = PesosLinha[n]});
        livro::acrescenta_detentor(BD, {.NumSerie = L.Artigo,
                                        .Cliente = Detentor(),
                                        .Data = data,
                                        .Quantidade = sentido == Sentido::saida ? -L.Quant : L.Quant,
                                        .Obs = Label2(1).Caption,
                                        .CliFinal = Detentor(),
                                        .Documento = L.Documento,
                                        .NumLin = L.NumLinha});
        livro::acrescenta_peso_bruto(BD, L.Documento, L.NumLinha, PesosLinha[n]);
        LinhasEnviadas[n].registada = mesmo_artigo(L.Artigo, LinhasEnviadas[n].Artigo);
    }
}

void GuiasRemessa::ExigeLinhasRegistadas(const startup::ChaveDocumento& criado) const {
    for (const LinhaEnviada& linha : LinhasEnviadas)
        if (!linha.Artigo.empty() && !linha.registada)
            throw base::FalhaGuarda("O ERP não mostra o artigo " + linha.Artigo + " no documento " +
                                    criado.texto() + " que acabou de criar.");
}

void GuiasRemessa::ActualizaMov(std::int32_t NoDoc) {
    regista_falha([&] {
        for (int i = 0; i < Gr.linhas(); ++i) {
            if (Gr.valor(i, "Artigo").vazio()) continue;
            const Moeda Quant = Gr.moeda(i, "Quant");
            if (const auto origem = livro::le_chave(Gr.texto(i, "OutroDocMesmo")))
                livro::retira(BD, *origem, {Quant, Quant, Gr.moeda(i, "PesoBruto")});
        }
        RegistaLinhasERP(Guia(NoDoc), DTPicker1.Value, Sentido::saida);
    });
}

void GuiasRemessa::ActualizaMovGR(std::int32_t NoDoc) {
    regista_falha([&] {
        BD.Tranca();
        for (const livro::LinhaDaGuia& linha : livro::linhas_a_anular(BD, Guia(NoDoc))) {
            if (const auto origem = linha.origem()) livro::repoe(BD, *origem, linha.pesos);
            if (livro::devolvida(BD, GUIADEVOLUCAO[0], linha.chave))
                throw base::FalhaGuarda("O artigo " + linha.Artigo + " da guia " + std::to_string(NoDoc) +
                                        " já foi devolvido.");
        }
        livro::apaga_linhas(BD, Guia(NoDoc));
    });
}

} // namespace orvex::delivery
