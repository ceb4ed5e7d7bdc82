#include "platform/qt/janelas/janela_mov_stocks.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/textos.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace orvex::platform::qt {
namespace {

namespace campos = adjust::campos;
namespace rotulos = adjust::rotulos;

constexpr const char* unidade = " (t)";

// One of the two frames; their labels stand in one column, as wide as the longest of both.
QGridLayout* nova_moldura(const char* nome) {
    auto* moldura = new QWidget;
    moldura->setObjectName(nome);
    pinta_fundo(*moldura, cor_etiquetas);
    auto* grelha = new QGridLayout(moldura);
    grelha->setContentsMargins(margem_janela, 12, margem_janela, 12);
    grelha->setHorizontalSpacing(10);
    grelha->setVerticalSpacing(8);
    const QString mais_comprida = QString("Nova Existência") + unidade;
    grelha->setColumnMinimumWidth(0, moldura->fontMetrics().horizontalAdvance(mais_comprida) + 4);
    return grelha;
}

// "+226 kg": a weight has four decimals in tonnes, and one in kg.
std::string em_quilos(const adjust::MovStocks::Diferenca& diferenca, const base::FormatoRegional& formato) {
    const std::int64_t decimos = diferenca.Qtd.absoluta().decimos_milesimos();
    std::string texto = diferenca.Qtd < base::Moeda() ? "\u2212" : diferenca.da_existencia ? "+" : "";
    texto += std::to_string(decimos / 10);
    if (decimos % 10 != 0) texto += formato.decimal + std::to_string(decimos % 10);
    return texto + " kg";
}

} // namespace

JanelaMovStocks::JanelaMovStocks(adjust::MovStocks& ecra, const EstadoSessao& sessao)
    : JanelaQt(ecra, sessao, {780, 370}), ajuste_(ecra) {
    auto* disposicao = new QVBoxLayout(this);
    disposicao->setContentsMargins(0, 0, 0, 0);
    disposicao->setSpacing(0);
    QWidget* titulo = nova_faixa_titulo(vincula(ecra.Label1), sessao);
    titulo->setObjectName("Frame1");
    disposicao->addWidget(titulo);
    disposicao->addWidget(artigo(ecra));
    disposicao->addSpacing(6);
    disposicao->addWidget(movimento(ecra), 1);
    disposicao->addWidget(barra_botoes({&ecra.btConf, &ecra.btCancelar}, &ecra.btAnular, ecra.btSair));
    disposicao->addWidget(&linha_estado());
    marca_fecho(ecra.campo(campos::existencia));
}

QWidget* JanelaMovStocks::artigo(adjust::MovStocks& ecra) {
    QGridLayout* grelha = nova_moldura("Frame2");
    par(*grelha, 0, 0, ecra.campo(campos::artigo),
        vincula_com_lista(ecra.campo(campos::artigo), 15, ecra.btFx(campos::artigo)));
    EtiquetaElidida* nome = vincula(ecra.Label2(rotulos::nome_artigo));
    negrito(*nome);
    grelha->addWidget(nome, 0, 2, 1, 3);

    QWidget* existencia = vincula(ecra.campo(campos::existencia), 15);
    grelha->addWidget(nova_legenda(ecra.campo(campos::existencia).Legenda + unidade, existencia), 1, 0);
    grelha->addWidget(existencia, 1, 1, Qt::AlignLeft | Qt::AlignVCenter);
    par(*grelha, 1, 2, ecra.DTPicker1, vincula(ecra.DTPicker1));
    grelha->addWidget(vincula_com_lista(ecra.campo(campos::documento), 15, ecra.btFx(campos::documento)), 2,
                      1, Qt::AlignLeft | Qt::AlignVCenter);
    grelha->addWidget(legenda_da_lista(ecra.campo(campos::documento), ecra.btFx(campos::documento)), 2,
                      0); // the field takes no F4
    grelha->setColumnStretch(4, 1);
    return grelha->parentWidget();
}

QWidget* JanelaMovStocks::movimento(adjust::MovStocks& ecra) {
    QGridLayout* grelha = nova_moldura("Frame3");
    par(*grelha, 0, 0, ecra.campo(campos::processo), vincula(ecra.campo(campos::processo), 20));
    grelha->addWidget(quantidade(), 1, 1);
    grelha->addWidget(legenda_quantidade(ecra), 1, 0);

    QWidget* observacoes = vincula(ecra.campo(campos::observacoes), 25);
    observacoes->setMaximumWidth(QWIDGETSIZE_MAX);
    grelha->addWidget(nova_legenda(ecra.campo(campos::observacoes).Legenda, observacoes), 2, 0);
    grelha->addWidget(observacoes, 2, 1);
    grelha->setColumnStretch(1, 1);
    grelha->setRowStretch(3, 1);
    return grelha->parentWidget();
}

void JanelaMovStocks::mostra() {
    JanelaQt::mostra();
    mostra_diferenca();
}

// The field, and beside it what is typed in it comes to.
QWidget* JanelaMovStocks::quantidade() {
    diferenca_ = new QLabel;
    diferenca_->setObjectName("diferenca");
    diferenca_->setContentsMargins(8, 2, 8, 2);
    auto* par = new QWidget;
    auto* disposicao = new QHBoxLayout(par);
    disposicao->setContentsMargins(0, 0, 0, 0);
    QWidget* campo = vincula(ajuste_.campo(campos::quantidade), 15);
    disposicao->addWidget(campo);
    disposicao->addWidget(diferenca_);
    disposicao->addStretch();
    connect(qobject_cast<QLineEdit*>(campo), &QLineEdit::textEdited, this, [this] { mostra_diferenca(); });
    return par;
}

void JanelaMovStocks::mostra_diferenca() {
    const auto diferenca = ajuste_.diferenca();
    diferenca_->setText(diferenca ? qs(em_quilos(*diferenca, ajuste_.formato())) : QString());
    const bool grande = diferenca && diferenca->grande;
    pinta_fundo(*diferenca_, grande ? cor_aviso : cor_etiquetas, Qt::black);
}

// Its text changes with the mode and with what is loaded; the unit follows it.
QWidget* JanelaMovStocks::legenda_quantidade(adjust::MovStocks& ecra) {
    auto* legenda = new QWidget;
    auto* disposicao = new QHBoxLayout(legenda);
    disposicao->setContentsMargins(0, 0, 0, 0);
    disposicao->setSpacing(0);
    EtiquetaElidida* nome = vincula(ecra.Label2(rotulos::quantidade));
    nome->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    legenda_de(*nome, ecra.campo(campos::quantidade));
    disposicao->addWidget(nome);
    disposicao->addWidget(nova_legenda(unidade));
    disposicao->addStretch();
    return legenda;
}

} // namespace orvex::platform::qt
