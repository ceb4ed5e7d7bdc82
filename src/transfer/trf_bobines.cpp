#include "transfer/trf_bobines.h"

#include "base/texto.h"
#include "livro/artigos.h"
#include "livro/detentores.h"
#include "livro/linhas_abertas.h"

#include <algorithm>

namespace orvex::transfer {

namespace {

constexpr int comprimento_observ = 35; // of the article's note, at most

} // namespace

TrfBobines::TrfBobines(common::ServicosEcra servicos, std::int16_t modo)
    : Ecra(std::move(servicos), "Transferências"), Modo(modo) {
    regista_controlos();
}

void TrfBobines::regista_controlos() {
    regista(Label1, "Label1");
    for (const int i : {2, 3, 4})
        regista(Label2.cria(i), "Label2(" + std::to_string(i) + ")");

    regista_campo(campo.cria(0), 0, "Artigo/Num.Série.", "Artigo/Num.Série");
    regista_campo(campo.cria(1), 1, "Cliente.", "Cliente");
    regista_campo(campo.cria(2), 2, "Cliente destino.", "Novo Cliente");
    regista_campo(campo.cria(3), 3, "Cliente destino.", "");
    regista_campo(campo.cria(4), 4, "Observações", "Obs (Entrada)");
    regista_campo(campo.cria(5), 5, "Observações", "Obs (Saída)");
    campo(1).so_leitura = true; // set by the program alone; takes the focus, so that Esc in it closes
    campo(3).Visible = false;
    regista_selector(DTPicker1, "DTPicker1", "Data.", "Data");
    DTPicker1.com_hora = true;

    regista_botao(btFx.cria(0), "btFx(0)", "...", "Lista de Equipamentos.", [this] { btFx_Click(0); });
    regista_botao(btFx.cria(2), "btFx(2)", "...", "Lista de Equipamentos.", [this] { btFx_Click(2); });
    regista_botao(btConf, "btConf", "&Confirmar", "Confirmar a operação.", [this] { btConf_Click(); });
    regista_botao(btCancelar, "btCancelar", "C&ancelar", "Cancelar a operação.",
                  [this] { btCancelar_Click(); });
    regista_botao(btSair, "btSair", "&Sair", "Abandonar a opção.", [this] { Unload(); });

    foco().define_ordem(
        {&campo(0), &campo(1), &campo(2), &DTPicker1, &campo(4), &campo(5), &btConf, &btCancelar, &btSair});
}

void TrfBobines::Form_Load() {
    SOBRAS = parametros().lista("SOBRAS");
    QUEBRAS = parametros().lista("QUEBRAS");
    CONSUMOS = parametros().lista("CONSUMOS");
    TRF = parametros().lista("TRF");
    FACTURAS = parametros().lista_de_grupos("FACTURAS");
    ARMAZEM = parametros().lista("ARMAZEM");
    ARMAZEMORVEX = parametros().lista("ARMAZEMORVEX");
    CLIENTEORVEX = parametros().lista("CLIENTEORVEX");
    campo(0).MaxLength = Comprimento({{"xel_ORVEX", "NumSerie"}});
    campo(2).MaxLength = Comprimento({{"xel_ORVEX", "Cliente"}, {"xel_ORVEX", "CliFinal"}});
    for (const int i : {4, 5})
        campo(i).MaxLength = Comprimento({{"xel_ORVEX", "Obs"}});
    const int da_coluna = Comprimento({{"Artigos", "Observ"}});
    ComprimentoObserv = da_coluna > 0 ? std::min(da_coluna, comprimento_observ) : comprimento_observ;
    limparform();
    Label1.Caption = Modo == modos::para_orvex ? "Transferência para ORVEX" : "Transferência para Cliente";
}

void TrfBobines::limparform() {
    for (const int i : {0, 1, 2, 4, 5})
        campo(i).Text.clear();
    for (const int i : {2, 3, 4})
        Label2(i).Caption.clear();
    if (Modo == modos::para_orvex)
        for (common::Controlo* controlo :
             std::initializer_list<common::Controlo*>{&campo(2), &Label2(4), &btFx(2)})
            controlo->Visible = false;
    DTPicker1.Value = agora();
    Aceites = {};
    DetentorNoERP.clear();
}

void TrfBobines::btCancelar_Click() {
    limparform();
    SetFocus(campo(0));
}

void TrfBobines::btFx_Click(int Index) {
    if (Index == 0)
        return preenche_da_lista(
            campo(0),
            {BD.Ligacao(), "Artigos", livro::lista_de_artigos_a_transferir(), 8000, {{1, 1500}, {2, 5000}}});
    if (Index == 2)
        return preenche_da_lista(campo(2), {BD.Ligacao(),
                                            "Clientes",
                                            "SELECT Codigo AS Cliente, Nome AS Nome From Clientes where  "
                                            "Clientes.Inactivo<>-1 ORDER BY Codigo",
                                            8000,
                                            {{1, 1500}, {2, 5000}}});
    SetFocus(campo(Index));
}

void TrfBobines::falha_sem_tratamento(const std::exception& falha) {
    Ecra::falha_sem_tratamento(falha);
    if (dynamic_cast<const startup::FalhaParametro*>(&falha) == nullptr) Unload();
}

void TrfBobines::campo_Validate(int Index, bool& Cancel) {
    if (!bDigitado) return;
    if (Index == 0) Cancel = !ValidaArtigo();
    if (Index == 2) Cancel = !ValidaDestino();
    bDigitado = false;
}

void TrfBobines::LimpaDestino() {
    Aceites.Destino.clear();
    Label2(4).Caption.clear();
    for (const int i : {2, 5, 4})
        campo(i).Text.clear();
}

void TrfBobines::LimpaArtigo() {
    for (const int i : {2, 3, 4})
        Label2(i).Caption.clear();
    for (const int i : {1, 2, 5, 4})
        campo(i).Text.clear();
}

bool TrfBobines::ValidaArtigo() {
    Aceites.Artigo.clear();
    if (!Aceites.Destino.empty()) LimpaDestino(); // it was accepted for the item before
    if (campo(0).Text.empty()) {
        LimpaArtigo();
        return true;
    }
    if (!ValidaDetentor()) {
        LimpaArtigo();
        SetFocus(campo(0));
        return false;
    }
    if (!ValidaStock()) return false;
    Aceites.Artigo = campo(0).Text;
    return true;
}

bool TrfBobines::ValidaDetentor() {
    const auto recusa = [this](const char* aviso) {
        Avisa("", aviso, aviso_informacao);
        return false;
    };
    const auto ultimo = livro::ultimo_movimento(BD, campo(0).Text);
    if (!ultimo) return recusa("Artigo não existente!");
    Detentor = ultimo->Cliente;
    Aceites.Registo = ultimo->Registo;
    const bool na_orvex = Detentor == CLIENTEORVEX[0];
    ArmazemActual = na_orvex ? ARMAZEMORVEX[0] : ARMAZEM[0];
    if (na_orvex)
        return recusa(Modo == modos::para_orvex ? "Este Artigo/Num.Série já pertence à ORVEX!"
                                                : "Este Artigo/Num.Série pertence à ORVEX!");
    return !TemGuiasPorGerar() || recusa(guias_por_gerar);
}

bool TrfBobines::TemGuiasPorGerar() { return livro::tem_linhas_abertas(BD, campo(0).Text, FACTURAS); }

std::optional<base::Moeda> TrfBobines::Existencia() {
    const auto stock = livro::existencia(BD, campo(0).Text, ArmazemActual);
    if (!stock) return std::nullopt;
    return stock->nulo() ? base::Moeda() : stock->moeda();
}

bool TrfBobines::ValidaStock() {
    const std::string artigo = campo(0).Text;
    std::string nome;
    {
        const auto ficha =
            BD.Consulta("SELECT * FROM Artigos  where Artigos.CODIGO=" + base::entre_plicas(artigo) +
                        " and Artigos.Inactivo<>-1 ");
        if (ficha->fim()) {
            Avisa("", "Artigo não existente!", aviso_informacao);
            Label2(2).Caption.clear();
            SetFocus(campo(0));
            return false;
        }
        nome = ficha->valor("Nome").texto();
        campo(0).Text = ficha->valor("CODIGO").texto(); // as the ERP writes it, whatever case was typed
    }
    const std::optional<base::Moeda> existencia = Existencia();
    if (!existencia) {
        Avisa("", "Este Artigo não tem Existência!", aviso_informacao);
        return false;
    }
    Quantidade = *existencia;
    Label2(2).Caption = nome + " (" + formato().texto(Quantidade) + ")";
    const auto entrada = livro::ultimo_movimento_outra_vez(BD, artigo);
    if (!entrada) {
        Avisa("", "Este Artigo não tem Entrada!", aviso_informacao);
        return false;
    }
    campo(1).Text = entrada->CliFinal;
    Detentor = entrada->Cliente;
    const auto cliente =
        BD.Consulta("Select * from Clientes where Codigo=" + base::entre_plicas(campo(1).Text) + " ");
    Label2(3).Caption = cliente->fim() ? "" : cliente->valor("Nome").texto();
    DetentorNoERP = cliente->fim() ? "" : cliente->valor("CODIGO").texto();
    if (Modo == modos::para_orvex) {
        campo(5).Text = "Mov.Saida - Aquisição pela Orvex do Cliente " + campo(1).Text;
        campo(4).Text = "Mov.Entrada - Aquisição pela Orvex do Cliente " + campo(1).Text;
    } else {
        SetFocus(campo(2));
    }
    return true;
}

bool TrfBobines::ValidaDestino() {
    const std::string& c = campo(2).Text;
    Aceites.Destino.clear();
    if (c.empty()) {
        Label2(4).Caption.clear();
        Avisa("", "Campo obrigatório!", aviso_informacao);
        return false;
    }
    const auto recusa = [this](const char* aviso) {
        Avisa("", aviso, aviso_informacao);
        SetFocus(campo(2));
        Label2(4).Caption.clear();
        campo(5).Text.clear();
        campo(4).Text.clear();
        return false;
    };
    const auto compara = [&]() -> const char* {
        if (c == CLIENTEORVEX[0]) return "Impossível.Cliente destino selecionado é a ORVEX!";
        if (c == campo(1).Text || (!c.empty() && c == DetentorNoERP))
            return "Impossível.Cliente destino selecionado é o mesmo!";
        return nullptr;
    };
    if (const char* aviso = compara()) return recusa(aviso);
    const auto cliente =
        BD.Consulta("SELECT * FROM Clientes  where Clientes.CODIGO=" + base::entre_plicas(c) +
                    " and Clientes.Inactivo<>-1 ");
    if (cliente->fim()) return recusa("Cliente não existente!");
    // Found whatever case was typed; compared to the letter as the ERP writes it.
    campo(2).Text = cliente->valor("CODIGO").texto();
    if (const char* aviso = compara()) return recusa(aviso);
    Label2(4).Caption = cliente->valor("Nome").texto();
    campo(5).Text = "Mov.Saida - Transferência para Cliente " + c;
    campo(4).Text = "Mov.Entrada - Transferência do Cliente " + campo(1).Text;
    Aceites.Destino = c;
    return true;
}

} // namespace orvex::transfer
