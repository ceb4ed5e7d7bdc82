#include "platform/qt/listas/janela_lista.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/caixa.h"
#include "platform/qt/dica_do_cortado.h"
#include "platform/qt/pecas.h"
#include "platform/qt/textos.h"
#include "platform/qt/vinculos/limite_texto.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>
#include <utility>

namespace orvex::platform::qt {
namespace {

constexpr int altura_inicial = 440;
constexpr int linhas_medidas = 60; // enough to tell how wide a column's content is

std::vector<bool> colunas_ocultas(const common::ListaPesquisa& lista) {
    std::vector<bool> ocultas;
    for (const auto& coluna : lista.colunas) {
        if (!coluna.oculta || coluna.numero < 1) continue;
        const auto i = static_cast<std::size_t>(coluna.numero);
        if (ocultas.size() < i) ocultas.resize(i, false);
        ocultas[i - 1] = true;
    }
    return ocultas;
}

} // namespace

JanelaLista::JanelaLista(QWidget* pai, const common::ListaPesquisa& lista, base::FormatoRegional formato,
                         const Consulta& consulta)
    : QDialog(pai), modelo_(lista.ligacao.Consulta(lista.sql), formato, colunas_ocultas(lista)) {
    setObjectName("ListaPesquisa");
    setWindowTitle(qs(lista.titulo));
    constroi(lista);
    if (lista.codigo_de != common::CodigoDe::nada) prepara_consulta(lista.codigo_de, consulta);
    filtra({});
    inicial_ = qs(lista.inicial).trimmed();
    comeca_do_campo();
    connect(&resto_, &QTimer::timeout, this, [this] { le_mais(); });
    if (!modelo_.completo()) resto_.start();
}

void JanelaLista::constroi(const common::ListaPesquisa& lista) {
    filtro_ = new QLineEdit;
    filtro_->setObjectName("filtro");
    filtro_->setAccessibleName("Procurar");
    filtro_->setPlaceholderText("Escreva para procurar");
    filtro_->setClearButtonEnabled(true);
    filtro_->setValidator(new LimiteTexto(filtro_, {}, [this] { return procurado_; }));

    vista_ = new QTableView;
    vista_->setObjectName("registos");
    vista_->setAccessibleName(qs(lista.titulo));
    vista_->setSelectionBehavior(QAbstractItemView::SelectRows);
    vista_->setSelectionMode(QAbstractItemView::SingleSelection);
    vista_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    vista_->setAlternatingRowColors(true);
    vista_->setShowGrid(false);
    vista_->setWordWrap(false);
    vista_->setTabKeyNavigation(false);
    vista_->verticalHeader()->hide();
    vista_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    vista_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    vista_->horizontalHeader()->setHighlightSections(false);
    vista_->horizontalHeader()->setSectionsClickable(true);
    vista_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    vista_->horizontalHeader()->setSortIndicatorShown(true);
    vista_->setModel(&modelo_);
    vista_->setItemDelegate(new DicaDoCortado(vista_));
    poe_larguras(lista);

    teclas_ = "Enter escolhe   Esc abandona   Ctrl+1, Ctrl+2, ... ordena";
    if (lista.codigo_de != common::CodigoDe::nada) teclas_ += "   Ctrl+I consulta";
    ajuda_ = new EtiquetaElidida;
    ajuda_->setObjectName("teclas");
    ajuda_->setText(teclas_);
    ajuda_->setMinimumWidth(ajuda_->sizeHint().width());
    contagem_ = new QLabel;
    contagem_->setObjectName("contagem");
    auto* escolher = new QPushButton("&Escolher");
    auto* cancelar = new QPushButton("&Cancelar");
    for (QPushButton* botao : {escolher, cancelar})
        botao->setAutoDefault(false);

    auto* rodape = new QHBoxLayout;
    rodape->addWidget(contagem_);
    rodape->addStretch();
    rodape->addWidget(escolher);
    rodape->addWidget(cancelar);
    auto* disposicao = new QVBoxLayout(this);
    disposicao->addWidget(filtro_);
    disposicao->addWidget(vista_, 1);
    disposicao->addWidget(ajuda_);
    disposicao->addLayout(rodape);

    filtro_->installEventFilter(this);
    vista_->installEventFilter(this);
    connect(filtro_, &QLineEdit::textEdited, this, [this](const QString& texto) { filtra(texto); });
    connect(filtro_, &QLineEdit::textChanged, this, [this](const QString& texto) {
        procurado_ = texto;
        if (texto.isEmpty()) filtra(texto); // the clear button is no typing
    });
    connect(vista_, &QTableView::pressed, this, [this] { larga_o_procurado(); });
    connect(vista_, &QTableView::doubleClicked, this, [this] { accept(); });
    connect(vista_->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this,
            [this](int coluna, Qt::SortOrder ordem) { ordena_por(coluna, ordem); });
    connect(escolher, &QPushButton::clicked, this, [this] { accept(); });
    connect(cancelar, &QPushButton::clicked, this, [this] { reject(); });
    filtro_->setFocus();
}

int JanelaLista::largura_pedida(int coluna) const {
    const QFontMetrics medidas = vista_->fontMetrics();
    int largura =
        medidas.horizontalAdvance(modelo_.headerData(coluna, Qt::Horizontal, Qt::DisplayRole).toString());
    for (int linha = 0; linha < std::min(linhas_medidas, modelo_.rowCount()); ++linha) {
        const QString texto = modelo_.data(modelo_.index(linha, coluna), Qt::DisplayRole).toString();
        largura = std::max(largura, medidas.horizontalAdvance(texto));
    }
    return largura + 20;
}

void JanelaLista::poe_larguras(const common::ListaPesquisa& lista) {
    int soma = 0;
    int ultima_visivel = -1;
    for (int c = 0; c < modelo_.columnCount(); ++c) {
        int largura = 0;
        bool oculta = false;
        for (const auto& coluna : lista.colunas)
            if (coluna.numero == c + 1) {
                largura = coluna.largura / twips_por_pixel;
                oculta = coluna.oculta;
            }
        vista_->setColumnHidden(c, oculta);
        if (oculta) continue;
        largura = largura > 0 ? largura : largura_pedida(c);
        vista_->setColumnWidth(c, largura);
        soma += largura;
        ultima_visivel = c;
    }
    if (ultima_visivel >= 0)
        vista_->horizontalHeader()->setSectionResizeMode(ultima_visivel, QHeaderView::Stretch);
    const int moldura = vista_->verticalScrollBar()->sizeHint().width() + 30;
    const QSize ecra = screen()->availableSize();
    resize(std::min(std::max(lista.largura / twips_por_pixel, soma) + moldura, ecra.width() - 40),
           std::min(altura_inicial, ecra.height() - 60));
}

void JanelaLista::le(const std::function<void()>& trabalho) {
    try {
        trabalho();
    } catch (...) {
        falha_ = std::current_exception();
        resto_.stop();
        reject();
    }
}

const std::string& JanelaLista::escolha() const {
    if (falha_ != nullptr) std::rethrow_exception(falha_);
    return escolha_;
}

void JanelaLista::filtra(const QString& texto) {
    inicial_.clear();
    procurado_ = texto;
    modelo_.filtra(texto);
    if (modelo_.rowCount() > 0) vista_->selectRow(0);
    vistas_ = 0;
    por_achar_ = !texto.isEmpty();
    poe_no_exacto();
    conta();
}

void JanelaLista::le_mais() {
    le([this] {
        if (!modelo_.le_mais()) resto_.stop();
    });
    if (!vista_->currentIndex().isValid() && modelo_.rowCount() > 0) vista_->selectRow(0);
    poe_no_exacto();
    comeca_do_campo();
    conta();
}

void JanelaLista::poe_no_exacto() {
    if (!por_achar_) return;
    if (const auto linha = modelo_.linha_exacta(procurado_, vistas_)) {
        por_achar_ = false;
        vista_->selectRow(*linha);
    }
    vistas_ = modelo_.rowCount();
}

// The user has put the current row where he wants it.
void JanelaLista::larga_o_procurado() {
    inicial_.clear();
    por_achar_ = false;
}

void JanelaLista::comeca_do_campo() {
    if (inicial_.isEmpty()) return;
    if (const auto linha = modelo_.linha_exacta(inicial_, vistas_)) {
        inicial_.clear();
        vista_->selectRow(*linha);
        vista_->scrollTo(modelo_.index(*linha, 0), QAbstractItemView::PositionAtCenter);
        return;
    }
    vistas_ = modelo_.rowCount();
    if (!modelo_.completo()) return;
    filtro_->setText(std::exchange(inicial_, {}));
    filtra(filtro_->text());
    filtro_->selectAll(); // what is typed takes its place
    if (modelo_.rowCount() == 0) filtro_->clear();
}

void JanelaLista::conta() {
    const QLocale locale;
    if (!modelo_.completo()) return contagem_->setText("A ler os registos...");
    QString contagem = locale.toString(modelo_.rowCount());
    if (modelo_.rowCount() != modelo_.total()) contagem += " de " + locale.toString(modelo_.total());
    contagem_->setText(contagem + (modelo_.total() == 1 ? " registo" : " registos"));
}

void JanelaLista::ordena_por(int coluna, Qt::SortOrder ordem) {
    larga_o_procurado();
    le([&] { modelo_.ordena(coluna, ordem); });
    if (modelo_.rowCount() > 0) vista_->selectRow(0);
}

void JanelaLista::accept() {
    while (!modelo_.completo() && (por_achar_ || !inicial_.isEmpty()))
        le_mais();
    if (falha_ != nullptr) return;
    const QModelIndex actual = vista_->currentIndex();
    if (!actual.isValid()) return;
    escolha_ = modelo_.escolha(actual.row());
    if (!escolha_.empty()) return QDialog::accept();
    // Without its key the choice would look like none.
    mostra_caixa(this, "Este registo não pode ser escolhido: falta-lhe um dos valores por que é conhecido.",
                 windowTitle().toStdString(), common::Icone::informacao, common::Botoes::ok);
}

void JanelaLista::done(int resultado) {
    resto_.stop(); // a row that cannot be read takes no choice back
    QDialog::done(resultado);
}

} // namespace orvex::platform::qt
