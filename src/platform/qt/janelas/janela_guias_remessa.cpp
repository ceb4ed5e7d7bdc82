#include "platform/qt/janelas/janela_guias_remessa.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/grelhas/vista_grelha.h"
#include "platform/qt/papel/papel.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedLayout>
#include <QTabWidget>

namespace orvex::platform::qt {
namespace {

namespace campos = delivery::campos;
namespace rotulos = delivery::rotulos;
namespace momentos = delivery::momentos;
namespace combos = delivery::combos;
namespace confirmacoes = delivery::confirmacoes;
namespace devolucoes = delivery::devolucoes;

const QColor cor_veu{0x20, 0x2C, 0x4A, 90};

// A field that gives way, to half of its width, where the window has no room for all of it.
QWidget* que_encolhe(QWidget* campo) {
    campo->setMinimumWidth(campo->maximumWidth() / 2);
    auto* lugar = new QWidget;
    auto* disposicao = new QHBoxLayout(lugar);
    disposicao->setContentsMargins(0, 0, 0, 0);
    disposicao->addWidget(campo, 1);
    disposicao->addStretch();
    return lugar;
}

} // namespace

JanelaGuiasRemessa::JanelaGuiasRemessa(delivery::GuiasRemessa& ecra, const EstadoSessao& sessao)
    : JanelaQt(ecra, sessao), sessao_(sessao), resumo_(ecra), rascunho_(*this, ecra) {
    auto* disposicao = new QVBoxLayout(this);
    disposicao->setContentsMargins(0, 0, 0, 0);
    disposicao->setSpacing(0);
    QLabel* titulo = vincula(ecra.Label1);
    disposicao->addWidget(nova_faixa_titulo(titulo, sessao));
    rascunho_.poe_sobre(*titulo);
    auto* miolo = new QWidget;
    auto* de_cima_a_baixo = new QVBoxLayout(miolo);
    de_cima_a_baixo->setContentsMargins(0, 0, 0, 0);
    de_cima_a_baixo->setSpacing(0);
    de_cima_a_baixo->addWidget(cabecalho(ecra));
    de_cima_a_baixo->addWidget(corpo(ecra), 1);
    disposicao->addWidget(new AreaQueCabe(miolo), 1);
    disposicao->addWidget(
        barra_botoes({&ecra.btConf(confirmacoes::emitir), &ecra.btGV(devolucoes::abrir), &ecra.btCancelar},
                     &ecra.btConf(confirmacoes::anular), ecra.btSair));
    disposicao->addWidget(&linha_estado());
    marca_fecho(ecra.campo(campos::cliente));
}

void JanelaGuiasRemessa::mostra() {
    JanelaQt::mostra();
    resumo_.mostra(!a_meio());
    resumo_.mostra_nome(*nome_cliente_);
}

void JanelaGuiasRemessa::ocupado(bool sim) {
    JanelaQt::ocupado(sim);
    if (!sim) rascunho_.actualiza();
}

bool JanelaGuiasRemessa::eventFilter(QObject* alvo, QEvent* evento) {
    if (evento->type() == QEvent::KeyPress && rascunho_.tecla(*alvo, static_cast<QKeyEvent&>(*evento)))
        return true;
    return JanelaQt::eventFilter(alvo, evento);
}

QWidget* JanelaGuiasRemessa::cabecalho(delivery::GuiasRemessa& ecra) {
    auto* quadro = new QWidget;
    quadro->setObjectName("Frame1");
    pinta_fundo(*quadro, cor_etiquetas);
    auto* grelha = new QGridLayout(quadro);
    grelha->setContentsMargins(margem_janela, 10, margem_janela, 10);
    grelha->setHorizontalSpacing(8);

    par(*grelha, 0, 0, ecra.campo(campos::cliente),
        vincula_com_lista(ecra.campo(campos::cliente), 15, ecra.btFx(campos::cliente)));
    nome_cliente_ = vincula(ecra.Label2(rotulos::nome_cliente));
    negrito(*nome_cliente_);
    auto* de_quem = new QHBoxLayout; // the name gives way to the mark, which so never makes the window wider
    de_quem->addWidget(nome_cliente_, 1);
    de_quem->addWidget(&resumo_.marca());
    grelha->addLayout(de_quem, 0, 2, 1, 5);
    par(*grelha, 1, 0, ecra.campo(campos::numero),
        vincula_com_lista(ecra.campo(campos::numero), 15, ecra.btFx(campos::numero)));
    par(*grelha, 1, 2, ecra.DTPicker1, vincula(ecra.DTPicker1));
    par(*grelha, 1, 4, ecra.cb1(combos::armazem), vincula(ecra.cb1(combos::armazem)));
    grelha->setColumnStretch(6, 1);
    return quadro;
}

QWidget* JanelaGuiasRemessa::corpo(delivery::GuiasRemessa& ecra) {
    QTabWidget* paginas = vincula(ecra.SSTab1);
    paginas->addTab(movimentos(ecra), {});
    paginas->addTab(diversos(ecra), {});

    // The return panel lies over the pages, so that showing it moves nothing.
    auto* corpo = new QWidget;
    auto* camadas = new QStackedLayout(corpo);
    camadas->setStackingMode(QStackedLayout::StackAll);
    auto* fundo = new QWidget;
    auto* margens = new QVBoxLayout(fundo);
    margens->setContentsMargins(margem_janela, 8, margem_janela, 4);
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

    const auto metade = [&](QHBoxLayout* titulo, common::Grelha& grelha, QLabel& totais) {
        auto* parte = new QWidget;
        auto* disposicao = new QVBoxLayout(parte);
        disposicao->setContentsMargins(0, 0, 0, 0);
        disposicao->setSpacing(3);
        disposicao->addLayout(titulo);
        disposicao->addWidget(vincula(grelha), 1);
        disposicao->addWidget(&totais);
        divisao->addWidget(parte);
    };

    EtiquetaElidida* facturas = vincula(ecra.Label2(rotulos::facturas));
    EtiquetaElidida* designacao = vincula(ecra.Label2(rotulos::designacao));
    EtiquetaElidida* quantidade = vincula(ecra.Label2(rotulos::quantidade));
    quantidade->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    negrito(*facturas);
    auto* de_cima = new QHBoxLayout;
    de_cima->addWidget(facturas, 2);
    de_cima->addWidget(designacao, 5);
    de_cima->addWidget(quantidade, 1);
    metade(de_cima, ecra.Detalhe, resumo_.totais_abertas());
    legenda_de(*facturas, ecra.Detalhe);

    EtiquetaElidida* guia = vincula(ecra.Label2(rotulos::guia));
    negrito(*guia);
    auto* de_baixo = new QHBoxLayout;
    de_baixo->addWidget(guia);
    de_baixo->addWidget(new BotoesPapel(*this, ecra, sessao_, linha_estado()));
    metade(de_baixo, ecra.Gr, resumo_.totais_guia());
    legenda_de(*guia, ecra.Gr);

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

    par(*grelha, 0, 0, ecra.campo(campos::contribuinte), vincula(ecra.campo(campos::contribuinte), 15));
    par(*grelha, 1, 0, ecra.campo(campos::gestor),
        vincula_com_lista(ecra.campo(campos::gestor), 15, ecra.btFx(campos::gestor)));
    par(*grelha, 2, 0, ecra.campo(campos::vendedor),
        vincula_com_lista(ecra.campo(campos::vendedor), 15, ecra.btFx(campos::vendedor)));
    par(*grelha, 3, 0, ecra.campo(campos::processo), vincula(ecra.campo(campos::processo), 20));
    par(*grelha, 4, 0, ecra.campo(campos::vosso_numero), vincula(ecra.campo(campos::vosso_numero), 20));

    for (int linha = 0;
         const int i : {campos::transporte, campos::matricula, campos::local_carga, campos::local_descarga}) {
        QWidget* campo = que_encolhe(vincula(ecra.campo(i), 30));
        grelha->addWidget(nova_legenda(ecra.campo(i).Legenda, campo), linha, 3);
        grelha->addWidget(campo, linha++, 4, Qt::AlignVCenter);
    }
    par(*grelha, 4, 3, ecra.DTPicker2(momentos::carga), vincula(ecra.DTPicker2(momentos::carga)));
    par(*grelha, 5, 3, ecra.DTPicker2(momentos::descarga), vincula(ecra.DTPicker2(momentos::descarga)));

    grelha->addWidget(vincula(ecra.Titulo), 6, 0, 1, 6);
    grelha->setColumnMinimumWidth(2, 14);
    grelha->setColumnStretch(4, 1);
    grelha->setRowStretch(7, 1);

    auto* pagina = new QScrollArea; // small screens with large letters
    pagina->setFrameShape(QFrame::NoFrame);
    pagina->setFocusPolicy(Qt::NoFocus);
    pagina->setWidgetResizable(true);
    pagina->setWidget(folha);
    return pagina;
}

// A sheet over a veil: what lies under the veil is still seen, and seen to be waiting.
QWidget* JanelaGuiasRemessa::painel_devolucao(delivery::GuiasRemessa& ecra) {
    auto* folha = new QFrame;
    folha->setFrameShape(QFrame::Box);
    pinta_fundo(*folha, cor_etiquetas);

    auto* titulo = new QLabel("Devolução");
    negrito(*titulo);
    titulo->setMargin(8);
    pinta_fundo(*titulo, cor_titulo, Qt::white);
    QLabel* linhas = nova_legenda(ecra.Final.Legenda);
    auto* instrucoes = new EtiquetaElidida;
    instrucoes->setText("Marque as linhas que voltam, acerte a data e confirme.");
    auto* de_cima = new QHBoxLayout;
    de_cima->setSpacing(margem_janela);
    de_cima->addWidget(linhas);
    de_cima->addWidget(instrucoes, 1);

    QWidget* data_devolucao = vincula(ecra.DTPicker3);
    auto* de_baixo = new QHBoxLayout;
    de_baixo->setSpacing(8);
    de_baixo->addWidget(nova_legenda(ecra.DTPicker3.ToolTip, data_devolucao));
    de_baixo->addWidget(data_devolucao);
    de_baixo->addSpacing(margem_janela);
    de_baixo->addWidget(vincula(ecra.btGV(devolucoes::confirmar)));
    de_baixo->addWidget(vincula(ecra.btGV(devolucoes::desistir)));
    de_baixo->addStretch();

    auto* conteudo = new QVBoxLayout;
    conteudo->setContentsMargins(margem_janela, 8, margem_janela, 12);
    conteudo->setSpacing(8);
    conteudo->addLayout(de_cima);
    VistaGrelha* final = vincula(ecra.Final);
    resumo_.junta_colunas(*final);
    conteudo->addWidget(final, 1);
    conteudo->addWidget(&resumo_.totais_devolucao());
    legenda_de(*linhas, ecra.Final);
    conteudo->addLayout(de_baixo);
    auto* disposicao = new QVBoxLayout(folha);
    disposicao->setContentsMargins(1, 1, 1, 1);
    disposicao->setSpacing(0);
    disposicao->addWidget(titulo);
    disposicao->addLayout(conteudo, 1);

    auto* veu = new QFrame;
    vincula(ecra.Frame3, *veu);
    pinta_fundo(*veu, cor_veu);
    auto* margens = new QVBoxLayout(veu);
    margens->setContentsMargins(3 * margem_janela, 2 * margem_janela, 3 * margem_janela, 2 * margem_janela);
    margens->addWidget(folha);
    return veu;
}

} // namespace orvex::platform::qt
