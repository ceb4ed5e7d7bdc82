#include "delivery/guias_remessa.h"

#include "base/falha.h"
#include "base/texto.h"

#include <limits>

namespace orvex::delivery {

using base::Moeda;
using base::Variante;
using common::Campo;

namespace {

struct DescricaoCampo {
    int indice;
    const char* dica;
    const char* legenda;
    bool em_diversos;
    int comprimento; // of the column it is written to; 0 where none limits it
};

constexpr int comprimento_cliente = 15;
constexpr int comprimento_numero = 10;

constexpr DescricaoCampo campos[] = {
    {0, "Cliente.", "Cliente", false, comprimento_cliente},
    {1, "No.Documento.", "No.Doc", false, comprimento_numero},
    {2, "Gestor de Conta.", "Gestor Conta", true, 0},
    {3, "Vendedor.", "Vendedor", true, 0},
    {11, "Tipo de Máquina.", "", true, 0},
    {19, "Contribuinte.", "Contribuinte", true, 0},
    {22, "Processo", "Processo", true, 0},
    {23, "Vosso Número.", "V/Número", true, 0},
    {24, "Meio de Transporte.", "Meio Transporte", true, 0},
    {25, "Matrícula.", "Matrícula", true, 0},
    {26, "Local de Carga.", "Local Carga", true, 0},
    {27, "Local de Descarga.", "Local Descarga", true, 0},
};

constexpr int pagina_movimentos = 0;
constexpr int pagina_diversos = 1;

} // namespace

GuiasRemessa::GuiasRemessa(common::ServicosEcra servicos) : Ecra(std::move(servicos), "Guias Remessa") {
    liga_controlos();
}

void GuiasRemessa::liga_controlos() {
    const auto indexado = [](const char* nome, int indice) {
        return std::string(nome) + "(" + std::to_string(indice) + ")";
    };
    const auto na_pagina = [this](common::Controlo& controlo, int pagina) {
        controlo.dentro_de = &SSTab1;
        controlo.pagina = pagina;
    };

    regista(Label1, "Label1");
    Label1.Caption = "Guias de Remessa";
    for (const int i : {1, 3, 4, 6, 7})
        regista(Label2(i), indexado("Label2", i));
    Label2(3).Caption = "Guia de Remessa";
    Label2(4).Caption = "Facturas";
    regista(Titulo, "Titulo");
    Titulo.Caption = "Observações";

    for (const DescricaoCampo& descricao : campos) {
        Campo& campo_ = campo(descricao.indice);
        regista(campo_, indexado("campo", descricao.indice));
        campo_.Index = descricao.indice;
        campo_.ToolTip = descricao.dica;
        campo_.Legenda = descricao.legenda;
        campo_.MaxLength = descricao.comprimento;
        if (descricao.em_diversos) na_pagina(campo_, pagina_diversos);
    }
    campo(11).Visible = false;

    regista(DTPicker1, "DTPicker1");
    DTPicker1.ToolTip = "Data.";
    DTPicker1.Legenda = "Data";
    const char* const nomes_carga[] = {"Carga", "Descarga"};
    for (const int i : {0, 1}) {
        common::SelectorData& selector = DTPicker2(i);
        regista(selector, indexado("DTPicker2", i));
        selector.ToolTip = std::string("Data/Hora de ") + nomes_carga[i] + ".";
        selector.Legenda = std::string("Data/Hora ") + nomes_carga[i];
        selector.com_hora = true;
        na_pagina(selector, pagina_diversos);
    }
    regista(DTPicker3, "DTPicker3");
    DTPicker3.ToolTip = "Data da Devolução";
    DTPicker3.Legenda = "Data";
    DTPicker3.dentro_de = &Frame3;
    for (common::SelectorData* selector : {&DTPicker1, &DTPicker2(0), &DTPicker2(1), &DTPicker3})
        selector->KeyDown = [this](int& KeyCode, int) { tecla_data(KeyCode); };

    regista(cb1(0), "cb1(0)");
    cb1(0).ToolTip = "Armazém.";
    cb1(0).Legenda = "Armazém";

    const char* const dicas_listas[] = {"Selecionar Cliente.", "Selecionar No.Documento.",
                                        "Acesso à lista de Gestores de Conta.",
                                        "Acesso à lista de Vendedores."};
    for (const int i : {0, 1, 2, 3}) {
        regista(btFx(i), indexado("btFx", i));
        btFx(i).Caption = "...";
        btFx(i).ToolTip = dicas_listas[i];
        btFx(i).Click = [this, i] { btFx_Click(i); };
        if (i >= 2) na_pagina(btFx(i), pagina_diversos);
    }

    const auto botao = [this](common::Botao& alvo, const std::string& nome, const char* legenda,
                              const char* dica, std::function<void()> accao) {
        regista(alvo, nome);
        alvo.Caption = legenda;
        alvo.ToolTip = dica;
        alvo.Click = std::move(accao);
    };
    botao(btConf(0), "btConf(0)", "&Confirmar", "Confirmar a operação.", [this] { btConf_Click(0); });
    botao(btConf(1), "btConf(1)", "&Anular", "Anular", [this] { btConf_Click(1); });
    botao(btGV(0), "btGV(0)", "&Devolução", "Devoução.", [this] { btGV_Click(0); });
    botao(btGV(1), "btGV(1)", "&Devolução", "Confirma a Devolução.", [this] { btGV_Click(1); });
    botao(btGV(2), "btGV(2)", "&Cancelar", "Cancelar.", [this] { btGV_Click(2); });
    botao(btCancelar, "btCancelar", "Ca&ncelar", "Cancelar as operações.", [this] { btCancelar_Click(); });
    botao(btSair, "btSair", "&Sair", "Abandonar a opção.", [this] { btSair_Click(); });

    regista(SSTab1, "SSTab1");
    SSTab1.Captions = {"Movimentos", "Diversos"};
    regista(Frame3, "Frame3");
    Frame3.Caption = "Devolução";
    Frame3.Visible = false;
    btGV(1).dentro_de = btGV(2).dentro_de = Final.dentro_de = &Frame3;

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
    Final.BeforeColUpdate = [this](int Row, int Col, const Variante&, bool& Cancel) {
        Final_BeforeColUpdate(Row, Col, Cancel);
    };

    foco().define_ordem({&campo(0),  &campo(1),   &DTPicker1, &cb1(0),    &SSTab1,       &Detalhe,
                         &Gr,        &campo(19),  &campo(2),  &campo(3),  &campo(22),    &campo(23),
                         &campo(24), &campo(25),  &campo(26), &campo(27), &DTPicker2(0), &DTPicker2(1),
                         &Final,     &DTPicker3,  &btGV(1),   &btGV(2),   &btConf(0),    &btConf(1),
                         &btGV(0),   &btCancelar, &btSair});
}

void GuiasRemessa::Form_Load() {
    LeParametros();
    limparform();
}

void GuiasRemessa::LeParametros() {
    GUIADEVOLUCAO = parametros().lista("GUIADEVOLUCAO");
    GUIASREMESSA = parametros().lista("GUIASREMESSA");
    FACTURAS = parametros().lista_de_grupos("FACTURAS");
    ARMAZEM = parametros().lista("ARMAZEM");
    ARMAZEMORVEX = parametros().lista("ARMAZEMORVEX");
    CLIENTEORVEX = parametros().lista("CLIENTEORVEX");
    if (!FACTURAS.elementos.empty() && FACTURAS.elementos.back().empty()) FACTURAS.elementos.pop_back();

    // A screen that opened with a short list would fail later, in the middle of a note.
    std::string curtos;
    const auto exige = [&curtos](const startup::ListaParametros& lista, bool completa) {
        if (!completa) curtos += "\r\n" + lista.chave;
    };
    exige(GUIADEVOLUCAO, GUIADEVOLUCAO.elementos.size() >= 3);
    exige(GUIASREMESSA, GUIASREMESSA.elementos.size() >= 3);
    exige(FACTURAS, !FACTURAS.elementos.empty() && FACTURAS.elementos.size() % 3 == 0);
    exige(ARMAZEM, ARMAZEM.elementos.size() >= 2);
    exige(ARMAZEMORVEX, ARMAZEMORVEX.elementos.size() >= 2);
    exige(CLIENTEORVEX, !CLIENTEORVEX.elementos.empty());
    if (!curtos.empty())
        throw base::Falha("O ficheiro de parâmetros «" + std::string(startup::ficheiro_parametros) +
                              "» não tem, ou tem incompletos, os parâmetros:" + curtos,
                          base::numeros_falha::sem_elemento);

    // The series go into statements as numbers.
    GUIADEVOLUCAO.serie(1);
    GUIASREMESSA.serie(1);
    for (std::size_t i = 0; i < FACTURAS.elementos.size(); i += 3)
        FACTURAS.serie(i + 1);
}

void GuiasRemessa::limparform() {
    DocsCriados.clear();
    OutrosDocsLinha.assign(1, {});
    PesosLinha.assign(1, {});
    DTPicker1.Value = DTPicker2(0).Value = DTPicker2(1).Value = agora();
    for (const int i : {1, 6, 7})
        Label2(i).Caption.clear();
    cb1(0).itens = {ARMAZEMORVEX[1], ARMAZEM[1]};
    cb1(0).ListIndex = 0;
    btConf(0).Enabled = true;
    btGV(0).Enabled = false;
    btConf(1).Enabled = false;
    for (const DescricaoCampo& descricao : campos)
        campo(descricao.indice).Text.clear();
    UltimoErro.clear();
    UltimaLinha = -1;
    Act_Gr();
    Act_Detalhe();
    SSTab1.Tab = pagina_movimentos;
}

bool GuiasRemessa::Load(std::int16_t iAno, std::int16_t iSerie, std::int32_t lNumDoc,
                        const std::string& sTpDoc, bool& bErro) {
    bErro = false;
    LibertaDocumento();
    CriaCabecalhoGuia();
    if (DocActual->chama("Ler", {iAno, iSerie, lNumDoc, sTpDoc}).valor.inteiro() == 0) return true;
    if (lNumDoc != 0) {
        Avisa("", DocActual->chama("UltimaMensagem", {}).valor.texto(), 2);
        bErro = true;
    }
    return false;
}

bool GuiasRemessa::Ler(const startup::ChaveDocumento& utkeyDoc) {
    Gr.redesenha = false;
    try {
        const startup::ReferenciaERP Linhas = DocActual->obtem("Linhas").objecto;
        const std::int64_t total = Linhas->obtem("Count").valor.inteiro();
        for (std::int64_t i = 1; i <= total; ++i) {
            const startup::ReferenciaERP linha = Linhas->chama("Item", {i}).objecto;
            const int r = static_cast<int>(i - 1);
            Gr.garante_linha(r);
            Gr.define_valor(r, "Artigo", linha->obtem("Artigo").valor);
            Gr.define_valor(r, "Nome", linha->obtem("descricao").valor);
            Gr.define_valor(r, "Quant", linha->obtem("Quantidade").valor.moeda());
            Gr.define_valor(r, "NumLinha", linha->obtem("NumeroDaLinha").valor);
            if (ArmazemGuia.empty()) ArmazemGuia = linha->obtem("Armazem").valor.texto();

            const auto extensao =
                BD.Consulta("Select * from U_DocGcLin1 where Ano=" + std::to_string(utkeyDoc.Ano) +
                            " and NumLinha=" + Gr.texto(r, "NumLinha") +
                            "  and TpDocum=" + base::entre_plicas(utkeyDoc.TipoDocumento) +
                            " and Serie=" + std::to_string(utkeyDoc.Serie) +
                            "  and NNumdoc=" + std::to_string(utkeyDoc.NossoNoDocumento) + "  ");
            const Variante peso = extensao->fim() ? Variante() : extensao->valor("PesoBruto");
            Gr.define_valor(r, "PesoBruto", peso.nulo() ? Variante(Moeda()) : peso);
        }
    } catch (const std::exception&) {
        // The lines written so far stay on the screen; the note itself was read.
    }
    Gr.redesenha = true;
    cb1(0).ListIndex = ARMAZEM[0] != ArmazemGuia ? 0 : 1;
    return false;
}

void GuiasRemessa::Inibe() {
    for (common::Controlo* controlo : controlos())
        controlo->Enabled = false;
}

void GuiasRemessa::DesInibe() {
    for (common::Controlo* controlo : controlos())
        controlo->Enabled = true;
}

void GuiasRemessa::btCancelar_Click() {
    limparform();
    SetFocus(campo(0));
}

void GuiasRemessa::btSair_Click() { Unload(); }

void GuiasRemessa::Form_Terminate() {
    if (gERP.Empresa()) gERP.Desliga();
    BD.Fecha();
}

std::string GuiasRemessa::ArmazemEscolhido() const {
    return cb1(0).ListIndex == 0 ? ARMAZEMORVEX[0] : ARMAZEM[0];
}

std::int32_t GuiasRemessa::NumeroNoEcra() const {
    const auto numero = base::le_inteiro(campo(1).Text);
    if (!numero || *numero < 0 || *numero > std::numeric_limits<std::int32_t>::max())
        throw base::Falha("«" + campo(1).Text + "» não é um número de documento.",
                          base::numeros_falha::tipo_diferente);
    return static_cast<std::int32_t>(*numero);
}

} // namespace orvex::delivery
