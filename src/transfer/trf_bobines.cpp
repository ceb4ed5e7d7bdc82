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
    for (const int i : {rotulos::artigo, rotulos::detentor, rotulos::destino})
        regista(Label2, i);

    regista(campo, {{campos::artigo, "Artigo/Num.Série.", "Artigo/Num.Série"},
                    {campos::detentor, "Cliente.", "Cliente"},
                    {campos::destino, "Cliente destino.", "Novo Cliente"},
                    {campos::sem_uso, "Cliente destino.", ""},
                    {campos::obs_entrada, "Observações", "Obs (Entrada)"},
                    {campos::obs_saida, "Observações", "Obs (Saída)"}});
    campo(campos::artigo).codigo_de = common::CodigoDe::artigo;
    campo(campos::detentor).codigo_de = campo(campos::destino).codigo_de = common::CodigoDe::cliente;
    // Set by the program alone. It takes the focus, so that Esc in it closes.
    campo(campos::detentor).so_leitura = true;
    campo(campos::sem_uso).Visible = false;
    regista_selector(DTPicker1, "DTPicker1", "Data.", "Data");
    DTPicker1.com_hora = true;

    regista_lista(btFx, campos::artigo, "Lista de Equipamentos.");
    regista_lista(btFx, campos::destino, "Lista de Equipamentos.");
    regista_botao(btConf, "btConf", "&Confirmar", "Confirmar a operação.", [this] { btConf_Click(); });
    regista_botao(
        btCancelar, "btCancelar", "C&ancelar", "Cancelar a operação.", [this] { btCancelar_Click(); },
        common::Botao::Papel::cancela);
    regista_botao(
        btSair, "btSair", "&Sair", "Abandonar a opção.", [this] { Unload(); }, common::Botao::Papel::sai);

    foco().define_ordem({&campo(campos::artigo), &campo(campos::detentor), &campo(campos::destino),
                         &DTPicker1, &campo(campos::obs_entrada), &campo(campos::obs_saida), &btConf,
                         &btCancelar, &btSair});
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
    ComComprimentos({"xel_ORVEX", "Artigos"}, [this] {
        campo(campos::artigo).MaxLength = Comprimento({{"xel_ORVEX", "NumSerie"}});
        campo(campos::destino).MaxLength = Comprimento({{"xel_ORVEX", "Cliente"}, {"xel_ORVEX", "CliFinal"}});
        for (const int i : {campos::obs_entrada, campos::obs_saida})
            campo(i).MaxLength = Comprimento({{"xel_ORVEX", "Obs"}});
        const int da_coluna = Comprimento({{"Artigos", "Observ"}});
        ComprimentoObserv = da_coluna > 0 ? std::min(da_coluna, comprimento_observ) : comprimento_observ;
    });
    limparform();
    Label1.Caption = Modo == modos::para_orvex ? "Transferência para ORVEX" : "Transferência para Cliente";
}

void TrfBobines::limparform() {
    for (const int i :
         {campos::artigo, campos::detentor, campos::destino, campos::obs_entrada, campos::obs_saida})
        campo(i).Text.clear();
    for (auto& [indice, rotulo] : Label2)
        rotulo.Caption.clear();
    if (Modo == modos::para_orvex)
        for (common::Controlo* controlo : std::initializer_list<common::Controlo*>{
                 &campo(campos::destino), &Label2(rotulos::destino), &btFx(campos::destino)})
            controlo->Visible = false;
    DTPicker1.Value = agora();
    Aceites = {};
    DetentorNoERP.clear();
}

bool TrfBobines::por_gravar() const {
    return !Aceites.Artigo.empty() && campo(campos::artigo).Text == Aceites.Artigo;
}

void TrfBobines::btCancelar_Click() { RecomecaEcra(); }

