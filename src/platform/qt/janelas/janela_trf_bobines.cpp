#include "platform/qt/janelas/janela_trf_bobines.h"

#include "platform/qt/aplicacao.h"

#include <QGridLayout>
#include <QHBoxLayout>

namespace orvex::platform::qt {
namespace {

namespace campos = transfer::campos;
namespace rotulos = transfer::rotulos;

constexpr QSize tamanho{900, 330};
constexpr int letras_codigo = 15;
constexpr int letras_obs = 30; // at least: it grows with the window

} // namespace

JanelaTrfBobines::JanelaTrfBobines(transfer::TrfBobines& ecra, const EstadoSessao& sessao)
    : JanelaQt(ecra, sessao, tamanho), trf_(ecra) {
    auto* disposicao = new QVBoxLayout(this);
    disposicao->setContentsMargins(0, 0, 0, 0);
    disposicao->setSpacing(0);
    disposicao->addWidget(nova_faixa_titulo(vincula(ecra.Label1), sessao));
    disposicao->addWidget(corpo(), 1);
    disposicao->addWidget(botoes());
    disposicao->addWidget(&linha_estado());
    marca_fecho(ecra.campo(campos::detentor));
}

void JanelaTrfBobines::mostra() {
    for (QWidget* widget : destino_)
        widget->setVisible(trf_.campo(campos::destino).Visible);
    JanelaQt::mostra();
}

QWidget* JanelaTrfBobines::corpo() {
    auto* quadro = new QWidget;
    pinta_fundo(*quadro, cor_etiquetas);
    auto* grelha = new QGridLayout(quadro);
    grelha->setContentsMargins(margem_janela, 12, margem_janela, 12);
    grelha->setHorizontalSpacing(12);
    grelha->setVerticalSpacing(8);

    const auto com_nome = [&](int linha, common::Campo& campo, QWidget* widget, common::Etiqueta& etiqueta) {
        QLabel* legenda = par(*grelha, linha, 0, campo, widget);
        EtiquetaElidida* nome = vincula(etiqueta);
        negrito(*nome);
        grelha->addWidget(nome, linha, 2);
        return std::vector<QWidget*>{legenda, widget, nome};
    };
    com_nome(0, trf_.campo(campos::artigo),
             vincula_com_lista(trf_.campo(campos::artigo), letras_codigo, trf_.btFx(campos::artigo)),
             trf_.Label2(rotulos::artigo));
    com_nome(1, trf_.campo(campos::detentor), vincula(trf_.campo(campos::detentor), letras_codigo),
             trf_.Label2(rotulos::detentor));
    destino_ =
        com_nome(2, trf_.campo(campos::destino),
                 vincula_com_lista(trf_.campo(campos::destino), letras_codigo, trf_.btFx(campos::destino)),
                 trf_.Label2(rotulos::destino));
    QSizePolicy sem_lugar = destino_.back()->sizePolicy();
    sem_lugar.setRetainSizeWhenHidden(false);
    destino_.back()->setSizePolicy(sem_lugar);

    par(*grelha, 3, 0, trf_.DTPicker1, vincula(trf_.DTPicker1));
    for (int linha = 4; const int i : {campos::obs_entrada, campos::obs_saida}) {
        QWidget* obs = vincula(trf_.campo(i), letras_obs);
        obs->setMaximumWidth(QWIDGETSIZE_MAX);
        grelha->addWidget(nova_legenda(trf_.campo(i).Legenda, obs), linha, 0);
        grelha->addWidget(obs, linha++, 1, 1, 2);
    }
    grelha->setColumnStretch(2, 1);
    grelha->setRowStretch(6, 1);
    return quadro;
}

QWidget* JanelaTrfBobines::botoes() {
    auto* barra = new QWidget;
    auto* disposicao = new QHBoxLayout(barra);
    disposicao->setContentsMargins(margem_janela, 4, margem_janela, 6);
    disposicao->addWidget(vincula(trf_.btConf));
    disposicao->addWidget(vincula(trf_.btCancelar));
    disposicao->addStretch();
    disposicao->addWidget(vincula(trf_.btSair));
    return barra;
}

} // namespace orvex::platform::qt
