#include "platform/qt/janela_guias_remessa.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/vista_grelha.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedLayout>
#include <QTabWidget>

namespace orvex::platform::qt {
namespace {

constexpr int margem = 14;

void negrito(QLabel& texto) {
    QFont letra = texto.font();
    letra.setBold(true);
    texto.setFont(letra);
}

// A label and its field in two neighbouring cells.
void par(QGridLayout& grelha, int linha, int coluna, const common::Controlo& controlo, QWidget* campo) {
    grelha.addWidget(nova_legenda(controlo.Legenda, campo), linha, coluna);
    grelha.addWidget(campo, linha, coluna + 1, Qt::AlignLeft | Qt::AlignVCenter);
}

} // namespace

JanelaGuiasRemessa::JanelaGuiasRemessa(delivery::GuiasRemessa& ecra, const EstadoSessao& sessao)
    : JanelaQt(ecra, sessao) {
    auto* disposicao = new QVBoxLayout(this);
    disposicao->setContentsMargins(0, 0, 0, 0);
    disposicao->setSpacing(0);
    disposicao->addWidget(nova_faixa_titulo(liga(ecra.Label1), sessao));
    disposicao->addWidget(cabecalho(ecra));
    disposicao->addWidget(corpo(ecra), 1);
    disposicao->addWidget(botoes(ecra));
    disposicao->addWidget(&linha_estado());
    marca_fecho(ecra.campo(0));
}

QWidget* JanelaGuiasRemessa::cabecalho(delivery::GuiasRemessa& ecra) {
    auto* quadro = new QWidget;
    quadro->setObjectName("Frame1");
    pinta_fundo(*quadro, cor_etiquetas);
    auto* grelha = new QGridLayout(quadro);
    grelha->setContentsMargins(margem, 10, margem, 10);
    grelha->setHorizontalSpacing(10);

    par(*grelha, 0, 0, ecra.campo(0), liga_com_lista(ecra.campo(0), 15, ecra.btFx(0)));
    EtiquetaElidida* nome = liga(ecra.Label2(1));
    negrito(*nome);
    grelha->addWidget(nome, 0, 2, 1, 5);
    par(*grelha, 1, 0, ecra.campo(1), liga_com_lista(ecra.campo(1), 15, ecra.btFx(1)));
    par(*grelha, 1, 2, ecra.DTPicker1, liga(ecra.DTPicker1));
    par(*grelha, 1, 4, ecra.cb1(0), liga(ecra.cb1(0)));
    grelha->setColumnStretch(6, 1);
    return quadro;
}

QWidget* JanelaGuiasRemessa::corpo(delivery::GuiasRemessa& ecra) {
    QTabWidget* paginas = liga(ecra.SSTab1);
    paginas->addTab(movimentos(ecra), {});
    paginas->addTab(diversos(ecra), {});

    // The return panel lies over the pages, so that showing it moves nothing.
    auto* corpo = new QWidget;
    auto* camadas = new QStackedLayout(corpo);
    camadas->setStackingMode(QStackedLayout::StackAll);
    auto* fundo = new QWidget;
    auto* margens = new QVBoxLayout(fundo);
    margens->setContentsMargins(margem, 8, margem, 4);
    margens->addWidget(paginas);
    camadas->addWidget(painel_devolucao(ecra));
    camadas->addWidget(fundo);
    return corpo;
}

QWidget* JanelaGuiasRemessa::movimentos(delivery::GuiasRemessa& ecra) {
    auto* divisao = new QSplitter(Qt::Vertical);
    divisao->setChildrenCollapsible(false);
    divisao->setHandleWidth(8);
    recorda(*divisao, "Movimentos");

    const auto metade = [&](QHBoxLayout* titulo, common::Grelha& grelha) {
        auto* parte = new QWidget;
        auto* disposicao = new QVBoxLayout(parte);
        disposicao->setContentsMargins(0, 0, 0, 0);
        disposicao->setSpacing(3);
        disposicao->addLayout(titulo);
        disposicao->addWidget(liga(grelha), 1);
        divisao->addWidget(parte);
    };

    EtiquetaElidida* facturas = liga(ecra.Label2(4));
    EtiquetaElidida* designacao = liga(ecra.Label2(6));
    EtiquetaElidida* quantidade = liga(ecra.Label2(7));
    quantidade->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    negrito(*facturas);
    auto* de_cima = new QHBoxLayout;
    de_cima->addWidget(facturas, 2);
    de_cima->addWidget(designacao, 5);
    de_cima->addWidget(quantidade, 1);
    metade(de_cima, ecra.Detalhe);

    EtiquetaElidida* guia = liga(ecra.Label2(3));
    negrito(*guia);
    auto* de_baixo = new QHBoxLayout;
    de_baixo->addWidget(guia);
    metade(de_baixo, ecra.Gr);

    auto* pagina = new QWidget;
    pinta_fundo(*pagina, cor_etiquetas);
    auto* disposicao = new QVBoxLayout(pagina);
    disposicao->setContentsMargins(10, 8, 10, 10);
    disposicao->addWidget(divisao);
    return pagina;
}

QWidget* JanelaGuiasRemessa::diversos(delivery::GuiasRemessa& ecra) {
    auto* folha = new QWidget;
    pinta_fundo(*folha, cor_etiquetas);
    auto* grelha = new QGridLayout(folha);
    grelha->setContentsMargins(16, 14, 16, 14);
    grelha->setHorizontalSpacing(12);
    grelha->setVerticalSpacing(8);

    par(*grelha, 0, 0, ecra.campo(19), liga(ecra.campo(19), 15));
    par(*grelha, 1, 0, ecra.campo(2), liga_com_lista(ecra.campo(2), 15, ecra.btFx(2)));
    par(*grelha, 2, 0, ecra.campo(3), liga_com_lista(ecra.campo(3), 15, ecra.btFx(3)));
    par(*grelha, 3, 0, ecra.campo(22), liga(ecra.campo(22), 20));
    par(*grelha, 4, 0, ecra.campo(23), liga(ecra.campo(23), 20));

    par(*grelha, 0, 3, ecra.campo(24), liga(ecra.campo(24), 30));
    par(*grelha, 1, 3, ecra.campo(25), liga(ecra.campo(25), 30));
    par(*grelha, 2, 3, ecra.campo(26), liga(ecra.campo(26), 30));
    par(*grelha, 3, 3, ecra.campo(27), liga(ecra.campo(27), 30));
    par(*grelha, 4, 3, ecra.DTPicker2(0), liga(ecra.DTPicker2(0)));
    par(*grelha, 5, 3, ecra.DTPicker2(1), liga(ecra.DTPicker2(1)));

    grelha->addWidget(liga(ecra.Titulo), 6, 0, 1, 6);
    grelha->setColumnMinimumWidth(2, 30);
    grelha->setColumnStretch(5, 1);
    grelha->setRowStretch(7, 1);

    auto* pagina = new QScrollArea; // small screens with large letters
    pagina->setFrameShape(QFrame::NoFrame);
    pagina->setFocusPolicy(Qt::NoFocus);
    pagina->setWidgetResizable(true);
    pagina->setWidget(folha);
    return pagina;
}

QWidget* JanelaGuiasRemessa::painel_devolucao(delivery::GuiasRemessa& ecra) {
    auto* painel = new QFrame;
    liga(ecra.Frame3, *painel);
    painel->setFrameShape(QFrame::StyledPanel);
    pinta_fundo(*painel, cor_etiquetas);
    auto* disposicao = new QVBoxLayout(painel);
    disposicao->setContentsMargins(margem + 10, 12, margem + 10, 12);

    auto* titulo = new QLabel("Devolução");
    negrito(*titulo);
    QWidget* data_devolucao = liga(ecra.DTPicker3);
    auto* de_cima = new QHBoxLayout;
    de_cima->addWidget(titulo, 1);
    de_cima->addWidget(nova_legenda("Data da Devolução", data_devolucao));
    de_cima->addWidget(data_devolucao);
    disposicao->addLayout(de_cima);
    disposicao->addWidget(liga(ecra.Final), 1);

    auto* de_baixo = new QHBoxLayout;
    de_baixo->addWidget(liga(ecra.btGV(1)));
    de_baixo->addWidget(liga(ecra.btGV(2)));
    de_baixo->addStretch();
    disposicao->addLayout(de_baixo);
    return painel;
}

QWidget* JanelaGuiasRemessa::botoes(delivery::GuiasRemessa& ecra) {
    auto* barra = new QWidget;
    auto* disposicao = new QHBoxLayout(barra);
    disposicao->setContentsMargins(margem, 4, margem, 6);
    disposicao->addWidget(liga(ecra.btConf(0)));
    disposicao->addWidget(liga(ecra.btGV(0)));
    disposicao->addWidget(liga(ecra.btCancelar));
    disposicao->addStretch();
    disposicao->addWidget(liga(ecra.btConf(1))); // it undoes a document: away from the others
    disposicao->addSpacing(48);
    disposicao->addWidget(liga(ecra.btSair));
    return barra;
}

} // namespace orvex::platform::qt
