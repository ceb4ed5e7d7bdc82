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
    regista(Label2, rotulos::nome_artigo);
    regista(Label2, rotulos::quantidade);

    regista(campo, {{campos::artigo, "Artigo/Num.Série.", "Artigo/Num.Série"},
                    {campos::existencia, "Existência.", "Existência"},
                    {campos::processo, "Processo.", "Processo"},
                    {campos::quantidade, "Nova Existência/Quantidade.", ""},
                    {campos::observacoes, "Observações", "Observações"},
                    {campos::documento, "No. Documento.", "Número Doc."}});
    campo(campos::artigo).codigo_de = common::CodigoDe::artigo;
    campo(campos::existencia).numerico = campo(campos::quantidade).numerico = true;
    campo(campos::documento).Enabled = false;
    regista_selector(DTPicker1, "DTPicker1", "Data.", "Data");

    regista_lista(btFx, campos::artigo, "Selecionar Artigo/Num.Série.");
    regista_lista(btFx, campos::documento, "Selecionar No.Documento.");
    regista_botao(btConf, "btConf", "&Confirmar", "Confrmar a operação.", [this] { btConf_Click(); });
    regista_botao(
        btCancelar, "btCancelar", "Ca&ncelar", "Cancelar as operações.", [this] { btCancelar_Click(); },
        common::Botao::Papel::cancela);
    regista_botao(btAnular, "btAnular", "&Anular", "Anular.", [this] { btAnular_Click(); });
    regista_botao(
        btSair, "btSair", "&Sair", "Abandonar a opção.", [this] { Unload(); }, common::Botao::Papel::sai);

    foco().define_ordem({&campo(campos::artigo), &campo(campos::existencia), &DTPicker1,
                         &campo(campos::processo), &campo(campos::quantidade), &campo(campos::observacoes),
                         &btSair, &btConf, &btCancelar, &btAnular, &campo(campos::documento)});
}

void MovStocks::Form_Load() {
    SOBRAS = parametros().lista("SOBRAS");
    QUEBRAS = parametros().lista("QUEBRAS");
    CONSUMOS = parametros().lista("CONSUMOS");
    ARMAZEM = parametros().lista("ARMAZEM");
    ARMAZEMORVEX = parametros().lista("ARMAZEMORVEX");
    CLIENTEORVEX = parametros().lista("CLIENTEORVEX");
    ComComprimentos({"xel_ORVEX", "DocGcCab"}, [this] {
        campo(campos::artigo).MaxLength = Comprimento({{"xel_ORVEX", "NumSerie"}});
        campo(campos::processo).MaxLength = Comprimento({{"DocGcCab", "Processo"}});
        campo(campos::observacoes).MaxLength = Comprimento({{"xel_ORVEX", "Obs"}});
    });
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
    Label2(rotulos::nome_artigo).Caption.clear();
    campo(campos::existencia).Enabled = true;
    campo(campos::artigo).Enabled = true;
    nomeia_quantidade("Nova Existência");
    Detentor.clear();
    btAnular.Visible = false;
    if (Modo == modos::consumos) nomeia_quantidade("Quantidade");
    bCarregado = false;
    cQtdCarregada = {};
    btFx(campos::artigo).Enabled = true;
    const DataHora hoje = agora();
    DTPicker1.Value = {hoje.ano, hoje.mes, hoje.dia};
    DTPicker1.Enabled = true;
}

void MovStocks::nomeia_quantidade(const char* nome) {
    Label2(rotulos::quantidade).Caption = nome;
    campo(campos::quantidade).Legenda = nome; // what a screen reader says
}

bool MovStocks::por_gravar() const {
    if (campo(campos::quantidade).Text.empty()) return false;
    return !bCarregado || formato().le(campo(campos::quantidade).Text) != cQtdCarregada;
}

void MovStocks::btCancelar_Click() { RecomecaEcra(); }

TipoAjuste MovStocks::tipo_do_modo() const {
    return Modo == modos::sobras    ? TipoAjuste::sobra
           : Modo == modos::quebras ? TipoAjuste::quebra
                                    : TipoAjuste::consumo;
}

const startup::ParametroDocumento& MovStocks::documento_de(TipoAjuste tipo) const {
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
