#include "adjust/mov_stocks.h"

namespace orvex::adjust {

using base::DataHora;

MovStocks::MovStocks(common::ServicosEcra servicos, std::int16_t modo)
    : Ecra(std::move(servicos), "Documentos"), Modo(modo) {
    regista_controlos();
}

void MovStocks::regista_controlos() {
    regista(Label1, "Label1");
    Label1.Caption = "Sobras/Quebras";
    regista(Label2.cria(1), "Label2(1)");
    regista(Label2.cria(3), "Label2(3)");

    regista_campo(campo.cria(0), 0, "Artigo/Num.Série.", "Artigo/Num.Série");
    regista_campo(campo.cria(1), 1, "Existência.", "Existência");
    regista_campo(campo.cria(2), 2, "Processo.", "Processo");
    regista_campo(campo.cria(3), 3, "Nova Existência/Quantidade.", "");
    regista_campo(campo.cria(4), 4, "Observações", "Observações");
    regista_campo(campo.cria(5), 5, "No. Documento.", "Número Doc.");
    campo(1).numerico = campo(3).numerico = true;
    campo(5).Enabled = false;
    regista_selector(DTPicker1, "DTPicker1", "Data.", "Data");

    regista_botao(btFx.cria(0), "btFx(0)", "...", "Selecionar Artigo/Num.Série.", [this] { btFx_Click(0); });
    regista_botao(btFx.cria(5), "btFx(5)", "...", "Selecionar No.Documento.", [this] { btFx_Click(5); });
    regista_botao(btConf, "btConf", "&Confirmar", "Confrmar a operação.", [this] { btConf_Click(); });
    regista_botao(btCancelar, "btCancelar", "Ca&ncelar", "Cancelar as operações.",
                  [this] { btCancelar_Click(); });
    regista_botao(btAnular, "btAnular", "&Anular", "Anular.", [this] { btAnular_Click(); });
    regista_botao(btSair, "btSair", "&Sair", "Abandonar a opção.", [this] { Unload(); });

    foco().define_ordem({&campo(0), &campo(1), &DTPicker1, &campo(2), &campo(3), &campo(4), &btSair, &btConf,
                         &btCancelar, &btAnular, &campo(5)});
}

void MovStocks::Form_Load() {
    SOBRAS = parametros().lista("SOBRAS");
    QUEBRAS = parametros().lista("QUEBRAS");
    CONSUMOS = parametros().lista("CONSUMOS");
    ARMAZEM = parametros().lista("ARMAZEM");
    ARMAZEMORVEX = parametros().lista("ARMAZEMORVEX");
    CLIENTEORVEX = parametros().lista("CLIENTEORVEX");
    campo(0).MaxLength = Comprimento({{"xel_ORVEX", "NumSerie"}});
    campo(2).MaxLength = Comprimento({{"DocGcCab", "Processo"}});
    campo(4).MaxLength = Comprimento({{"xel_ORVEX", "Obs"}});
    limparform();
    switch (Modo) {
    case modos::sobras:
        Label1.Caption = "Sobras";
        break;
    case modos::quebras:
        Label1.Caption = "Quebras";
        break;
    case modos::consumos:
        Label1.Caption = "Consumos";
        break;
    default:
        break;
    }
}

void MovStocks::limparform() {
    for (auto& [indice, campo_] : campo)
        campo_.Text.clear();
    Label2(1).Caption.clear();
    campo(1).Enabled = true;
    campo(0).Enabled = true;
    nomeia_quantidade("Nova Existência");
    Detentor.clear();
    btAnular.Visible = false;
    if (Modo == modos::consumos) nomeia_quantidade("Quantidade");
    bCarregado = false;
    cQtdCarregada = {};
    btFx(0).Enabled = true;
    const DataHora hoje = agora();
    DTPicker1.Value = {hoje.ano, hoje.mes, hoje.dia};
    DTPicker1.Enabled = true;
}

void MovStocks::nomeia_quantidade(const char* nome) {
    Label2(3).Caption = nome;
    campo(3).Legenda = nome; // what a screen reader says
}

void MovStocks::btCancelar_Click() {
    limparform();
    SetFocus(campo(0));
}

TipoAjuste MovStocks::tipo_do_modo() const {
    return Modo == modos::sobras    ? TipoAjuste::sobra
           : Modo == modos::quebras ? TipoAjuste::quebra
                                    : TipoAjuste::consumo;
}

const startup::ListaParametros& MovStocks::chave_documento(TipoAjuste tipo) const {
    switch (tipo) {
    case TipoAjuste::sobra:
        return SOBRAS;
    case TipoAjuste::quebra:
        return QUEBRAS;
    default:
        return CONSUMOS;
    }
}

} // namespace orvex::adjust
