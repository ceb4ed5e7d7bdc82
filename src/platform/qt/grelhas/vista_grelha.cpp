#include "platform/qt/grelhas/vista_grelha.h"

#include "platform/qt/grelhas/delegado_celula.h"
#include "platform/qt/listas/janela_lista.h"
#include "platform/qt/memoria.h"
#include "platform/qt/teclas.h"
#include "platform/qt/textos.h"
#include "platform/qt/vinculos/limite_texto.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScopedValueRollback>

#include <algorithm>

namespace orvex::platform::qt {

using common::TipoCelula;

VistaGrelha::VistaGrelha(common::Ecra& ecra, common::Grelha& grelha)
    : ecra_(ecra), grelha_(grelha), modelo_(grelha, ecra.formato()), procura_(grelha, para_procura()) {
    setFont(QFont("Verdana", 8));
    setModel(&modelo_);
    setItemDelegate(new DelegadoCelula(this, [this](QKeyEvent& evento) { return tecla_edicao(evento); }));
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setMinimumHeight(90);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setFont(font());
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(40);
    horizontalHeader()->setFixedHeight(fontMetrics().height() + 12);
    prepara_ordenacao();
    QPalette cores = palette();
    cores.setColor(QPalette::Inactive, QPalette::Highlight, QColor(0xC3, 0xD0, 0xE8));
    cores.setColor(QPalette::Inactive, QPalette::HighlightedText, QColor(0x1A, 0x1F, 0x2B));
    setPalette(cores);
}

// Showing

void VistaGrelha::mostra() {
    const QScopedValueRollback a_sincronizar(a_sincronizar_, true);
    if (modelo_.actualiza()) {
        fecha_editor();
        dispoe_colunas();
    }
    sincroniza_actual();
    mostra_ordem();
}

void VistaGrelha::sincroniza_actual() {
    if (!grelha_.redesenha) return;
    const QModelIndex actual = modelo_.index(grelha_.linha_actual - 1, grelha_.coluna_actual);
    if (!actual.isValid() || actual == currentIndex()) return;
    setCurrentIndex(actual);
    scrollTo(actual);
}

QString VistaGrelha::chave_largura(const common::ColunaGrelha& coluna) const {
    return qs(ecra_.titulo_janela() + "/" + grelha_.nome + "/" + coluna.chave);
}

void VistaGrelha::dispoe_colunas() {
    bool esticada = false;
    for (int c = 0; c < modelo_.columnCount(); ++c) {
        const common::ColunaGrelha& coluna = modelo_.coluna(c);
        const bool estica = coluna.chave == "Nome" && !coluna.oculta;
        esticada = esticada || estica;
        setColumnHidden(c, coluna.oculta);
        horizontalHeader()->setSectionResizeMode(c, estica ? QHeaderView::Stretch : QHeaderView::Interactive);
        if (coluna.oculta || estica) continue;
        const int titulo = horizontalHeader()->sectionSizeHint(c);
        setColumnWidth(c,
                       le_largura(chave_largura(coluna), std::max(titulo, coluna.largura / twips_por_pixel)));
    }
    horizontalHeader()->setStretchLastSection(!esticada);
}

void VistaGrelha::guarda_larguras() const {
    for (int c = 0; c < modelo_.columnCount(); ++c)
        if (!isColumnHidden(c) && horizontalHeader()->sectionResizeMode(c) == QHeaderView::Interactive)
            guarda_largura(chave_largura(modelo_.coluna(c)), columnWidth(c));
}

QString VistaGrelha::ajuda() const {
    bool escreve = false;
    bool marca = false;
    for (const common::ColunaGrelha& coluna : grelha_.colunas()) {
        if (coluna.so_leitura || coluna.oculta) continue;
        (coluna.tipo == TipoCelula::logico ? marca : escreve) = true;
    }
    QString texto = "Tab seguinte";
    if (grelha_.ordenavel) texto = "Ctrl+1, Ctrl+2, ... ordena   " + texto;
    if (grelha_.com_procura) texto = "Letras procuram   " + texto;
    if (grelha_.DblClick) texto = "Enter ou duplo clique escolhe   " + texto;
    if (marca) texto = "Espaço marca   " + texto;
    if (escreve)
        texto = QString("F2 edita   ") +
                (grelha_.cancela() != nullptr ? "Esc cancela   " : "Esc desiste   ") + texto;
    if (grelha_.permite_apagar) texto += "   Ctrl+Del apaga a linha   Ctrl+Z desfaz";
    return texto;
}

// The current cell

int VistaGrelha::coluna_com_foco(int coluna) const {
    const auto recebe = [&](int c) {
        return c >= 0 && c < modelo_.columnCount() && !modelo_.coluna(c).oculta &&
               modelo_.coluna(c).recebe_foco;
    };
    for (int distancia = 0; distancia < modelo_.columnCount(); ++distancia) {
        if (recebe(coluna + distancia)) return coluna + distancia;
        if (recebe(coluna - distancia)) return coluna - distancia;
    }
    return coluna;
}

void VistaGrelha::currentChanged(const QModelIndex& actual, const QModelIndex& anterior) {
    QTableView::currentChanged(actual, anterior);
    if (a_sincronizar_ || !actual.isValid()) return;
    procura_.larga();
    ecra_.utilizador_celula(grelha_, actual.row() + 1, coluna_com_foco(actual.column()));
    mostra(); // the rules have the last word on where the current cell is
}

QModelIndex VistaGrelha::moveCursor(CursorAction accao, Qt::KeyboardModifiers modificadores) {
    const QModelIndex partida = currentIndex();
    const QModelIndex destino = QTableView::moveCursor(accao, modificadores);
    if (!destino.isValid() || modelo_.coluna(destino.column()).recebe_foco) return destino;
    if (accao == MoveHome || accao == MoveEnd)
        return destino.siblingAtColumn(coluna_com_foco(destino.column()));
    return destino.row() == partida.row() ? partida : destino.siblingAtColumn(partida.column());
}

void VistaGrelha::focusOutEvent(QFocusEvent* evento) {
    procura_.larga();
    QTableView::focusOutEvent(evento);
}

void VistaGrelha::mousePressEvent(QMouseEvent* evento) {
    premida_ = indexAt(evento->position().toPoint());
    QTableView::mousePressEvent(evento);
}

void VistaGrelha::mouseReleaseEvent(QMouseEvent* evento) {
    QTableView::mouseReleaseEvent(evento);
    const QModelIndex celula = indexAt(evento->position().toPoint());
    const bool clicada = evento->button() == Qt::LeftButton && celula.isValid() && celula == premida_;
    premida_ = QModelIndex();
    if (clicada && modelo_.coluna(celula.column()).tipo == TipoCelula::logico) alterna(celula.row());
}

void VistaGrelha::mouseDoubleClickEvent(QMouseEvent* evento) {
    const QModelIndex celula = indexAt(evento->position().toPoint());
    premida_ = celula; // of a tick box: the second of two quick clicks
    if (evento->button() != Qt::LeftButton || !celula.isValid() || celula.row() != grelha_.linha_actual - 1)
        return;
    if (grelha_.DblClick)
        ecra_.utilizador_duplo_clique(grelha_);
    else if (celula.column() == grelha_.coluna_actual)
        edita(nullptr);
}

// Keys

bool VistaGrelha::tecla(QKeyEvent& evento) {
    if (so_modificador(evento)) return false;
    if (procura_.tecla(evento) || ordena_pelo_teclado(evento)) return true;
    if (ecra_.utilizador_tecla(grelha_, codigo_tecla(evento), estado_shift(evento))) return true;
    return tecla_de_accao(evento);
}

bool VistaGrelha::tecla_de_accao(QKeyEvent& evento) {
    switch (evento.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!celula_seguinte()) janela_.avanca(+1);
        return true;
    case Qt::Key_Escape:
        janela_.avanca(-1);
        return true;
    case Qt::Key_F2:
        edita(nullptr);
        return true;
    case Qt::Key_F10:
        if (evento.modifiers() != Qt::ShiftModifier) break;
        abre_menu(viewport()->mapToGlobal(visualRect(currentIndex()).center()));
        return true;
    case Qt::Key_Delete:
        if (evento.modifiers() == Qt::ControlModifier) {
            if (grelha_.permite_apagar) ecra_.utilizador_apaga_linha(grelha_);
            return true;
        }
        break;
    case Qt::Key_Space:
        if (alterna(grelha_.linha_actual - 1)) return true;
        break;
    default:
        break;
    }
    const QString texto = evento.key() == Qt::Key_Delete ? QString() : evento.text();
    const bool escreve = evento.key() == Qt::Key_Delete || (!texto.isEmpty() && texto.front().isPrint());
    if (!escreve || (evento.modifiers() & (Qt::ControlModifier | Qt::AltModifier))) return false;
    edita(&texto);
    return true;
}

