#include "delivery/guias_remessa.h"

namespace orvex::delivery {

using base::Variante;
using common::Campo;

namespace {

struct DescricaoCampo {
    int indice;
    const char* dica;
    const char* legenda;
    bool em_diversos;
};

constexpr int algarismos_numero = 10;

constexpr DescricaoCampo campos[] = {
    {0, "Cliente.", "Cliente", false},
    {1, "No.Documento.", "No.Doc", false},
    {2, "Gestor de Conta.", "Gestor Conta", true},
    {3, "Vendedor.", "Vendedor", true},
    {11, "Tipo de Máquina.", "", true},
    {19, "Contribuinte.", "Contribuinte", true},
    {22, "Processo", "Processo", true},
    {23, "Vosso Número.", "V/Número", true},
    {24, "Meio de Transporte.", "Meio Transporte", true},
    {25, "Matrícula.", "Matrícula", true},
    {26, "Local de Carga.", "Local Carga", true},
    {27, "Local de Descarga.", "Local Descarga", true},
};

std::string indexado(const char* nome, int indice) {
    return std::string(nome) + "(" + std::to_string(indice) + ")";
}

} // namespace

void GuiasRemessa::regista_controlos() {
    regista_rotulos();
    regista_campos();
    regista_botoes();
    regista_grelhas();
    foco().define_ordem({&campo(0),  &campo(1),   &DTPicker1, &cb1(0),    &SSTab1,       &Detalhe,
                         &Gr,        &campo(19),  &campo(2),  &campo(3),  &campo(22),    &campo(23),
                         &campo(24), &campo(25),  &campo(26), &campo(27), &DTPicker2(0), &DTPicker2(1),
                         &Final,     &DTPicker3,  &btGV(1),   &btGV(2),   &btConf(0),    &btConf(1),
                         &btGV(0),   &btCancelar, &btSair});
}

void GuiasRemessa::regista_rotulos() {
    regista(Label1, "Label1");
    Label1.Caption = "Guias de Remessa";
    for (const int i : {1, 3, 4, 6, 7})
        regista(Label2.cria(i), indexado("Label2", i));
    Label2(3).Caption = "Guia de Remessa";
    Label2(4).Caption = "Facturas";
    regista(Titulo, "Titulo");
    Titulo.Caption = "Observações";

    regista(SSTab1, "SSTab1");
    SSTab1.Captions = {"Movimentos", "Diversos"};
    regista(Frame3, "Frame3");
    Frame3.Caption = "Devolução";
    Frame3.Visible = false;
}

void GuiasRemessa::na_pagina(common::Controlo& controlo, int pagina) {
    controlo.dentro_de = &SSTab1;
    controlo.pagina = pagina;
}

void GuiasRemessa::regista_campos() {
    for (const DescricaoCampo& descricao : campos) {
        Campo& campo_ = campo.cria(descricao.indice);
        regista_campo(campo_, descricao.indice, descricao.dica, descricao.legenda);
        if (descricao.em_diversos) na_pagina(campo_, pagina_diversos);
    }
    campo(1).MaxLength = algarismos_numero;
    campo(11).Visible = false;

    regista_selector(DTPicker1, "DTPicker1", "Data.", "Data");
    regista_selector(DTPicker2.cria(0), "DTPicker2(0)", "Data/Hora de Carga.", "Data/Hora Carga");
    regista_selector(DTPicker2.cria(1), "DTPicker2(1)", "Data/Hora de Descarga.", "Data/Hora Descarga");
    for (const int i : {0, 1}) {
        DTPicker2(i).com_hora = true;
        na_pagina(DTPicker2(i), pagina_diversos);
    }
    regista_selector(DTPicker3, "DTPicker3", "Data da Devolução", "Data");
    DTPicker3.dentro_de = &Frame3;

    regista(cb1.cria(0), "cb1(0)");
    cb1(0).ToolTip = "Armazém.";
    cb1(0).Legenda = "Armazém";
    cb1(0).Change = [this](int anterior) { cb1_Change(anterior); };
}

// Each takes what every column it ends in takes: here it is a field to correct, in the ERP a note that is
// lost.
void GuiasRemessa::LimitaCampos() {
    campo(0).MaxLength =
        Comprimento({{"xel_ORVEX", "Cliente"}, {"xel_ORVEX_Mov", "Cliente"}, {"DocGcCab", "Terceiro"}});
    for (const int i : {2, 3})
        campo(i).MaxLength = Comprimento({{"DocGcCab", "Vendedor"}, {"Vendedor", "Codigo"}});
    const std::pair<int, const char*> de_cabecalho[] = {
        {19, "NumContrib"}, {22, "Processo"}, {23, "VossoNo"}, {24, "MeioTransp"}, {25, "Matricula"}};
    for (const auto& [i, coluna] : de_cabecalho)
        campo(i).MaxLength = Comprimento({{"DocGcCab", coluna}});
    for (const int i : {26, 27}) // on the way back they change places
        campo(i).MaxLength = Comprimento({{"DocGcCab", "LocalCarga"}, {"DocGcCab", "LocalDescarga"}});
}

int GuiasRemessa::ComprimentoDesignacao() {
    return Comprimento({{"DocGcLin", "Descr"}, {"xel_ORVEX_Mov", "Descritivo"}});
}

void GuiasRemessa::regista_botoes() {
    const char* const dicas_listas[] = {"Selecionar Cliente.", "Selecionar No.Documento.",
                                        "Acesso à lista de Gestores de Conta.",
                                        "Acesso à lista de Vendedores."};
    for (const int i : {0, 1, 2, 3}) {
        regista_botao(btFx.cria(i), indexado("btFx", i), "...", dicas_listas[i],
                      [this, i] { btFx_Click(i); });
        if (i >= 2) na_pagina(btFx(i), pagina_diversos);
    }
    regista_botao(btConf.cria(0), "btConf(0)", "&Confirmar", "Confirmar a operação.",
                  [this] { btConf_Click(0); });
    regista_botao(btConf.cria(1), "btConf(1)", "&Anular", "Anular", [this] { btConf_Click(1); });
    regista_botao(btGV.cria(0), "btGV(0)", "&Devolução", "Devoução.", [this] { btGV_Click(0); });
    regista_botao(btGV.cria(1), "btGV(1)", "&Devolução", "Confirma a Devolução.", [this] { btGV_Click(1); });
    regista_botao(btGV.cria(2), "btGV(2)", "&Cancelar", "Cancelar.", [this] { btGV_Click(2); });
    regista_botao(btCancelar, "btCancelar", "Ca&ncelar", "Cancelar as operações.",
                  [this] { btCancelar_Click(); });
    regista_botao(btSair, "btSair", "&Sair", "Abandonar a opção.", [this] { btSair_Click(); });
    btGV(1).dentro_de = btGV(2).dentro_de = &Frame3;
    Frame3.Cancela = &btGV(2);
}

void GuiasRemessa::regista_grelhas() {
    regista(Detalhe, "Detalhe");
    Detalhe.Legenda = Label2(4).Caption;
    na_pagina(Detalhe, pagina_movimentos);
    Detalhe.DblClick = [this] { Detalhe_DblClick(); };
    Detalhe.GotFocus = [this] { Detalhe_GotFocus(); };
    Detalhe.LostFocus = [this] { Detalhe_LostFocus(); };
    Detalhe.RowColChange = [this](int LastRow, int LastCol) { Detalhe_RowColChange(LastRow, LastCol); };

    regista(Gr, "Gr");
    Gr.Legenda = Label2(3).Caption;
    Gr.permite_apagar = true;
    na_pagina(Gr, pagina_movimentos);
    Gr.KeyDown = [this](int& KeyCode, int Shift) { Gr_KeyDown(KeyCode, Shift); };
    Gr.BeforeColUpdate = [this](int Row, int Col, const Variante& OldValue, bool& Cancel) {
        Gr_BeforeColUpdate(Row, Col, OldValue, Cancel);
    };
    Gr.BeforeDelete = [this](bool& Cancel) { Gr_BeforeDelete(Cancel); };
    Gr.AfterDelete = [this] { Gr_AfterDelete(); };

    regista(Final, "Final");
    Final.Legenda = "Devolução";
    Final.dentro_de = &Frame3;
    Final.BeforeColUpdate = [this](int Row, int Col, const Variante&, bool& Cancel) {
        Final_BeforeColUpdate(Row, Col, Cancel);
    };
}

} // namespace orvex::delivery
