#include "tests/qt/ecra_teste.h"

namespace orvex::testes {
namespace {

class ConjuntoFixo : public startup::ConjuntoRegistos {
  public:
    explicit ConjuntoFixo(const TabelaFixa& tabela) : tabela_(tabela) {}
    bool fim() override { return linha_ >= tabela_.linhas.size(); }
    void move_seguinte() override { ++linha_; }
    std::int64_t contagem() override { return static_cast<std::int64_t>(tabela_.linhas.size()); }
    std::size_t colunas() const override { return tabela_.nomes.size(); }
    std::string_view nome_coluna(std::size_t coluna) const override { return tabela_.nomes[coluna]; }
    base::Variante valor(std::size_t coluna) override { return tabela_.linhas[linha_][coluna]; }
    base::Variante valor(std::string_view) override { return {}; }
    void acrescenta() override {}
    void define(std::string_view, const base::Variante&) override {}
    void actualiza() override {}

  private:
    const TabelaFixa& tabela_;
    std::size_t linha_ = 0;
};

std::vector<common::Coluna> colunas() {
    using common::TipoColuna;
    return {{.chave = "Artigo", .legenda = "Artigo", .largura = 1500, .recebe_foco = false},
            {.chave = "Nome",
             .legenda = "Designação",
             .largura = 3000,
             .comprimento_maximo = 10,
             .so_leitura = false},
            {.chave = "Peso",
             .legenda = "Peso",
             .tipo = TipoColuna::decimal,
             .largura = 1200,
             .so_leitura = false,
             .formato_peso = true},
            {.chave = "Chave", .legenda = "Chave", .oculta = true},
            {.chave = "Marca",
             .legenda = "...",
             .tipo = TipoColuna::logico,
             .largura = 700,
             .so_leitura = false}};
}

} // namespace

std::unique_ptr<startup::ConjuntoRegistos> TabelaFixa::Consulta(const std::string&) {
    if (falha) throw base::Falha("A tabela não existe.");
    return std::make_unique<ConjuntoFixo>(*this);
}

EcraTeste::EcraTeste()
    : Ecra({.BD = tabela, .gERP = erp, .parametros = startup::Parametros("."), .formato = {}, .agora = {}},
           "Ensaio") {
    for (const int i : {0, 1, 2}) {
        campo[i].Index = i;
        regista(campo[i], "campo(" + std::to_string(i) + ")");
    }
    regista(data, "data");
    data.KeyDown = [this](int& KeyCode, int) {
        if (KeyCode == common::tecla_enter) xelSendkeys("{TAB}");
    };
    regista(combo, "combo");
    combo.itens = {"Um", "Dois"};
    combo.ListIndex = 0;
    regista(lista_0, "btFx(0)");
    lista_0.Click = [this] { btFx_Click(0); };
    regista(confirmar, "confirmar");
    confirmar.Caption = "&Confirmar";
    confirmar.Click = [this] { ++confirmacoes; };
    regista(paginas, "paginas");
    paginas.Captions = {"Linhas", "Outros"};
    regista(grelha, "grelha");
    grelha.define(colunas(), 4);
    for (const int linha : {0, 1}) {
        grelha.define_valor(linha, "Artigo", "A" + std::to_string(linha));
        grelha.define_valor(linha, "Peso", base::Moeda::de_inteiro(linha + 1));
        grelha.define_valor(linha, "Marca", false);
    }
    grelha.dentro_de = &paginas;
    grelha.pagina = 0;
    regista(nome, "nome");
    foco().define_ordem({&campo[0], &campo[1], &data, &combo, &paginas, &grelha, &campo[2], &confirmar});
}

void EcraTeste::campo_Validate(int Index, bool& Cancel) {
    if (!bDigitado) return;
    validados.push_back(Index);
    Cancel = !aceita(Index);
    bDigitado = false;
}

JanelaTeste::JanelaTeste(EcraTeste& ecra)
    : JanelaQt(ecra, {.empresa = "E", .motor = "M", .utilizador = "U"}) {
    auto* disposicao = new QVBoxLayout(this);
    disposicao->addWidget(liga_com_lista(ecra.campo[0], 10, ecra.lista_0));
    for (const int i : {1, 2})
        disposicao->addWidget(liga(ecra.campo[i], 10));
    disposicao->addWidget(liga(ecra.data));
    disposicao->addWidget(liga(ecra.combo));
    QTabWidget* paginas = liga(ecra.paginas);
    paginas->addTab(liga(ecra.grelha), {});
    paginas->addTab(new QWidget, {});
    disposicao->addWidget(paginas);
    disposicao->addWidget(liga(ecra.nome));
    disposicao->addWidget(liga(ecra.confirmar));
    disposicao->addWidget(&linha_estado());
}

} // namespace orvex::testes
