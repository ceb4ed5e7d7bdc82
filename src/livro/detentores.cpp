#include "livro/detentores.h"

#include "base/falha.h"
#include "base/texto.h"

namespace orvex::livro {
namespace {

std::optional<UltimoMovimento> le_ultimo(startup::SessaoBD& BD, const std::string& sql) {
    const auto ultimo = BD.Consulta(sql);
    if (ultimo->fim()) return std::nullopt;
    return UltimoMovimento{ultimo->valor("Registo").inteiro(), ultimo->valor("Cliente").texto(),
                           ultimo->valor("CliFinal").texto()};
}

void exige_colunas(startup::ConjuntoRegistos& registo) {
    for (const char* coluna : {"Cliente", "Data", "Quantidade", "Ano", "TpDoc", "Serie", "NNumDoc"})
        if (registo.valor(coluna).nulo())
            throw base::FalhaGuarda("O movimento está sem " + std::string(coluna) +
                                    " nos movimentos da ORVEX, e assim não pode ser substituído nem "
                                    "anulado. Peça a correcção desse movimento.");
}

std::optional<LinhaDetentor> le_movimento(startup::SessaoBD& BD, const std::string& sql) {
    const auto registo = BD.Consulta(sql);
    if (registo->fim()) return std::nullopt;
    exige_colunas(*registo);
    const base::Variante NumLin = registo->valor("NumLin");
    return LinhaDetentor{
        .NumSerie = registo->valor("NumSerie").texto(),
        .Cliente = registo->valor("Cliente").texto(),
        .Data = registo->valor("Data").data(),
        .Quantidade = registo->valor("Quantidade").moeda(),
        .Obs = registo->valor("Obs").texto(),
        .CliFinal = registo->valor("CliFinal").texto(),
        .Documento = {.Ano = static_cast<std::int16_t>(registo->valor("Ano").inteiro()),
                      .TipoDocumento = registo->valor("TpDoc").texto(),
                      .Serie = static_cast<std::int16_t>(registo->valor("Serie").inteiro()),
                      .NossoNoDocumento = static_cast<std::int32_t>(registo->valor("NNumDoc").inteiro())},
        .NumLin = NumLin.nulo() ? 0 : static_cast<std::int32_t>(NumLin.inteiro())};
}

} // namespace

void acrescenta_detentor(startup::SessaoBD& BD, const LinhaDetentor& linha) {
    const auto registo = BD.AbreActualizavel("Select * from xel_ORVEX where Ano=-1");
    registo->acrescenta();
    registo->define("NumSerie", linha.NumSerie);
    registo->define("Cliente", linha.Cliente);
    registo->define("Data", linha.Data);
    registo->define("Quantidade", linha.Quantidade);
    registo->define("Obs", linha.Obs);
    registo->define("Funcionario", "");
    registo->define("CliFinal", linha.CliFinal);
    registo->define("Preco", 0);
    registo->define("Ano", linha.Documento.Ano);
    registo->define("TpDoc", linha.Documento.TipoDocumento);
    registo->define("NNumDoc", linha.Documento.NossoNoDocumento);
    registo->define("Serie", linha.Documento.Serie);
    registo->define("NumLin", linha.NumLin);
    registo->actualiza();
}

std::string perguntas::ultimo_movimento(const std::string& NumSerie) {
    return "Select top 1 * from xel_ORVEX where NumSerie=" + base::entre_plicas(NumSerie) +
           " order by Registo desc";
}

std::string perguntas::ultimo_movimento_outra_vez(const std::string& NumSerie) {
    return "Select top 1 * from xel_ORVEX where Numserie=" + base::entre_plicas(NumSerie) +
           " order by Registo desc";
}

std::string perguntas::movimento(std::int32_t Registo) {
    return " Select * from xel_Orvex where Registo=" + std::to_string(Registo);
}

std::string perguntas::movimento_a_anular(std::int32_t Registo) {
    return "Select * from xel_Orvex where Registo=" + std::to_string(Registo);
}

std::optional<UltimoMovimento> ultimo_movimento(startup::SessaoBD& BD, const std::string& NumSerie) {
    return le_ultimo(BD, perguntas::ultimo_movimento(NumSerie));
}

std::optional<UltimoMovimento> ultimo_movimento_outra_vez(startup::SessaoBD& BD,
                                                          const std::string& NumSerie) {
    return le_ultimo(BD, perguntas::ultimo_movimento_outra_vez(NumSerie));
}

std::optional<LinhaDetentor> movimento(startup::SessaoBD& BD, std::int32_t Registo) {
    return le_movimento(BD, perguntas::movimento(Registo));
}

std::optional<LinhaDetentor> movimento_a_anular(startup::SessaoBD& BD, std::int32_t Registo) {
    return le_movimento(BD, perguntas::movimento_a_anular(Registo));
}

void apaga_movimento(startup::SessaoBD& BD, std::int32_t Registo) {
    BD.Executa("Delete xel_ORVEX where registo=" + std::to_string(Registo) + " ");
}

std::string lista_de_artigos_a_ajustar() {
    return "SELECT NUMSERIE AS Artigo, ARTIGOS.Nome AS Nome From xel_ORVEX INNER JOIN Artigos  ON "
           "ARTIGOS.CODIGO=xel_ORVEX.NUMSERIE  Group By NumSerie,Nome ORDER BY NUMSERIE";
}

std::string lista_de_artigos_a_transferir() {
    return "SELECT NUMSERIE AS Artigo, ARTIGOS.Nome AS Nome From xel_ORVEX INNER JOIN Artigos  ON "
           "ARTIGOS.CODIGO=xel_ORVEX.NUMSERIE Group By NumSerie,Nome ORDER BY NUMSERIE";
}

std::string lista_de_ajustes(const std::string& TpDoc, std::int16_t Serie) {
    return " SELECT     CONVERT(nvarchar(10), Data, 120) + '*' + CAST(NNumDoc AS nvarchar(10))+ '*' + "
           "CAST(Registo AS nvarchar(10)) AS teste, "
           " NNumDoc AS 'No.Doc.', Data,NumSerie as 'Artigo',Artigos.Nome as 'Designação Artigo',"
           "Abs(Quantidade) as Peso   From xel_ORVEX "
           " Inner join Artigos on Artigos.Codigo=xel_Orvex.Numserie "
           " WHERE     (TpDoc = " +
           base::entre_plicas(TpDoc) + ") AND (Serie = " + std::to_string(Serie) +
           ") and  nnumdoc>0 order by Data desc";
}

} // namespace orvex::livro
