#include "delivery/guias_remessa.h"

#include "base/texto.h"

#include <algorithm>
#include <limits>

namespace orvex::delivery {

using base::DataHora;
using base::Variante;

namespace {

// A date the ERP gives as a date or as text.
std::string data_em_texto(const Variante& valor) {
    if (const auto* data = std::get_if<DataHora>(&valor.valor())) return data->data();
    return valor.texto();
}

} // namespace

void ValidaNIF(const std::string& NIF, ResultadoNIF& ok) {
    constexpr int pesos[] = {9, 8, 7, 6, 5, 4, 3, 2};
    ok = NIF.empty() ? ResultadoNIF::vazio : ResultadoNIF::invalido;
    if (NIF.size() != 9 || !std::all_of(NIF.begin(), NIF.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return;
    int soma = 0;
    for (std::size_t i = 0; i < 8; ++i)
        soma += (NIF[i] - '0') * pesos[i];
    const int resto = soma % 11;
    const int controlo = resto < 2 ? 0 : 11 - resto;
    if (NIF[8] - '0' == controlo) ok = ResultadoNIF::valido;
}

void GuiasRemessa::campo_Validate(int Index, bool& Cancel) {
    if (!bDigitado) return;
    switch (Index) {
    case campos::cliente:
        ValidaCliente(Cancel);
        break;
    case campos::numero:
        ValidaNumero(Cancel);
        break;
    case campos::gestor:
    case campos::vendedor:
        ValidaVendedor(Index, Cancel);
        break;
    case campos::contribuinte:
        ValidaContribuinte(Cancel);
        break;
    default:
        break;
    }
    // Only here: a validation that failed half-way must run again when the field is left again.
    bDigitado = false;
}

void GuiasRemessa::LimpaDadosCliente() {
    if (!GuiaCarregada()) MudaEstado(EstadoGuia::vazia);
    Label2(rotulos::nome_cliente).Caption.clear();
    for (const int i : {campos::contribuinte, campos::gestor, campos::vendedor})
        campo(i).Text.clear();
}

void GuiasRemessa::ValidaCliente(bool& Cancel) {
    if (LeCliente(Cancel)) CarregaFacturas(campo(campos::cliente).Text);
}

bool GuiasRemessa::LeCliente(bool& Cancel) {
    if (campo(campos::cliente).Text.empty()) {
        LimpaDadosCliente();
        return false;
    }
    std::string RegIva;
    {
        const auto cliente =
            BD.Consulta("SELECT * FROM Clientes  where Clientes.CODIGO=" +
                        base::entre_plicas(campo(campos::cliente).Text) + " and Clientes.Inactivo<>-1 ");
        if (cliente->fim()) {
            Cancel = !recusa("Cliente não existente!", campo(campos::cliente));
            LimpaDadosCliente();
            return false;
        }
        campo(campos::cliente).Text =
            cliente->valor("CODIGO").texto(); // as the ERP writes it, whatever case was typed
        Label2(rotulos::nome_cliente).Caption = cliente->valor("Nome").texto();
        campo(campos::contribuinte).Text = cliente->valor("NContrib").texto();
        campo(campos::gestor).Text = cliente->valor("GesCnt").texto();
        campo(campos::vendedor).Text = cliente->valor("Vendedor").texto();
        RegIva = cliente->valor("RegIva").texto();
    }
    if (!GuiaCarregada()) MudaEstado(EstadoGuia::a_fazer);
    LerIvas(RegIva);
    return true;
}

void GuiasRemessa::LerIvas(const std::string& Reg) {
    const auto regime = BD.Consulta("SELECT *  FROM  RGIVA  where RgIva.Codigo=" + base::entre_plicas(Reg));
    MercadoCliente = regime->fim() || regime->valor("Mercado").nulo()
                         ? std::int16_t{0}
                         : static_cast<std::int16_t>(regime->valor("Mercado").inteiro());
}

void GuiasRemessa::ValidaNumero(bool& Cancel) {
    const auto desiste = [&] {
        Cancel = true;
        SetFocus(campo(campos::numero));
        LibertaDocumento();
        limparform();
    };

    if (campo(campos::numero).Text.empty()) campo(campos::numero).Text = "0";
    const auto numero = base::le_inteiro(campo(campos::numero).Text);
    if (!numero || *numero < 0 || *numero > std::numeric_limits<std::int32_t>::max()) {
        Cancel = !recusa("Valor inválido!", campo(campos::numero));
        return;
    }

    PoeDeLado();
    if (Estado != EstadoGuia::vazia) MudaEstado(EstadoGuia::a_fazer); // the client stays, if there is one
    Act_Gr();
    Act_Detalhe();
    define_estado({});

    bool bErro = false;
    const auto iAno = static_cast<std::int16_t>(DTPicker1.Value.ano);
    const auto lNumDoc = static_cast<std::int32_t>(*numero);
    if (!Load(iAno, GUIASREMESSA.Serie(), lNumDoc, GUIASREMESSA.TpDoc(), bErro) || bErro) return desiste();
    if (DocActual->obtem("Cab").objecto->obtem("convertido").valor.inteiro() == base::verdadeiro) {
        Avisa("", "Guia Remessa já Convertida!", aviso_informacao);
        return desiste();
    }

    MostraCabecalho();
    campo(campos::numero).Text = std::to_string(lNumDoc);
    SSTab1.Tab = pagina_movimentos;
    SetFocus(SSTab1);
    NumGuia = lNumDoc;
    ++Carregamentos;
    Ler({static_cast<std::int16_t>(DTPicker1.Value.ano), GUIASREMESSA.TpDoc(), GUIASREMESSA.Serie(),
         lNumDoc});
    bDigitado = false;

    const bool anulado = DocActual->obtem("Cab").objecto->obtem("NumeroViasemitidas").valor.inteiro() ==
                         startup::documento_anulado;
    if (anulado) Avisa("", "Documento Anulado!", aviso_informacao);
    MudaEstado(anulado ? EstadoGuia::anulada : EstadoGuia::carregada);
}

void GuiasRemessa::MostraCabecalho() {
    const startup::ReferenciaERP Cab = DocActual->obtem("Cab").objecto;
    const auto membro = [&Cab](const char* nome) { return Cab->obtem(nome).valor; };

    if (const auto data = DataHora::le(data_em_texto(membro("Data")))) DTPicker1.Value = *data;
    const std::string Terceiro = membro("Terceiro").texto();
    if (Terceiro !=
        campo(campos::cliente).Text) { // what is shown of another client does not belong to this note
        Label2(rotulos::nome_cliente).Caption.clear();
        campo(campos::gestor).Text.clear();
    }
    campo(campos::cliente).Text = Terceiro;
    campo(campos::vosso_numero).Text = membro("VossoNoDocumento").texto();
    campo(campos::contribuinte).Text = membro("NumeroContribuinte").texto();
    campo(campos::processo).Text = membro("Processo").texto();
    campo(campos::vendedor).Text = membro("Vendedor").texto();
    campo(campos::matricula).Text = membro("Matricula").texto();
    campo(campos::local_carga).Text = membro("LocalCarga").texto();
    campo(campos::local_descarga).Text = membro("LocalDescarga").texto();

    const auto mostra_momento = [&](int indice, const char* data, const char* hora) {
        const std::string texto = data_em_texto(membro(data)) + " " + membro(hora).texto();
        if (const auto momento = DataHora::le(base::apara(texto))) DTPicker2(indice).Value = *momento;
    };
    mostra_momento(momentos::carga, "DataCarga", "HoraCarga");
    mostra_momento(momentos::descarga, "DataDescarga", "HoraDescarga");
    LerIvas(membro("RegimeIva").texto());
}

void GuiasRemessa::ValidaVendedor(int Index, bool& Cancel) {
    const std::string valor = campo(Index).Text;
    if (base::apara(valor).empty()) return;
    const auto vendedor = BD.Consulta(" SELECT     VENDEDOR.CODIGO, VENDEDOR.NOME FROM VENDEDOR WHERE      "
                                      "Vendedor.Codigo=" +
                                      base::entre_plicas(valor) + " ");
    if (!vendedor->fim()) {
        campo(Index).Text = vendedor->valor("CODIGO").texto(); // as the ERP writes it
        return;
    }
    Cancel = !recusa("Vendedor inexistente/interdito!", campo(Index));
}

void GuiasRemessa::ValidaContribuinte(bool& Cancel) {
    common::Campo& contribuinte = campo(campos::contribuinte);
    if (base::apara(contribuinte.Text).empty()) {
        Cancel = !recusa("Campo obrigatório!", contribuinte);
        return;
    }
    ResultadoNIF ok = ResultadoNIF::invalido;
    if (MercadoCliente == mercado_nacional) ValidaNIF(contribuinte.Text, ok);
    if (ok == ResultadoNIF::valido) return;
    if (Avisa("", "Número Contribuinte inválido!", aviso_ok_cancelar) == common::resposta_ok) return;
    SetFocus(contribuinte);
    Cancel = true;
}

void GuiasRemessa::btFx_Click(int Index) {
    if (Index == campos::cliente) {
        preenche_da_lista(campo(campos::cliente),
                          {BD.Ligacao(),
                           "Clientes",
                           "SELECT Codigo AS Cliente, Nome AS Nome From Clientes  ORDER BY Codigo",
                           8000,
                           {{1, 1500}, {2, 5000}}});
        return;
    }
    SetFocus(campo(Index));
    if (Index == campos::numero) EscolheGuia();
    if (Index == campos::gestor || Index == campos::vendedor)
        preenche_da_lista(campo(Index),
                          {BD.Ligacao(),
                           "Vendedores",
                           " SELECT     VENDEDOR.CODIGO, VENDEDOR.NOME FROM Vendedor order by Nome",
                           4500,
                           {{1, 1000}, {2, 3000}}});
}

void GuiasRemessa::EscolheGuia() {
    std::string sql =
        " SELECT (convert(nvarchar(19),docgccab.data,120)+'*'+cast(DocGcCab.NNumDoc as nvarchar(10))+'*'+"
        "cast(DocGcCab.Terceiro as nvarchar(15))) as Teste,DocGcCab.Data as 'Data Doc.', DocGcCab.NNumdoc as "
        "'No. Doc.',DOCGCCAB.TERCEIRO AS Cliente, CLIENTES.NOME as 'Nome Cliente'"
        " FROM DOCGCCAB INNER JOIN"
        " CLIENTES ON CLIENTES.CODIGO = DOCGCCAB.TERCEIRO"
        " WHERE     (DOCGCCAB.NVIAS <> - 1) AND (DOCGCCAB.TPTERC = 2) AND (DOCGCCAB.TPDOC = " +
        base::entre_plicas(GUIASREMESSA.TpDoc()) +
        ") AND (DOCGCCAB.SERIE = " + base::entre_plicas(GUIASREMESSA.SerieEscrita()) +
        ")  and Ano=" + std::to_string(DTPicker1.Value.ano) + " and [Convert]<>-1";
    if (!campo(campos::cliente).Text.empty())
        sql += " and DOCGCCAB.Terceiro=" + base::entre_plicas(campo(campos::cliente).Text);
    sql += " ORDER BY DocGcCab.Data,serie,nnumdoc";

    const std::string escolha =
        escolhe_da_lista({BD.Ligacao(),
                          "Guias de Remessa",
                          sql,
                          8400,
                          {{1, 0, true}, {2, 1200}, {3, 1000}, {4, 1200}, {5, 4500}},
                          campo(campos::numero).Text == "0" ? "" : campo(campos::numero).Text});
    if (escolha.empty()) return;

    const std::vector<std::string> partes = base::divide(escolha, '*');
    const std::string &momento = partes.at(0), &numero = partes.at(1), &cliente = partes.at(2);
    if (const auto data = DataHora::le(momento.substr(0, 10))) DTPicker1.Value = *data;
    // The client first, then the note; each as if typed.
    const auto preenche = [this](int Index, const std::string& valor) {
        campo(Index).Text = valor;
        SetFocus(campo(Index));
        bDigitado = true;
        xelSendkeys("{TAB}");
        bool Cancel = false;
        campo_Validate(Index, Cancel);
    };
    preenche(campos::cliente, cliente);
    preenche(campos::numero, numero);
}

} // namespace orvex::delivery
