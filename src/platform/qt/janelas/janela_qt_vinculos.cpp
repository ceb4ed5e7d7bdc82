// The widgets of a window, made and bound to their controls.
#include "platform/qt/aplicacao.h"
#include "platform/qt/grelhas/vista_grelha.h"
#include "platform/qt/janelas/janela_qt.h"
#include "platform/qt/textos.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>

namespace orvex::platform::qt {

template <typename Tipo, typename Modelo, typename Widget>
Tipo& JanelaQt::acrescenta(Modelo& modelo, Widget& widget) {
    auto vinculo = std::make_unique<Tipo>(*this, modelo, widget);
    Tipo& feito = *vinculo;
    vinculos_.push_back(std::move(vinculo));
    return feito;
}

void JanelaQt::observa(QObject& alvo, Vinculo& vinculo) {
    alvo.installEventFilter(this);
    por_alvo_.insert(&alvo, &vinculo);
}

QWidget* JanelaQt::vincula(common::Campo& campo, int largura_em_letras) {
    auto* linha = new QLineEdit;
    linha->setFixedWidth(linha->fontMetrics().horizontalAdvance(QString(largura_em_letras, '0')) + 16);
    observa(*linha, acrescenta<VinculoCampo>(campo, *linha));
    return linha;
}

QWidget* JanelaQt::vincula(common::SelectorData& selector) {
    constexpr int botao_do_calendario = 22;
    auto* linha = new QLineEdit;
    const QString exemplo = selector.com_hora ? "00-00-0000 00:00" : "00-00-0000";
    linha->setFixedWidth(linha->fontMetrics().horizontalAdvance(exemplo) + 16 + botao_do_calendario);
    observa(*linha, acrescenta<VinculoData>(selector, *linha));
    return linha;
}

QWidget* JanelaQt::vincula(common::Botao& botao) {
    auto* widget = new QPushButton;
    widget->setAutoDefault(false);
    widget->setMinimumWidth(96);
    observa(*widget, acrescenta<VinculoBotao>(botao, *widget));
    return widget;
}

QWidget* JanelaQt::vincula(common::Combo& combo) {
    auto* caixa = new QComboBox;
    caixa->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    caixa->setMinimumContentsLength(16); // the items come later, and must move nothing
    observa(*caixa, acrescenta<VinculoCombo>(combo, *caixa));
    return caixa;
}

EtiquetaElidida* JanelaQt::vincula(common::Etiqueta& etiqueta) {
    auto* texto = new EtiquetaElidida;
    acrescenta<VinculoEtiqueta>(etiqueta, *texto);
    return texto;
}

VistaGrelha* JanelaQt::vincula(common::Grelha& grelha) {
    auto* vista = new VistaGrelha(ecra_, grelha);
    Vinculo& vinculo = acrescenta<VinculoGrelha>(grelha, *vista);
    observa(*vista, vinculo);
    observa(*vista->viewport(), vinculo);
    return vista;
}

QTabWidget* JanelaQt::vincula(common::Separadores& separadores) {
    auto* paginas = new QTabWidget;
    observa(*paginas->tabBar(), acrescenta<VinculoSeparadores>(separadores, *paginas));
    return paginas;
}

void JanelaQt::vincula(common::Quadro& quadro, QWidget& painel) {
    acrescenta<Vinculo>(quadro, painel);
    painel.setFocusPolicy(Qt::NoFocus);
}

QWidget* JanelaQt::vincula_com_lista(common::Campo& campo, int largura_em_letras, common::Botao& botao) {
    auto* par = new QWidget;
    auto* disposicao = new QHBoxLayout(par);
    disposicao->setContentsMargins(0, 0, 0, 0);
    disposicao->setSpacing(2);
    disposicao->addWidget(vincula(campo, largura_em_letras));
    static_cast<VinculoCampo*>(vinculo_de(&campo))->marca_lista();

    auto* lista = static_cast<QPushButton*>(vincula(botao));
    lista->setMinimumWidth(0);
    lista->setFixedWidth(28);
    lista->setAccessibleName("lista de " + qs(campo.Legenda));
    disposicao->addWidget(lista);
    disposicao->addStretch();
    return par;
}

QLabel* JanelaQt::legenda_da_lista(const common::Campo& campo, common::Botao& botao) {
    Vinculo& vinculo = *vinculo_de(&botao);
    vinculo.define_acesso(campo.Legenda);
    return nova_legenda(campo.Legenda, &vinculo.widget());
}

void JanelaQt::legenda_de(QLabel& legenda, const common::Controlo& controlo) {
    legenda.setBuddy(&vinculo_de(&controlo)->widget());
}

QWidget* JanelaQt::barra_botoes(std::initializer_list<common::Botao*> primeiros, common::Botao* desfaz,
                                common::Botao& sair) {
    auto* barra = new QWidget;
    auto* disposicao = new QHBoxLayout(barra);
    disposicao->setContentsMargins(margem_janela, 4, margem_janela, 6);
    for (common::Botao* botao : primeiros)
        disposicao->addWidget(vincula(*botao));
    disposicao->addStretch();
    if (desfaz != nullptr) {
        disposicao->addWidget(vincula(*desfaz));
        disposicao->addSpacing(48);
    }
    disposicao->addWidget(vincula(sair));
    return barra;
}

void JanelaQt::marca_fecho(const common::Campo& campo) {
    if (auto* vinculo = dynamic_cast<VinculoCampo*>(vinculo_de(&campo))) vinculo->marca_fecho();
}

void JanelaQt::recorda(QSplitter& divisao, const QString& nome) {
    divisoes_.emplace_back(&divisao, qs(ecra_.titulo_janela()) + "/" + nome);
}

} // namespace orvex::platform::qt