void TrfBobines::btFx_Click(int Index) {
    if (Index == campos::artigo)
        return preenche_da_lista(
            campo(campos::artigo),
            {BD.Ligacao(), "Artigos", livro::lista_de_artigos_a_transferir(), 8000, {{1, 1500}, {2, 5000}}});
    if (Index == campos::destino)
        return preenche_da_lista(campo(campos::destino),
                                 {BD.Ligacao(),
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
    if (Index == campos::artigo) Cancel = !ValidaArtigo();
    if (Index == campos::destino) Cancel = !ValidaDestino();
    bDigitado = false;
}

void TrfBobines::LimpaDestino() {
    Aceites.Destino.clear();
    Label2(rotulos::destino).Caption.clear();
    for (const int i : {campos::destino, campos::obs_saida, campos::obs_entrada})
        campo(i).Text.clear();
}

void TrfBobines::LimpaArtigo() {
    for (auto& [indice, rotulo] : Label2)
        rotulo.Caption.clear();
    for (const int i : {campos::detentor, campos::destino, campos::obs_saida, campos::obs_entrada})
        campo(i).Text.clear();
}

bool TrfBobines::ValidaArtigo() {
    Aceites.Artigo.clear();
    if (!Aceites.Destino.empty()) LimpaDestino(); // it was accepted for the item before
    if (campo(campos::artigo).Text.empty()) {
        LimpaArtigo();
        return true;
    }
    const ArtigoLido lido = LeArtigo(campo(campos::artigo).Text);
    if (!ValidaDetentor(lido)) {
        LimpaArtigo();
        return false;
    }
    if (!ValidaStock(lido)) return false;
    Aceites.Artigo = campo(campos::artigo).Text;
    return true;
}

TrfBobines::ArtigoLido TrfBobines::LeArtigo(const std::string& artigo) {
    ArtigoLido lido;
    std::vector<std::string> anunciadas{livro::perguntas::ultimo_movimento(artigo),
                                        livro::perguntas::artigo_activo(artigo),
                                        livro::perguntas::ultimo_movimento_outra_vez(artigo)};
    AnunciaGuiasPorGerar(artigo, anunciadas);
    BD.EmPasso(anunciadas, [&] {
        lido.ultimo = livro::ultimo_movimento(BD, artigo);
        if (!lido.ultimo || lido.ultimo->Cliente == CLIENTEORVEX.Codigo()) return;
        lido.com_guias = livro::tem_linhas_abertas(BD, artigo, FACTURAS);
        if (!lido.com_guias) lido.ficha = livro::artigo_activo(BD, artigo);
        if (lido.ficha) lido.existencia = Existencia(lido.ficha->Codigo, ArmazemDe(lido.ultimo->Cliente));
        if (lido.existencia) lido.entrada = livro::ultimo_movimento_outra_vez(BD, artigo);
        if (!lido.entrada) return;
        const auto cliente = BD.Consulta(
            "Select * from Clientes where Codigo=" + base::entre_plicas(lido.entrada->CliFinal) + " ");
        if (cliente->fim()) return;
        lido.NomeDetentor = cliente->valor("Nome").texto();
        lido.DetentorNoERP = cliente->valor("CODIGO").texto();
    });
    return lido;
}

// A list of parameters that is not whole is reported where it is needed.
void TrfBobines::AnunciaGuiasPorGerar(const std::string& artigo, std::vector<std::string>& anunciadas) const {
    try {
        anunciadas.push_back(livro::perguntas::tem_linhas_abertas(artigo, FACTURAS));
    } catch (const startup::FalhaParametro&) {
    }
}

const std::string& TrfBobines::ArmazemDe(const std::string& cliente) const {
    return cliente == CLIENTEORVEX.Codigo() ? ARMAZEMORVEX.Codigo() : ARMAZEM.Codigo();
}

bool TrfBobines::ValidaDetentor(const ArtigoLido& lido) {
    common::Campo& artigo = campo(campos::artigo);
    if (!lido.ultimo) return recusa("Artigo não existente!", artigo);
    Detentor = lido.ultimo->Cliente;
    Aceites.Registo = lido.ultimo->Registo;
    ArmazemActual = ArmazemDe(Detentor);
    if (Detentor == CLIENTEORVEX.Codigo())
        return recusa(Modo == modos::para_orvex ? "Este Artigo/Num.Série já pertence à ORVEX!"
                                                : "Este Artigo/Num.Série pertence à ORVEX!",
                      artigo);
    return !lido.com_guias || recusa(guias_por_gerar, artigo);
}

std::optional<base::Moeda> TrfBobines::Existencia(const std::string& artigo, const std::string& armazem) {
    const auto stock = livro::existencia(BD, artigo, armazem);
    if (!stock) return std::nullopt;
    return stock->nulo() ? base::Moeda() : stock->moeda();
}

bool TrfBobines::ValidaStock(const ArtigoLido& lido) {
    if (!lido.ficha) {
        recusa("Artigo não existente!", campo(campos::artigo));
        Label2(rotulos::artigo).Caption.clear();
        return false;
    }
    campo(campos::artigo).Text = lido.ficha->Codigo; // whatever case was typed
    if (!lido.existencia) {
        Avisa("", "Este Artigo não tem Existência!", aviso_informacao);
        return false;
    }
    Quantidade = *lido.existencia;
    Label2(rotulos::artigo).Caption = lido.ficha->Nome + " (" + formato().texto(Quantidade) + ")";
    if (!lido.entrada) {
        Avisa("", "Este Artigo não tem Entrada!", aviso_informacao);
        return false;
    }
    campo(campos::detentor).Text = lido.entrada->CliFinal;
    Detentor = lido.entrada->Cliente;
    Label2(rotulos::detentor).Caption = lido.NomeDetentor;
    DetentorNoERP = lido.DetentorNoERP;
    if (Modo == modos::para_orvex) {
        campo(campos::obs_saida).Text =
            "Mov.Saida - Aquisição pela Orvex do Cliente " + campo(campos::detentor).Text;
        campo(campos::obs_entrada).Text =
            "Mov.Entrada - Aquisição pela Orvex do Cliente " + campo(campos::detentor).Text;
    } else {
        SetFocus(campo(campos::destino));
    }
    return true;
}

bool TrfBobines::ValidaDestino() {
    const std::string& c = campo(campos::destino).Text;
    Aceites.Destino.clear();
    if (c.empty()) {
        Label2(rotulos::destino).Caption.clear();
        Avisa("", "Campo obrigatório!", aviso_informacao);
        return false;
    }
    const auto recusa_destino = [this](const char* aviso) {
        recusa(aviso, campo(campos::destino));
        Label2(rotulos::destino).Caption.clear();
        campo(campos::obs_saida).Text.clear();
        campo(campos::obs_entrada).Text.clear();
        return false;
    };
    const auto compara = [&]() -> const char* {
        if (c == CLIENTEORVEX.Codigo()) return "Impossível.Cliente destino selecionado é a ORVEX!";
        if (c == campo(campos::detentor).Text || (!c.empty() && c == DetentorNoERP))
            return "Impossível.Cliente destino selecionado é o mesmo!";
        return nullptr;
    };
    if (const char* aviso = compara()) return recusa_destino(aviso);
    const auto cliente =
        BD.Consulta("SELECT * FROM Clientes  where Clientes.CODIGO=" + base::entre_plicas(c) +
                    " and Clientes.Inactivo<>-1 ");
    if (cliente->fim()) return recusa_destino("Cliente não existente!");
    // Found whatever case was typed; compared to the letter as the ERP writes it.
    campo(campos::destino).Text = cliente->valor("CODIGO").texto();
    if (const char* aviso = compara()) return recusa_destino(aviso);
    Label2(rotulos::destino).Caption = cliente->valor("Nome").texto();
    campo(campos::obs_saida).Text = "Mov.Saida - Transferência para Cliente " + c;
    campo(campos::obs_entrada).Text =
        "Mov.Entrada - Transferência do Cliente " + campo(campos::detentor).Text;
    Aceites.Destino = c;
    return true;
}

} // namespace orvex::transfer