// Enter goes through the cells to be filled in, row by row, and leaves after the last one.
bool VistaGrelha::celula_seguinte() {
    const auto a_preencher = [&](int c) {
        const common::ColunaGrelha& coluna = modelo_.coluna(c);
        return !coluna.oculta && !coluna.so_leitura && coluna.recebe_foco;
    };
    int coluna = grelha_.coluna_actual;
    for (int linha = grelha_.linha_actual; linha <= grelha_.linhas(); ++linha, coluna = -1)
        for (int c = coluna + 1; c < modelo_.columnCount(); ++c)
            if (a_preencher(c)) {
                ecra_.utilizador_celula(grelha_, linha, c);
                return true;
            }
    return false;
}

// Edits

void VistaGrelha::edita(const QString* inicial) {
    const QModelIndex celula = currentIndex();
    if (editor_ || !celula.isValid() || !modelo_.flags(celula).testFlag(Qt::ItemIsEditable)) return;
    QTableView::edit(celula);
    editor_ = qobject_cast<QLineEdit*>(indexWidget(celula));
    if (!editor_) return;
    const int maximo = modelo_.coluna(celula.column()).comprimento_maximo;
    poe_no_editor();
    editor_->setValidator(new LimiteTexto(
        editor_, [maximo] { return maximo; }, [this] { return antes_da_tecla_; }));
    connect(editor_, &QLineEdit::textEdited, this, [this] { escrito_ = true; });
    connect(editor_, &QLineEdit::textChanged, this,
            [this](const QString& texto) { antes_da_tecla_ = texto; });
    if (inicial != nullptr) editor_->insert(*inicial);
}

