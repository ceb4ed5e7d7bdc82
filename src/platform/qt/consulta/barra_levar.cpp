#include "platform/qt/consulta/barra_levar.h"

#include "platform/qt/consulta/levar.h"
#include "platform/qt/pecas.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>

namespace orvex::platform::qt::consulta {

namespace {

constexpr int margem_do_botao = 20; // at least, on a small screen
// More stand in memory several times over on their way to the clipboard or to paper.
constexpr int linhas_que_cabem = 100'000;

} // namespace

BarraLevar::BarraLevar(QWidget& janela, Janela com) : janela_(janela), com_(std::move(com)) {
    auto* linha = new QHBoxLayout(this);
    linha->setContentsMargins(margem_janela, 0, margem_janela, 4);
    linha->setSpacing(5);
    copiar_ = botao("copiar", "&Copiar", "A vista inteira, com os títulos (Ctrl+C: as linhas marcadas)");
    guardar_ = botao("guardar", "&Guardar", "Para uma folha de cálculo");
    imprimir_ = botao("imprimir", "&Imprimir", "Ctrl+P");
    pdf_ = botao("pdf", "P&DF", "Ctrl+Shift+P");
    extracto_ = botao("extracto", "E&xtracto", "De artigos em poder do cliente, para lhe enviar");
    etiquetas_ = botao("etiquetas", "E&tiquetas", "Do artigo, ou das linhas marcadas");
    linha->addStretch();
    QPushButton* sair = botao("sair", "&Sair", "");
    connect(sair, &QPushButton::clicked, this, [this] { com_.sai(); });

    connect(copiar_, &QPushButton::clicked, this, [this] { leva_pouco("copiar", copia); });
    QMenu* formatos = menu(guardar_);
    formatos->addAction("&CSV (texto com ;)", this,
                        [this] { leva([this](const auto& v) { return guarda_csv(janela_, v); }); });
    formatos->addAction("&xlsx (folha de cálculo)", this,
                        [this] { leva([this](const auto& v) { return guarda_xlsx(janela_, v); }); });
    const Levar no_papel = [this](const Recolhida& v) {
        return imprime(janela_, v, QString::fromStdString(com_.empresa));
    };
    const Levar em_pdf = [this](const Recolhida& v) {
        return guarda_pdf(janela_, v, QString::fromStdString(com_.empresa));
    };
    connect(imprimir_, &QPushButton::clicked, this, [=, this] { leva_pouco("imprimir", no_papel); });
    connect(pdf_, &QPushButton::clicked, this, [=, this] { leva_pouco("um PDF", em_pdf); });
    QMenu* extractos = menu(extracto_);
    extractos->addAction("&Imprimir", this, [this] {
        leva(
            [this](const auto& v) {
                return imprime_extracto(janela_, v, QString::fromStdString(com_.empresa));
            },
            &Pagina::toda);
    });
    extractos->addAction("Guardar em P&DF", this, [this] {
        leva([this](
                 const auto& v) { return guarda_extracto(janela_, v, QString::fromStdString(com_.empresa)); },
             &Pagina::toda);
    });
    connect(etiquetas_, &QPushButton::clicked, this, [this] { etiquetas(); });

    const auto tecla = [&](const char* nome, const char* que, auto accao) {
        auto* atalho = new QShortcut(QKeySequence(nome), &janela_);
        atalho->setWhatsThis(que);
        atalho->setAutoRepeat(false);
        connect(atalho, &QShortcut::activated, this, accao);
    };
    tecla("Ctrl+C", "Copia as linhas marcadas, com os títulos", [this] { copia_marcadas(); });
    tecla("Ctrl+P", "Imprime a vista", [=, this] { leva_pouco("imprimir", no_papel); });
    tecla("Ctrl+Shift+P", "Guarda a vista em PDF", [=, this] { leva_pouco("um PDF", em_pdf); });
}

QPushButton* BarraLevar::botao(const char* nome, const QString& legenda, const QString& dica) {
    auto* este = new QPushButton(legenda);
    este->setObjectName(nome);
    este->setAccessibleName(QString(legenda).remove('&'));
    este->setToolTip(dica);
    este->setMinimumWidth(fontMetrics().horizontalAdvance(este->accessibleName()) + margem_do_botao);
    este->setAutoDefault(true); // Enter presses it, as elsewhere in the program
    layout()->addWidget(este);
    return este;
}

QMenu* BarraLevar::menu(QPushButton* botao) {
    auto* este = new QMenu(botao);
    este->setObjectName("menu_" + botao->objectName());
    botao->setMenu(este);
    return este;
}

void BarraLevar::mostra() {
    const Pagina* pagina = com_.pagina();
    const bool inteira = pagina != nullptr && pagina->inteira();
    for (QPushButton* este : {copiar_, guardar_, imprimir_, pdf_})
        este->setEnabled(inteira);
    extracto_->setEnabled(inteira &&
                          std::holds_alternative<livro::consultas::PedidoCliente>(pagina->pedido()));
    etiquetas_->setEnabled(pagina != nullptr && pagina->tem_artigos());
}

void BarraLevar::leva(const Levar& como, Recolhida (Pagina::*de)() const) {
    const Pagina* pagina = com_.pagina();
    if (pagina == nullptr) return com_.diz("Ainda não há nada para levar.");
    if (pagina->a_meio()) return com_.diz("A resposta ainda não acabou. Espere por ela, ou desista com Esc.");
    if (!pagina->inteira()) return com_.diz("A resposta não está inteira. F5 pergunta outra vez.");
    com_.diz(tenta(janela_, [&] { return como((pagina->*de)()); }));
}

bool BarraLevar::a_mais(int linhas, const QString& para) {
    if (linhas <= linhas_que_cabem) return false;
    com_.diz("São linhas a mais para " + para + ": guarde em CSV ou xlsx.");
    return true;
}

void BarraLevar::leva_pouco(const QString& para, const Levar& como) {
    const Pagina* pagina = com_.pagina();
    if (pagina == nullptr || !pagina->inteira() || !a_mais(pagina->quantas(), para)) leva(como);
}

void BarraLevar::copia_marcadas() {
    const Pagina* pagina = com_.pagina();
    if (pagina == nullptr) {
        const QString codigo = com_.resposta();
        if (codigo.isEmpty()) return com_.diz("Ainda não há nada para copiar.");
        QGuiApplication::clipboard()->setText(codigo);
        return com_.diz("Copiado: " + codigo + ".");
    }
    if (a_mais(pagina->quantas_marcadas(), "copiar")) return;
    com_.diz(tenta(janela_, [&]() -> QString {
        const auto marcadas = pagina->marcadas();
        return marcadas ? copia(*marcadas) : "A resposta não está inteira: marque as linhas que quer copiar.";
    }));
}

void BarraLevar::etiquetas() {
    const Pagina* pagina = com_.pagina();
    if (pagina == nullptr) return;
    const auto quais = pagina->etiquetas();
    com_.diz(quais.empty() ? "Marque primeiro os artigos." : imprime_etiquetas(janela_, quais));
}

} // namespace orvex::platform::qt::consulta
