#include "adjust/mov_stocks.h"

#include "base/falha.h"
#include "base/texto.h"

#include <utility>

namespace orvex::adjust {

void MovStocks::btFx_Click(int Index) {
    if (Index == 5) return EscolheAjuste();
    if (Index != 0) return SetFocus(campo(Index)); // no other field has a list
    preenche_da_lista(
        campo(0), {BD.Ligacao(),
                   "Artigos",
                   "SELECT NUMSERIE AS Artigo, ARTIGOS.Nome AS Nome From xel_ORVEX INNER JOIN Artigos  ON "
                   "ARTIGOS.CODIGO=xel_ORVEX.NUMSERIE  Group By NumSerie,Nome ORDER BY NUMSERIE",
                   8000,
                   {{1, 1500}, {2, 5000}}});
}

void MovStocks::EscolheAjuste() {
    const startup::ListaParametros& chave = chave_documento(especie_do_modo());
    constexpr const char* sufixos[] = {"", " Sobras", " Quebras", " Consumos Internos"};
    const std::string escolha = escolhe_da_lista(
        {BD.Ligacao(),
         std::string("Números Doc.") + sufixos[static_cast<int>(especie_do_modo())],
         " SELECT     CONVERT(nvarchar(10), Data, 120) + '*' + CAST(NNumDoc AS nvarchar(10))+ '*' + "
         "CAST(Registo AS nvarchar(10)) AS teste, "
         " NNumDoc AS 'No.Doc.', Data,NumSerie as 'Artigo',Artigos.Nome as 'Designação Artigo',"
         "Abs(Quantidade) as Peso   From xel_ORVEX "
         " Inner join Artigos on Artigos.Codigo=xel_Orvex.Numserie "
         " WHERE     (TpDoc = " +
             base::entre_plicas(chave[0]) + ") AND (Serie = " + std::to_string(chave.serie(1)) +
             ") and  nnumdoc>0 order by Data desc",
         9500,
         {{1, 0, true}, {2, 800}, {3, 1200}, {4, 1400}, {5, 4000}, {6, 600}}});
    if (escolha.empty()) return;

    const std::vector<std::string> partes = base::divide(escolha, '*'); // date, number, Registo
    const auto registo = static_cast<std::int32_t>(base::le_inteiro(partes.at(2)).value_or(0));
    const std::int32_t anterior = std::exchange(lRegisto, registo);
    try {
        LerMovimento();
    } catch (...) {
        lRegisto = anterior;
        throw;
    }
    campo(5).Text = partes.at(1);
    btAnular.Visible = true;
    nomeia_quantidade("Quantidade");
}

void MovStocks::ExigeColunas(startup::ConjuntoRegistos& registo) {
    for (const char* coluna : {"Cliente", "Data", "Quantidade", "Ano", "TpDoc", "Serie", "NNumDoc"})
        if (registo.valor(coluna).nulo())
            throw base::FalhaGuarda("O movimento está sem " + std::string(coluna) +
                                    " nos movimentos da ORVEX, e assim não pode ser substituído nem "
                                    "anulado. Peça a correcção desse movimento.");
}

void MovStocks::LerMovimento() {
    const auto registo = BD.Consulta(" Select * from xel_Orvex where Registo=" + std::to_string(lRegisto));
    if (registo->fim()) return;
    ExigeColunas(*registo);
    const std::string artigo = registo->valor("NumSerie").texto();
    const std::string armazem = ArmazemDe(registo->valor("Cliente").texto());
    const base::Moeda quantidade = registo->valor("Quantidade").moeda().absoluta();
    const std::string observacao = registo->valor("Obs").texto();
    base::DataHora data = registo->valor("Data").data();
    std::string processo;

    const auto cabecalho = BD.Consulta(" Select * from DocGcCab where Ano=" + registo->valor("Ano").texto() +
                                       " and TpDoc=" + base::entre_plicas(registo->valor("TpDoc").texto()) +
                                       " and NNumdoc= " + registo->valor("NNumDoc").texto() +
                                       "and Serie =" + registo->valor("Serie").texto());
    if (!cabecalho->fim()) {
        processo = cabecalho->valor("Processo").texto();
        if (const auto do_erp = cabecalho->valor("Data"); !do_erp.nulo()) data = do_erp.data();
    }
    const auto existencia = Existencia(artigo, armazem);
    DocCarregado = chave_do_registo(*registo);

    if (campo(0).Text != artigo) Label2(1).Caption.clear(); // the name of another item
    ArmazemActual = armazem;
    campo(0).Text = artigo;
    campo(0).Enabled = false;
    btFx(0).Enabled = false;
    cQtdCarregada = quantidade;
    campo(3).Text = formato().texto(quantidade);
    campo(4).Text = observacao;
    campo(2).Text = processo;
    DTPicker1.Value = {data.ano, data.mes, data.dia};
    DTPicker1.Enabled = false;
    campo(1).Text = existencia ? formato().texto(*existencia) : "0";
    campo(1).Enabled = false;
    SetFocus(campo(2));
    bCarregado = true;
}

} // namespace orvex::adjust
