#include "adjust/mov_stocks.h"

#include "base/falha.h"
#include "base/texto.h"
#include "livro/artigos.h"
#include "livro/detentores.h"

#include <utility>

namespace orvex::adjust {

void MovStocks::btFx_Click(int Index) {
    if (Index == campos::documento) return EscolheAjuste();
    if (Index != campos::artigo) return SetFocus(campo(Index)); // no other field has a list
    preenche_da_lista(
        campo(campos::artigo),
        {BD.Ligacao(), "Artigos", livro::lista_de_artigos_a_ajustar(), 8000, {{1, 1500}, {2, 5000}}});
}

void MovStocks::EscolheAjuste() {
    const startup::ParametroDocumento& documento = documento_de(tipo_do_modo());
    constexpr const char* sufixos[] = {"", " Sobras", " Quebras", " Consumos Internos"};
    const std::string escolha =
        escolhe_da_lista({BD.Ligacao(),
                          std::string("Números Doc.") + sufixos[static_cast<int>(tipo_do_modo())],
                          livro::lista_de_ajustes(documento.TpDoc(), documento.Serie()),
                          9500,
                          {{1, 0, true}, {2, 800}, {3, 1200}, {4, 1400}, {5, 4000}, {6, 600}},
                          campo(campos::documento).Text});
    if (escolha.empty()) return;

    const std::vector<std::string> partes = base::divide(escolha, '*'); // the first is the date
    const std::string &numero = partes.at(1), &Registo = partes.at(2);
    const auto registo = static_cast<std::int32_t>(base::le_inteiro(Registo).value_or(0));
    const std::int32_t anterior = std::exchange(lRegisto, registo);
    try {
        LerMovimento();
    } catch (...) {
        lRegisto = anterior;
        throw;
    }
    campo(campos::documento).Text = numero;
    btAnular.Visible = true;
    nomeia_quantidade("Quantidade");
}

void MovStocks::LerMovimento() {
    const auto registo = livro::movimento(BD, lRegisto);
    if (!registo) return;
    const std::string& artigo = registo->NumSerie;
    const std::string armazem = ArmazemDe(registo->Cliente);
    const base::Moeda quantidade = registo->Quantidade.absoluta();
    base::DataHora data = registo->Data;
    std::string processo;

    const startup::ChaveDocumento& documento = registo->Documento;
    const std::string do_cabecalho = " Select * from DocGcCab where Ano=" + std::to_string(documento.Ano) +
                                     " and TpDoc=" + base::entre_plicas(documento.TipoDocumento) +
                                     " and NNumdoc= " + std::to_string(documento.NossoNoDocumento) +
                                     "and Serie =" + std::to_string(documento.Serie);
    std::optional<base::Variante> existencia;
    BD.EmPasso({do_cabecalho, livro::perguntas::existencia(artigo, armazem)}, [&] {
        const auto cabecalho = BD.Consulta(do_cabecalho);
        if (!cabecalho->fim()) {
            processo = cabecalho->valor("Processo").texto();
            if (const auto do_erp = cabecalho->valor("Data"); !do_erp.nulo()) data = do_erp.data();
        }
        existencia = livro::existencia(BD, artigo, armazem);
    });
    Carregado = *registo;

    if (campo(campos::artigo).Text != artigo)
        Label2(rotulos::nome_artigo).Caption.clear(); // the name of another item
    ArmazemActual = armazem;
    campo(campos::artigo).Text = artigo;
    campo(campos::artigo).Enabled = false;
    btFx(campos::artigo).Enabled = false;
    cQtdCarregada = quantidade;
    campo(campos::quantidade).Text = formato().texto(quantidade);
    campo(campos::observacoes).Text = registo->Obs;
    campo(campos::processo).Text = processo;
    DTPicker1.Value = {data.ano, data.mes, data.dia};
    DTPicker1.Enabled = false;
    campo(campos::existencia).Text = existencia ? formato().texto(*existencia) : "0";
    campo(campos::existencia).Enabled = false;
    SetFocus(campo(campos::processo));
    bCarregado = true;
}

} // namespace orvex::adjust
