#include "resumo.h"

#include "base/caminho.h"
#include "base/formato_regional.h"
#include "startup/construtor_ligacao.h"
#include "startup/definicoes.h"
#include "tools/empresa/empresa_demo.h"

namespace orvex::demo {

Resumo::Resumo(const std::filesystem::path& instalacao) {
    BD_.Abre(startup::ConstrutorLigacao{
        .servidor = startup::servidor_embebido,
        .base = base::texto_de(std::filesystem::absolute(instalacao) / pasta_empresa),
        .utilizador = utilizador,
        .palavra_passe = ""}
                 .constroi());
}

void Resumo::tabela(const std::string& titulo, const std::string& sql) {
    const base::FormatoRegional formato;
    texto_ << "\n" << titulo << "\n";
    const auto registos = BD_.Consulta(sql);
    if (registos->fim()) texto_ << "    (nada)\n";
    for (; !registos->fim(); registos->move_seguinte()) {
        texto_ << "   ";
        for (std::size_t i = 0; i < registos->colunas(); ++i)
            texto_ << ' ' << registos->nome_coluna(i) << '=' << formato.texto(registos->valor(i));
        texto_ << "\n";
    }
}

void Resumo::estado(const std::string& momento, int guia) {
    const std::string numero = std::to_string(guia);
    texto_ << "\n== " << momento << " ==\n";
    tabela("xel_ORVEX_Mov, linhas da guia " + numero,
           "Select NumLinha,Artigo,Cliente,Qtd,PesoLiquido,PesoBruto,Origem from xel_ORVEX_Mov where "
           "TpDoc='GR' and NumDoc=" +
               numero);
    tabela("xel_ORVEX, detentores escritos pela guia " + numero,
           "Select NumSerie,Cliente,Quantidade,Obs,NumLin from xel_ORVEX where TpDoc='GR' and NNumDoc=" +
               numero);
    tabela("xel_ORVEX_Mov, linhas de factura abertas do cliente C0001",
           "Select TpDoc,NumDoc,NumLinha,Artigo,QtdOrig,Qtd,PesoBruto from xel_ORVEX_Mov where "
           "Cliente='C0001' and (TpDoc='FA' or TpDoc='FR') order by Artigo");
    tabela("ERP, guia " + numero,
           "Select TpDoc,NNumDoc,Terceiro,NVias from DocGcCab where TpDoc='GR' and NNumDoc=" + numero);
    tabela("ERP, stock dos artigos da guia " + numero,
           "Select artarm.Artigo,artarm.Armazem,Existenc from artarm inner join DocGcLin on "
           "DocGcLin.Artigo=artarm.Artigo where TpDocum='GR' and NNumDoc=" +
               numero + " order by artarm.Artigo");
}

void Resumo::devolucao() {
    tabela("xel_ORVEX_Mov, linhas da devolução 1",
           "Select NumLinha,Artigo,Cliente,Qtd,PesoLiquido,PesoBruto,Origem from xel_ORVEX_Mov where "
           "TpDoc='GD' and NumDoc=1");
    tabela("xel_ORVEX, detentores escritos pela devolução 1",
           "Select NumSerie,Cliente,Quantidade,Obs,NumLin from xel_ORVEX where TpDoc='GD' and NNumDoc=1");
    tabela("ERP, devolução 1",
           "Select TpDoc,NNumDoc,Terceiro,VossoNo,NVias from DocGcCab where TpDoc='GD' and NNumDoc=1");
}

} // namespace orvex::demo