// What the cell holds, to be typed over.
void VistaGrelha::poe_no_editor() {
    escrito_ = false;
    antes_da_tecla_ =
        qs(grelha_.texto_para_editar(grelha_.linha_actual - 1, grelha_.coluna_actual, ecra_.formato()));
    editor_->setText(antes_da_tecla_);
    editor_->selectAll();
}

void VistaGrelha::fecha_editor() {
    if (!editor_) return;
    QLineEdit* editor = editor_;
    editor_.clear();
    closeEditor(editor, QAbstractItemDelegate::NoHint);
}

bool VistaGrelha::termina_edicao() {
    if (!editor_) return true;
    if (!escrito_ || ecra_.utilizador_edita_celula(grelha_, editor_->text().toStdString()) || !editor_) {
        fecha_editor();
        return true;
    }
    poe_no_editor();
    editor_->setFocus(Qt::OtherFocusReason);
    return false;
}

bool VistaGrelha::tecla_edicao(QKeyEvent& evento) {
    switch (evento.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (termina_edicao()) celula_seguinte();
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (termina_edicao()) QCoreApplication::sendEvent(this, &evento); // where the window sees to it
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (termina_edicao()) {
            const int linha = grelha_.linha_actual + (evento.key() == Qt::Key_Down ? 1 : -1);
            if (linha >= 1 && linha <= grelha_.linhas())
                ecra_.utilizador_celula(grelha_, linha, grelha_.coluna_actual);
        }
        return true;
    case Qt::Key_Escape:
        fecha_editor();
        ecra_.utilizador_tecla(grelha_, common::tecla_esc, 0);
        return true;
    default:
        return false;
    }
}

} // namespace orvex::platform::qt
