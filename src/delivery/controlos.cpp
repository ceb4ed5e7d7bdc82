#include "delivery/guias_remessa.h"

namespace orvex::delivery {

using base::Variante;

namespace {

constexpr int algarismos_numero = 10;

} // namespace

void GuiasRemessa::regista_controlos() {
    regista_rotulos();
    regista_campos();
    regista_botoes();
    regista_grelhas();
    foco().define_ordem({&campo(campos::cliente),
                         &campo(campos::numero),
                         &DTPicker1,
                         &cb1(combos::armazem),
                         &SSTab1,
                         &Detalhe,
                         &Gr,
                         &campo(campos::contribuinte),
                         &campo(campos::gestor),
                         &campo(campos::vendedor),
                         &campo(campos::processo),
                         &campo(campos::vosso_numero),
                         &campo(campos::transporte),
                         &campo(campos::matricula),
                         &campo(campos::local_carga),
                         &campo(campos::local_descarga),
                         &DTPicker2(momentos::carga),
                         &DTPicker2(momentos::descarga),
                         &Final,
                         &DTPicker3,
                         &btGV(devolucoes::confirmar),
                         &btGV(devolucoes::desistir),
                         &btConf(confirmacoes::emitir),
                         &btConf(confirmacoes::anular),
                         &btGV(devolucoes::abrir),
                         &btCancelar,
                         &btSair});
}

void GuiasRemessa::regista_rotulos() {
    regista(Label1, "Label1");
    Label1.Caption = "Guias de Remessa";
    for (const int i :
         {rotulos::nome_cliente, rotulos::guia, rotulos::facturas, rotulos::designacao, rotulos::quantidade})
        regista(Label2, i);
    Label2(rotulos::guia).Caption = "Guia de Remessa";
    Label2(rotulos::facturas).Caption = "Facturas";
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
    regista(campo, {{campos::cliente, "Cliente.", "Cliente"},
                    {campos::numero, "No.Documento.", "No.Doc"},
                    {campos::gestor, "Gestor de Conta.", "Gestor Conta"},
                    {campos::vendedor, "Vendedor.", "Vendedor"},
                    {campos::maquina, "Tipo de Máquina.", ""},
                    {campos::contribuinte, "Contribuinte.", "Contribuinte"},
                    {campos::processo, "Processo", "Processo"},
                    {campos::vosso_numero, "Vosso Número.", "V/Número"},
                    {campos::transporte, "Meio de Transporte.", "Meio Transporte"},
                    {campos::matricula, "Matrícula.", "Matrícula"},
                    {campos::local_carga, "Local de Carga.", "Local Carga"},
                    {campos::local_descarga, "Local de Descarga.", "Local Descarga"}});
    for (auto& [indice, campo_] : campo)
        if (indice != campos::cliente && indice != campos::numero) na_pagina(campo_, pagina_diversos);
    campo(campos::cliente).codigo_de = common::CodigoDe::cliente;
    campo(campos::numero).MaxLength = algarismos_numero;
    campo(campos::maquina).Visible = false;

    regista_selector(DTPicker1, "DTPicker1", "Data.", "Data");
    const auto momento = [this](int Index, const char* ToolTip, const char* Legenda) {
        common::SelectorData& selector = DTPicker2.cria(Index);
        regista_selector(selector, DTPicker2.nome(Index), ToolTip, Legenda);
        selector.com_hora = true;
        na_pagina(selector, pagina_diversos);
    };
    momento(momentos::carga, "Data/Hora de Carga.", "Data/Hora Carga");
    momento(momentos::descarga, "Data/Hora de Descarga.", "Data/Hora Descarga");
    regista_selector(DTPicker3, "DTPicker3", "Data da Devolução", "Data");
    DTPicker3.dentro_de = &Frame3;

    common::Combo& armazem = regista(cb1, combos::armazem);
    armazem.ToolTip = "Armazém.";
    armazem.Legenda = "Armazém";
    armazem.Change = [this](int anterior) { cb1_Change(anterior); };
}

// Each takes what every column it ends in takes: here it is a field to correct, in the ERP a note that is
// lost.
void GuiasRemessa::LimitaCampos() {
    campo(campos::cliente).MaxLength =
        Comprimento({{"xel_ORVEX", "Cliente"}, {"xel_ORVEX_Mov", "Cliente"}, {"DocGcCab", "Terceiro"}});
    for (const int i : {campos::gestor, campos::vendedor})
        campo(i).MaxLength = Comprimento({{"DocGcCab", "Vendedor"}, {"Vendedor", "Codigo"}});
    const std::pair<int, const char*> de_cabecalho[] = {{campos::contribuinte, "NumContrib"},
                                                        {campos::processo, "Processo"},
                                                        {campos::vosso_numero, "VossoNo"},
                                                        {campos::transporte, "MeioTransp"},
                                                        {campos::matricula, "Matricula"}};
    for (const auto& [i, coluna] : de_cabecalho)
        campo(i).MaxLength = Comprimento({{"DocGcCab", coluna}});
    for (const int i : {campos::local_carga, campos::local_descarga}) // on the way back they change places
        campo(i).MaxLength = Comprimento({{"DocGcCab", "LocalCarga"}, {"DocGcCab", "LocalDescarga"}});
}

common::ColunaGrelha GuiasRemessa::coluna_artigo() {
    return {.chave = "Artigo",
            .legenda = "Artigo",
            .largura = 1500,
            .comprimento_maximo = 15,
            .recebe_foco = false};
}

common::ColunaGrelha GuiasRemessa::coluna_designacao(int largura) {
    return {.chave = "Nome",
            .legenda = "Designação",
            .largura = largura,
            .comprimento_maximo = Comprimento({{"DocGcLin", "Descr"}, {"xel_ORVEX_Mov", "Descritivo"}}),
            .so_leitura = false};
}

common::ColunaGrelha GuiasRemessa::coluna_escondida(const char* chave, const char* legenda,
                                                    common::TipoCelula tipo, int comprimento) {
    return {.chave = chave,
            .legenda = legenda,
            .tipo = tipo,
            .largura = 1200,
            .comprimento_maximo = comprimento,
            .oculta = true,
            .recebe_foco = false,
            .formato_peso = tipo == common::TipoCelula::decimal};
}

void GuiasRemessa::regista_botoes() {
    regista_lista(btFx, campos::cliente, "Selecionar Cliente.");
    regista_lista(btFx, campos::numero, "Selecionar No.Documento.");
    regista_lista(btFx, campos::gestor, "Acesso à lista de Gestores de Conta.");
    regista_lista(btFx, campos::vendedor, "Acesso à lista de Vendedores.");
    for (const int i : {campos::gestor, campos::vendedor})
        na_pagina(btFx(i), pagina_diversos);
    const auto confirma = [this](int Index, const char* Caption, const char* ToolTip) {
        regista_botao(btConf.cria(Index), btConf.nome(Index), Caption, ToolTip,
                      [this, Index] { btConf_Click(Index); });
    };
    confirma(confirmacoes::emitir, "&Confirmar", "Confirmar a operação.");
    confirma(confirmacoes::anular, "&Anular", "Anular");
    const auto devolve = [this](int Index, const char* Caption, const char* ToolTip) {
        regista_botao(btGV.cria(Index), btGV.nome(Index), Caption, ToolTip,
                      [this, Index] { btGV_Click(Index); });
    };
    devolve(devolucoes::abrir, "&Devolução", "Devoução.");
    devolve(devolucoes::confirmar, "&Devolução", "Confirma a Devolução.");
    devolve(devolucoes::desistir, "&Cancelar", "Cancelar.");
    regista_botao(
        btCancelar, "btCancelar", "Ca&ncelar", "Cancelar as operações.", [this] { btCancelar_Click(); },
        common::Botao::Papel::cancela);
    regista_botao(
        btSair, "btSair", "&Sair", "Abandonar a opção.", [this] { btSair_Click(); },
        common::Botao::Papel::sai);
    btGV(devolucoes::desistir).papel = common::Botao::Papel::cancela;
    btGV(devolucoes::confirmar).dentro_de = btGV(devolucoes::desistir).dentro_de = &Frame3;
    Frame3.Cancela = &btGV(devolucoes::desistir);
}

void GuiasRemessa::regista_grelhas() {
    regista(Detalhe, "Detalhe");
    Detalhe.Legenda = Label2(rotulos::facturas).Caption;
    na_pagina(Detalhe, pagina_movimentos);
    Detalhe.ordenavel = Detalhe.com_procura = true;
    Detalhe.DblClick = [this] { Detalhe_DblClick(); };
    Detalhe.GotFocus = [this] { Detalhe_GotFocus(); };
    Detalhe.LostFocus = [this] { Detalhe_LostFocus(); };
    Detalhe.RowColChange = [this](int LastRow, int LastCol) { Detalhe_RowColChange(LastRow, LastCol); };

    regista(Gr, "Gr");
    Gr.Legenda = Label2(rotulos::guia).Caption;
    Gr.permite_apagar = true;
    na_pagina(Gr, pagina_movimentos);
    Gr.KeyDown = [this](int& KeyCode, int Shift) { Gr_KeyDown(KeyCode, Shift); };
    Gr.BeforeColUpdate = [this](int Row, int Col, const Variante& OldValue, bool& Cancel) {
        Gr_BeforeColUpdate(Row, Col, OldValue, Cancel);
    };
    Gr.BeforeDelete = [this](bool& Cancel) { Gr_BeforeDelete(Cancel); };
    Gr.PodeApagar = [this] { return Gr_PodeApagar(); };
    Gr.AfterDelete = [this] { Gr_AfterDelete(); };

    regista(Final, "Final");
    Final.Legenda = "Linhas da guia";
    Final.dentro_de = &Frame3;
    Final.com_procura = true;
    Final.BeforeColUpdate = [this](int Row, int Col, const Variante&, bool& Cancel) {
        Final_BeforeColUpdate(Row, Col, Cancel);
    };
}

} // namespace orvex::delivery
