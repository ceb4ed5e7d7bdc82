#include "delivery/folha_guia.h"

#include "base/falha.h"
#include "delivery/guias_remessa.h"

#include <utility>

namespace orvex::delivery {
namespace {

using Dado = FolhaGuia::Dado;

void junta(std::vector<Dado>& dados, const common::Controlo& controlo, const std::string& texto) {
    if (!texto.empty()) dados.push_back({controlo.Legenda, texto});
}

// The current item of a choice.
std::string escolhido(const common::Combo& combo) {
    const auto qual = static_cast<std::size_t>(combo.ListIndex);
    return qual < combo.itens.size() ? combo.itens[qual] : "";
}

std::string codigo_e_nome(const std::string& codigo, const std::string& nome) {
    return nome.empty() ? codigo : codigo + "   " + nome;
}

FolhaGuia::Linha linha_de(const GuiasRemessa& ecra, int i) {
    const common::Grelha& Gr = ecra.Gr;
    FolhaGuia::Linha linha{.Artigo = Gr.texto(i, "Artigo"), .Nome = Gr.texto(i, "Nome")};
    if (linha.Artigo.empty()) return linha;
    linha.Doc = Gr.texto(i, "Doc");
    linha.PesoLiquido = ecra.formato().peso_inteiro(Gr.moeda(i, "Quant"));
    linha.PesoBruto = ecra.formato().peso_inteiro(Gr.moeda(i, "PesoBruto"));
    return linha;
}

void junta_linhas(const GuiasRemessa& ecra, FolhaGuia& folha) {
    for (int i = 0; i < ecra.Gr.linhas(); ++i)
        if (FolhaGuia::Linha linha = linha_de(ecra, i); !linha.Artigo.empty() || !linha.Nome.empty())
            folha.linhas.push_back(std::move(linha));
    const Totais soma = totais(ecra.Gr, "Quant", "PesoBruto");
    folha.totais = {.Nome = std::to_string(soma.linhas) + (soma.linhas == 1 ? " linha" : " linhas"),
                    .PesoLiquido = ecra.formato().peso_inteiro(soma.liquido),
                    .PesoBruto = ecra.formato().peso_inteiro(soma.bruto)};
}

} // namespace

FolhaGuia folha_da_guia(GuiasRemessa& ecra, std::string empresa) {
    FolhaGuia folha{.empresa = std::move(empresa),
                    .titulo = ecra.Label2(rotulos::guia).Caption,
                    .estado = "POR CONFIRMAR"};
    std::string nome = ecra.Label2(rotulos::nome_cliente).Caption;
    if (ecra.carregamento() != 0) {
        if (!ecra.GuiaAindaNoEcra()) throw base::Falha(GuiasRemessa::outra_guia);
        const ResumoGuia resumo = ecra.LeResumo();
        folha.numero = ecra.campo(campos::numero).Text;
        folha.estado = texto(resumo.situacao);
        nome = resumo.NomeCliente;
    }

    const auto campo = [&](int i) -> const common::Campo& { return ecra.campo(i); };
    junta(folha.dados, campo(campos::cliente), codigo_e_nome(campo(campos::cliente).Text, nome));
    junta(folha.dados, campo(campos::contribuinte), campo(campos::contribuinte).Text);
    junta(folha.dados, ecra.DTPicker1, ecra.DTPicker1.texto_mostrado());
    junta(folha.dados, ecra.cb1(combos::armazem), escolhido(ecra.cb1(combos::armazem)));
    for (const int i : {campos::gestor, campos::vendedor, campos::processo, campos::vosso_numero})
        junta(folha.dados, campo(i), campo(i).Text);

    for (const int i : {campos::transporte, campos::matricula, campos::local_carga, campos::local_descarga})
        junta(folha.transporte, campo(i), campo(i).Text);
    for (const int i : {momentos::carga, momentos::descarga})
        junta(folha.transporte, ecra.DTPicker2(i), ecra.DTPicker2(i).texto_mostrado());

    junta_linhas(ecra, folha);
    return folha;
}

} // namespace orvex::delivery
