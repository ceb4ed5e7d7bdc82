#include "platform/qt/consulta/janela_consulta.h"

#include "platform/qt/consulta/barra_levar.h"
#include "platform/qt/consulta/caminho.h"
#include "platform/qt/consulta/procura.h"
#include "platform/qt/papel/impressao.h"
#include "platform/qt/textos.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>

#include <utility>

namespace orvex::platform::qt::consulta {
namespace {

using namespace livro::consultas;

constexpr QSize tamanho_habitual{1160, 780};
constexpr int dias_parados = 90;

base::DataHora hoje() {
    const base::DataHora agora = base::DataHora::agora();
    return {agora.ano, agora.mes, agora.dia};
}

Pedido parados() { return PedidoParados{dias_parados, "", {}}; }

Pedido movimentos() { // of this month
    const base::DataHora ate = hoje();
    return PedidoMovimentos{{ate.ano, ate.mes, 1}, ate};
}

} // namespace

JanelaConsulta::JanelaConsulta(std::shared_ptr<Fonte> fonte, const EstadoSessao& sessao)
    : fonte_(std::move(fonte)), sessao_(sessao), titulo_(new EtiquetaElidida), pilha_(new QStackedWidget),
      area_(new AreaQueCabe(pilha_)), linha_estado_(new LinhaEstado(sessao)) {
    setObjectName("janela_consulta");
    setWindowTitle("Consulta");
    titulo_->setObjectName("titulo");
    procura_ = std::make_unique<Procura>(
        fonte_,
        Procura::Janela{
            [this](Ligacao ligacao, const std::string& texto) { segue(ligacao, texto, Teclado::fica); },
            [this](const QString& texto) { linha_estado_->mostra_aviso(texto); }, [this] { mostra(); },
            [this] {
                if (Pagina* pagina = caminho_->actual()) pagina->foca();
            }});
    caminho_ = std::make_unique<Caminho>(*pilha_);
    barra_ = new BarraLevar(*this, {[this] { return procura_->a_vista() ? nullptr : caminho_->actual(); },
                                    [this] { return procura_->actual(); },
                                    [this](const QString& texto) { linha_estado_->mostra_aviso(texto); },
                                    [this] { close(); }, empresa_no_papel(sessao)});
    inicio_ = inicio();
    pilha_->addWidget(inicio_);
    pilha_->addWidget(&procura_->respostas());

    auto* disposicao = new QVBoxLayout(this);
    disposicao->setContentsMargins(0, 0, 0, 0);
    disposicao->setSpacing(8);
    disposicao->addWidget(nova_faixa_titulo(titulo_, sessao));
    disposicao->addWidget(linha_da_procura());
    auto* corpo = new QHBoxLayout;
    corpo->setContentsMargins(margem_janela, 0, margem_janela, 0);
    corpo->addWidget(area_);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* com_teclado) {
        if (com_teclado != nullptr && pilha_->isAncestorOf(com_teclado))
            area_->ensureWidgetVisible(com_teclado);
    });
    disposicao->addLayout(corpo, 1);
    disposicao->addWidget(barra_);
    disposicao->addWidget(linha_estado_);
    teclas();
    qApp->installEventFilter(this);
    mostra();
}

JanelaConsulta::~JanelaConsulta() {
    qApp->removeEventFilter(this);
    qApp->disconnect(this);
    barra_ = nullptr; // nothing is shown any more
    delete area_;     // while there is all that its views tell of themselves
}

QToolButton* JanelaConsulta::botao_pequeno(const char* nome, const QString& texto, const QString& dica) {
    auto* botao = new QToolButton;
    botao->setObjectName(nome);
    botao->setText(texto);
    botao->setToolTip(dica);
    botao->setAccessibleName(dica);
    botao->setFocusPolicy(Qt::NoFocus);
    return botao;
}

QWidget* JanelaConsulta::linha_da_procura() {
    auto* faixa = new QWidget;
    auto* linha = new QHBoxLayout(faixa);
    linha->setContentsMargins(margem_janela, 0, margem_janela, 0);
    atras_ = botao_pequeno("atras", "", "Vista anterior (Alt+Seta esquerda)");
    atras_->setArrowType(Qt::LeftArrow);
    connect(atras_, &QToolButton::clicked, this, [this] { anda(-1); });
    a_frente_ = botao_pequeno("a_frente", "", "Vista seguinte (Alt+Seta direita)");
    a_frente_->setArrowType(Qt::RightArrow);
    connect(a_frente_, &QToolButton::clicked, this, [this] { anda(+1); });
    auto* legenda = new QLabel("&Procurar");
    legenda->setBuddy(&procura_->campo());
    negrito(*legenda);
    linha->addWidget(atras_);
    linha->addWidget(a_frente_);
    linha->addSpacing(6);
    linha->addWidget(legenda);
    linha->addWidget(&procura_->campo(), 1);
    linha->addSpacing(6);
    for (const auto& [nome, texto, dica, pedido] :
         {std::tuple{"ir_parados", "Parados", "O que está fora há mais tempo (F6)", &parados},
          std::tuple{"ir_movimentos", "Movimentos", "Os movimentos de um período (F7)", &movimentos}}) {
        QToolButton* botao = botao_pequeno(nome, texto, dica);
        connect(botao, &QToolButton::clicked, this,
                [this, qual = pedido] { segue(qual(), Teclado::na_tabela); });
        linha->addWidget(botao);
    }
    return faixa;
}

