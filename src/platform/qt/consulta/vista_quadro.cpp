#include "platform/qt/consulta/vista_quadro.h"

#include "platform/qt/consulta/ligacoes.h"
#include "platform/qt/consulta/modelo_quadro.h"
#include "platform/qt/consulta/totais_quadro.h"
#include "platform/qt/pecas.h"
#include "platform/qt/teclas.h"
#include "platform/qt/textos.h"
#include "platform/qt/vinculos/limite_texto.h"

#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>

#include <algorithm>
#include <utility>

namespace orvex::platform::qt::consulta {
namespace {

using livro::consultas::Linha;

constexpr int pausa_de_chegada_ms = 100;

} // namespace

VistaQuadro::VistaQuadro(const std::string& vista, const livro::consultas::Quadro& quadro)
    : vista_(vista), modelo_(std::make_unique<ModeloQuadro>(quadro)), filtro_(new QLineEdit),
      tabela_(new QTableView), delegado_(new DelegadoLigacao(*tabela_)),
      totais_(new TotaisQuadro(*tabela_, modelo_->quadro())) {
    setObjectName("quadro." + qs(quadro.chave));
    constroi();
    por_filtrar_.setSingleShot(true);
    por_mostrar_.setSingleShot(true);
    connect(&por_filtrar_, &QTimer::timeout, this, [this] { aplica_filtro(); });
    connect(&por_mostrar_, &QTimer::timeout, this, [this] { mostra_as_novas(); });
    ressalva();
    mede();
}

VistaQuadro::~VistaQuadro() {
    guarda_larguras();
    janela_ = {};
    for (QObject* visto : {static_cast<QObject*>(filtro_), static_cast<QObject*>(tabela_),
                           static_cast<QObject*>(tabela_->viewport())})
        visto->removeEventFilter(this);
    delete tabela_; // before its model
}

void VistaQuadro::define_janela(Janela janela) { janela_ = std::move(janela); }

void VistaQuadro::constroi() {
    const std::string& titulo = modelo_->quadro().titulo;
    filtro_->setObjectName("filtro");
    filtro_->setAccessibleName("Filtrar " + qs(titulo));
    filtro_->setPlaceholderText("Palavras que as linhas têm");
    filtro_->setToolTip("Ctrl+F");
    filtro_->setClearButtonEnabled(true);
    filtro_->setValidator(new LimiteTexto(filtro_, {}, [this] { return escrito_; }));

    tabela_->setObjectName("tabela");
    tabela_->setAccessibleName(qs(titulo));
    tabela_->setModel(modelo_.get());
    tabela_->setItemDelegate(delegado_);
    tabela_->setSelectionBehavior(QAbstractItemView::SelectRows);
    tabela_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    tabela_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tabela_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    tabela_->setAlternatingRowColors(true);
    tabela_->setShowGrid(false);
    tabela_->setWordWrap(false);
    tabela_->setTabKeyNavigation(false);
    tabela_->setMouseTracking(true);
    tabela_->setMinimumHeight(4 * (fontMetrics().height() + 8));
    tabela_->verticalHeader()->hide();
    tabela_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    tabela_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    QHeaderView* titulos = tabela_->horizontalHeader();
    titulos->setHighlightSections(false);
    titulos->setSectionsClickable(true);
    titulos->setSortIndicatorClearable(true); // a third click gives the order in which rows came
    titulos->setSortIndicator(-1, Qt::AscendingOrder);
    titulos->setSortIndicatorShown(true);

    auto* em_cima = new QHBoxLayout;
    em_cima->addWidget(nova_legenda("Filtrar", filtro_));
    em_cima->addWidget(filtro_, 1);
    auto* disposicao = new QVBoxLayout(this);
    disposicao->setContentsMargins({});
    disposicao->addLayout(em_cima);
    disposicao->addWidget(tabela_, 1);
    disposicao->addWidget(totais_);

    filtro_->installEventFilter(this);
    tabela_->installEventFilter(this);
    tabela_->viewport()->installEventFilter(this);
    connect(filtro_, &QLineEdit::textChanged, this, [this](const QString& texto) {
        escrito_ = texto;
        por_filtrar_.start(pausa_de_leitor_ms);
    });
    connect(filtro_, &QLineEdit::textEdited, this, [this] { tocada_ = true; });
    connect(titulos, &QHeaderView::sortIndicatorChanged, this, [this](int coluna, Qt::SortOrder ordem) {
        tocada_ = true;
        muda([&] { modelo_->ordena(coluna, ordem); }, Mudanca::ordem);
    });
    connect(titulos, &QHeaderView::sectionResized, this, [this](int coluna, int, int largura) {
        if (a_acomodar_ || largura == 0) return;
        alargadas_.insert(coluna);
        fixas_.insert(coluna);
        larguras_[static_cast<std::size_t>(coluna)] = largura;
    });
    connect(tabela_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { janela_.mudou(); });
}

void VistaQuadro::junta(std::vector<Linha> linhas) {
    modelo_->junta(linhas);
    if (!medida_)
        mostra_as_novas();
    else if (!por_mostrar_.isActive())
        por_mostrar_.start();
}

void VistaQuadro::total(const Linha& este) {
    totais_->junta(este);
    janela_.mudou();
}

void VistaQuadro::mostra_as_novas() {
    por_mostrar_.stop();
    if (!modelo_->ha_novas()) return;
    QElapsedTimer desde;
    desde.start();
    if (modelo_->ordenado())
        muda([this] { modelo_->mostra_as_novas(); }, Mudanca::chegada);
    else
        modelo_->mostra_as_novas();
    ressalva();
    if (!std::exchange(medida_, true)) mede();
    if (!tabela_->currentIndex().isValid() && modelo_->rowCount() > 0) tabela_->selectRow(0);
    // The window has most of the time for the user.
    por_mostrar_.setInterval(std::max(pausa_de_chegada_ms, static_cast<int>(10 * desde.elapsed())));
    janela_.mudou();
}

void VistaQuadro::aplica_filtro() {
    por_filtrar_.stop();
    muda([this] { modelo_->filtra(filtro_->text()); }, Mudanca::filtro);
    totais_->define_parcial(modelo_->filtrado());
}

int VistaQuadro::lidas() const { return modelo_->lidas(); }

void VistaQuadro::poe_em_dia() {
    mostra_as_novas();
    if (por_filtrar_.isActive()) aplica_filtro();
}

Parte VistaQuadro::toda() {
    poe_em_dia();
    Parte parte{modelo_->quadro(), {}, totais_->todos()};
    for (int numero = 0; numero < lidas(); ++numero)
        parte.linhas.push_back(modelo_->linha_de(numero));
    return parte;
}

int VistaQuadro::quantas() {
    poe_em_dia();
    return modelo_->rowCount();
}

int VistaQuadro::quantas_leva() {
    const int a_vista = quantas();
    const int marcadas = quantas_marcadas();
    return marcadas < 2 ? a_vista : marcadas;
}

Parte VistaQuadro::mostrada() {
    poe_em_dia();
    Parte parte{modelo_->quadro(), {}, {}};
    for (int linha = 0; linha < modelo_->rowCount(); ++linha)
        parte.linhas.push_back(modelo_->linha(linha));
    parte.totais = modelo_->rowCount() == lidas() ? totais_->todos() : total_das_mostradas();
    return parte;
}

Parte VistaQuadro::marcada() {
    poe_em_dia();
    if (quantas_marcadas() < 2) return mostrada();
    Parte parte{modelo_->quadro(), {}, {}};
    for (const int linha : marcadas())
        parte.linhas.push_back(modelo_->linha(linha));
    return parte;
}

QString VistaQuadro::filtro() const { return filtro_->text(); }

void VistaQuadro::repoe_filtro(const QString& filtro) {
    filtro_->setText(filtro);
    poe_em_dia();
}

void VistaQuadro::filtra() const {
    filtro_->setFocus();
    filtro_->selectAll();
}

} // namespace orvex::platform::qt::consulta
