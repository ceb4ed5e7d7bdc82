#include "livro/linhas_abertas.h"

#include "base/falha.h"
#include "base/texto.h"

namespace orvex::livro {
namespace {

// That a row is of one of the groups.
std::string filtro_documentos(const startup::ParametroGrupos& FACTURAS) {
    std::string filtro;
    for (const auto& [TpDoc, SerieEscrita] : FACTURAS.grupos()) {
        if (!filtro.empty()) filtro += " OR ";
        filtro += " (TpDoc=" + base::entre_plicas(TpDoc) + " and SerieDoc=" + SerieEscrita + ")";
    }
    return filtro;
}

std::string abertas(const char* coluna, const std::string& valor, const startup::ParametroGrupos& FACTURAS) {
    return std::string("Select * from xel_ORVEX_Mov INNER JOIN Artigos ON "
                       "Artigos.Codigo=xel_ORVEX_Mov.Artigo where ") +
           coluna + " =" + base::entre_plicas(valor) + " and Qtd>0 and artoudes=0 and (" +
           filtro_documentos(FACTURAS) + " )";
}

bool esta_no_armazem(startup::SessaoBD& BD, const ChaveLinha& linha, const std::string& Armazem) {
    const auto no_erp = BD.Consulta(
        "Select * from DocGcLin where TpDocum=" + base::entre_plicas(linha.TpDoc) +
        " and Serie=" + base::entre_plicas(linha.Serie) + " and Nnumdoc=" + base::entre_plicas(linha.NumDoc) +
        " and Ano=" + base::entre_plicas(linha.Ano) + " and NumLinha=" + base::entre_plicas(linha.NumLinha));
    return !no_erp->fim() && base::maiusculas(no_erp->valor("Armazem").texto()) == base::maiusculas(Armazem);
}

LinhaAberta le(startup::ConjuntoRegistos& linha) {
    const base::Variante data = linha.valor("Data");
    return {.documento = linha.valor("TpDoc").texto() + "/" + linha.valor("SerieDoc").texto() + "/" +
                         linha.valor("NumDoc").texto(),
            .NumLinha = linha.valor("NumLinha"),
            .Qtd = linha.valor("Qtd"),
            .QtdOrig = linha.valor("QtdOrig"),
            .PesoBruto = linha.valor("PesoBruto"),
            .Artigo = linha.valor("Artigo").texto(),
            .Descritivo = linha.valor("Descritivo").texto(),
            .Data = data.nulo() ? std::nullopt : std::optional(data.data()),
            .Unidade = linha.valor("UnBase").texto()};
}

void repara_peso(startup::SessaoBD& BD, startup::ConjuntoRegistos& lida) {
    const auto chave = chave_propria(lida);
    if (!chave) return; // it cannot be found again
    const std::string sql = "select * from xel_Orvex_Mov where Ano=" + chave->Ano +
                            " and TpDoc=" + base::entre_plicas(chave->TpDoc) +
                            " and NumDoc= " + chave->NumDoc + " and SerieDoc=" + chave->Serie +
                            " and NumLInha=" + chave->NumLinha + " ";
    constexpr int vezes = 3;
    for (int vez = 1; vez <= vezes; ++vez) {
        const auto linha = BD.AbreActualizavel(sql);
        if (linha->fim() || !linha->valor("PesoBruto").nulo()) return;
        linha->define("PesoLiquido", lida.valor("QtdOrig"));
        linha->define("PesoBruto", lida.valor("PB"));
        try {
            return linha->actualiza();
        } catch (const base::Falha& falha) {
            if (falha.numero() != startup::numeros_bd::registo_alterado) throw;
        }
    }
}

} // namespace

void mostra_linhas_abertas(startup::SessaoBD& BD, const std::string& Cliente, const std::string& Armazem,
                           const startup::ParametroGrupos& FACTURAS,
                           const std::function<void(const LinhaAberta&)>& mostra) {
    const auto linhas = BD.Consulta(abertas("Cliente", Cliente, FACTURAS));
    for (; !linhas->fim(); linhas->move_seguinte()) {
        const auto chave = chave_propria(*linhas);
        if (!chave || esta_no_armazem(BD, *chave, Armazem)) mostra(le(*linhas));
    }
}

void repara_pesos(startup::SessaoBD& BD, const std::string& Cliente,
                  const startup::ParametroGrupos& FACTURAS) {
    const auto linhas = BD.Consulta(
        " Select m.*,l.PESOBRUTO as 'PB' from xel_ORVEX_Mov as m inner join artigos as a on a.codigo=m.Artigo"
        " left outer  join U_Docgclin1 as l ON l.ano=m.ano and  l.TPDOCUM =m.tpdoc and l.SERIE =m.seriedoc"
        " and l.nnumdoc=m.numdoc and l.NUMLINHA =m.numlinha where Cliente =" +
        base::entre_plicas(Cliente) + " and Qtd>0 and artoudes=0 and (" + filtro_documentos(FACTURAS) + " )");
    for (; !linhas->fim(); linhas->move_seguinte())
        if (!linhas->valor("PB").nulo() && linhas->valor("PesoBruto").nulo()) repara_peso(BD, *linhas);
}

bool tem_linhas_abertas(startup::SessaoBD& BD, const std::string& Artigo,
                        const startup::ParametroGrupos& FACTURAS) {
    return !BD.Consulta(abertas("Artigo", Artigo, FACTURAS))->fim();
}

} // namespace orvex::livro