QWidget* JanelaConsulta::inicio() {
    auto* pagina = new QWidget;
    pagina->setObjectName("inicio");
    auto* coluna = new QVBoxLayout(pagina);
    coluna->setSpacing(14);
    coluna->addStretch(1);
    auto* texto = new QLabel("Escreva ou leia em cima um artigo, um cliente ou um documento.");
    texto->setAlignment(Qt::AlignCenter);
    texto->setWordWrap(true);
    QFont letra = texto->font();
    letra.setPointSizeF(letra.pointSizeF() * 1.3);
    texto->setFont(letra);
    coluna->addWidget(texto);
    for (const auto& [nome, legenda, pedido] :
         {std::tuple{"inicio_parados", "Parados: o que está fora há mais tempo   (F6)", &parados},
          std::tuple{"inicio_movimentos", "Movimentos de um período   (F7)", &movimentos}}) {
        auto* botao = new QPushButton(legenda);
        botao->setObjectName(nome);
        botao->setAccessibleName(legenda);
        botao->setAutoDefault(true);
        botao->setMinimumWidth(fontMetrics().averageCharWidth() * 48); // alike
        connect(botao, &QPushButton::clicked, this,
                [this, qual = pedido] { segue(qual(), Teclado::na_tabela); });
        coluna->addWidget(botao, 0, Qt::AlignHCenter);
    }
    coluna->addStretch(2);
    return pagina;
}

void JanelaConsulta::abre(const std::optional<Pedido>& pedido) {
    lugar_.repoe(*this, tamanho_habitual);
    procura_->foca();
    show();
    if (pedido) segue(*pedido, Teclado::na_tabela);
}

void JanelaConsulta::avisa(const QString& texto) { linha_estado_->mostra_aviso(texto); }

void JanelaConsulta::segue(Ligacao ligacao, const std::string& texto, Teclado teclado) {
    switch (ligacao) {
    case Ligacao::artigo:
        return segue(PedidoArtigo{texto}, teclado);
    case Ligacao::cliente:
        return segue(PedidoCliente{.codigo = texto}, teclado);
    case Ligacao::documento:
        return segue(PedidoDocumento{texto}, teclado);
    case Ligacao::nenhuma:
        return;
    }
}

void JanelaConsulta::segue(const Pedido& pedido, Teclado teclado) {
    if (const auto* procurado = std::get_if<PedidoProcura>(&pedido))
        return procura_->campo().setText(qs(procurado->texto));
    if (procura_->a_vista()) procura_->fecha();
    linha_estado_->mostra_aviso({});
    Pagina* pagina = caminho_->actual();
    if (pagina == nullptr || pagina->pedido() != pedido) {
        const bool do_mesmo_genero = pagina != nullptr && pagina->pedido().index() == pedido.index();
        const std::string separador = do_mesmo_genero ? pagina->separador() : std::string();
        pagina = new Pagina(
            fonte_, pedido,
            {[this](Ligacao ligacao, const std::string& texto) { segue(ligacao, texto, Teclado::na_tabela); },
             [this](const Pedido& outro) { segue(outro, Teclado::na_tabela); },
             [this](const QString& codigo) { procura_->procura(codigo); }, [this] { mostra(); },
             [this] { barra_->copia_marcadas(); },
             [this](const QString& texto) { linha_estado_->mostra_aviso(texto); }});
        pagina->abre_separador(separador);
        caminho_->segue(pagina);
    }
    pagina->pergunta();
    if (teclado == Teclado::na_tabela) pagina->foca();
    mostra();
}

void JanelaConsulta::anda(int passos) {
    if (procura_->a_vista()) procura_->fecha();
    caminho_->anda(passos);
    mostra();
}

void JanelaConsulta::closeEvent(QCloseEvent* evento) {
    lugar_.guarda(*this);
    evento->accept();
}

// What is in sight

void JanelaConsulta::poe_em_cima(QWidget* este) {
    pilha_->setCurrentWidget(este);
    if (std::exchange(em_cima_, este) == este) return;
    area_->verticalScrollBar()->setValue(0);
    if (focusWidget() != nullptr && este->isAncestorOf(focusWidget()))
        area_->ensureWidgetVisible(focusWidget());
}

void JanelaConsulta::mostra() {
    if (barra_ == nullptr || atras_ == nullptr) return;
    Pagina* pagina = caminho_->actual();
    const bool respostas = procura_->a_vista();
    poe_em_cima(respostas           ? &procura_->respostas()
                : pagina != nullptr ? static_cast<QWidget*>(pagina)
                                    : inicio_);
    titulo_->setText(respostas ? "Procura" : pagina != nullptr ? pagina->titulo() : "Consulta do livro");
    atras_->setEnabled(caminho_->ha_atras());
    a_frente_->setEnabled(caminho_->ha_a_frente());
    barra_->mostra();
    QString estado = respostas           ? (procura_->a_meio() ? "A procurar…   Esc desiste" : "")
                     : pagina != nullptr ? pagina->estado()
                                         : "";
    linha_estado_->mostra_estado(estado);
    linha_estado_->mostra_ajuda(respostas ? "Enter abre   Setas escolhem   Esc limpa   F1 teclas"
                                          : "Enter procura   F1 teclas");
}

} // namespace orvex::platform::qt::consulta
