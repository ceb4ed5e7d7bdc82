// The keys of the window, wherever the keyboard is in it.
#include "platform/qt/consulta/barra_levar.h"
#include "platform/qt/consulta/caminho.h"
#include "platform/qt/consulta/janela_consulta.h"
#include "platform/qt/consulta/procura.h"
#include "platform/qt/janelas/janela_ajuda.h"
#include "platform/qt/teclas.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLayout>
#include <QLineEdit>
#include <QShortcut>
#include <QStackedWidget>
#include <QToolButton>

#include <algorithm>
#include <string_view>

namespace orvex::platform::qt::consulta {

void JanelaConsulta::teclas() {
    const auto tecla = [this](const char* nome, const char* que, auto accao) {
        auto* atalho = new QShortcut(QKeySequence(nome), this);
        atalho->setWhatsThis(que);
        atalho->setAutoRepeat(std::string_view(nome).starts_with("Alt+")); // the others ask, each time
        connect(atalho, &QShortcut::activated, this, accao);
    };
    tecla("F1", "Esta ajuda", [this] { mostra_ajuda(); });
    tecla("F5", "Pergunta outra vez", [this] { outra_vez(); });
    tecla("F6", "Parados", [this] { findChild<QToolButton*>("ir_parados")->click(); });
    tecla("F7", "Movimentos", [this] { findChild<QToolButton*>("ir_movimentos")->click(); });
    tecla("Alt+Left", "Vista anterior", [this] { anda(-1); });
    tecla("Alt+Right", "Vista seguinte", [this] { anda(+1); });
    tecla("Ctrl+F", "Filtra o quadro", [this] { filtra(); });
    const auto vira = [this](int passos) {
        if (Pagina* pagina = caminho_->actual(); pagina != nullptr && !procura_->a_vista())
            pagina->vira(passos);
    };
    tecla("Ctrl+Tab", "Quadro seguinte", [=] { vira(+1); });
    tecla("Ctrl+Shift+Tab", "Quadro anterior", [=] { vira(-1); });
    QToolButton* ajuda = botao_pequeno("botao_ajuda", "?", "Ajuda (F1)");
    ajuda->setAutoRaise(true);
    connect(ajuda, &QToolButton::clicked, this, [this] { mostra_ajuda(); });
    linha_estado_->layout()->addWidget(ajuda);
}

void JanelaConsulta::mostra_ajuda() {
    QString texto;
    for (const QShortcut* atalho : findChildren<QShortcut*>())
        if (!atalho->whatsThis().isEmpty())
            texto += atalho->key().toString().replace("Left", "Esquerda").replace("Right", "Direita") + '\t' +
                     atalho->whatsThis() + '\n';
    texto += "Enter\tAbre a linha, ou o código que nela está\n"
             "Letras\tNum quadro, filtram; onde nada se escreve, procuram\n"
             "Esc\tDesiste da resposta; volta à procura; limpa-a; sai\n"
             "Alt+P\tProcurar\n";
    JanelaAjuda(*this, texto, sessao_).exec();
}

void JanelaConsulta::outra_vez() {
    if (procura_->a_vista()) return procura_->outra_vez();
    if (Pagina* pagina = caminho_->actual()) pagina->pergunta();
}

void JanelaConsulta::filtra() {
    Pagina* pagina = caminho_->actual();
    if (pagina == nullptr || procura_->a_vista()) return procura_->foca();
    if (const VistaQuadro* tabela = pagina->actual()) tabela->filtra();
}

void JanelaConsulta::esc() {
    Pagina* pagina = caminho_->actual();
    if (procura_->a_vista() && procura_->a_meio()) return procura_->desiste();
    if (!procura_->a_vista() && pagina != nullptr && pagina->a_meio()) return pagina->desiste();
    if (!procura_->campo().hasFocus()) return procura_->foca();
    if (!procura_->campo().text().isEmpty()) return procura_->campo().clear();
    close();
}

// As one reads: search, view, foot. The toolkit's own order is that in which they came, and views come last.
std::vector<QWidget*> JanelaConsulta::por_ordem_do_teclado() {
    std::vector<QWidget*> todos{&procura_->campo()};
    for (const QWidget* parte : {pilha_->currentWidget(), static_cast<QWidget*>(barra_)}) {
        const auto antes = std::ssize(todos);
        for (QWidget* este : parte->findChildren<QWidget*>())
            if ((este->focusPolicy() & Qt::TabFocus) != 0 && este->focusProxy() == nullptr &&
                este->isEnabled() && este->isVisible())
                todos.push_back(este);
        std::sort(todos.begin() + antes, todos.end(), [this](const QWidget* um, const QWidget* outro) {
            const QPoint aqui = um->mapTo(this, QPoint()), ali = outro->mapTo(this, QPoint());
            return std::pair(aqui.y(), aqui.x()) < std::pair(ali.y(), ali.x());
        });
    }
    return todos;
}

bool JanelaConsulta::focusNextPrevChild(bool seguinte) {
    const std::vector<QWidget*> todos = por_ordem_do_teclado();
    const auto quantos = std::ssize(todos);
    const auto onde = std::find(todos.begin(), todos.end(), focusWidget()) - todos.begin();
    const auto ali = onde == quantos ? 0 : (onde + (seguinte ? 1 : quantos - 1)) % quantos;
    todos[static_cast<std::size_t>(ali)]->setFocus(seguinte ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void JanelaConsulta::keyPressEvent(QKeyEvent* evento) {
    if (evento->key() != Qt::Key_Escape) return QWidget::keyPressEvent(evento);
    if (!evento->isAutoRepeat()) esc(); // held down it would go on to close the window
}

bool JanelaConsulta::eventFilter(QObject* alvo, QEvent* evento) {
    const auto tipo = evento->type();
    if (tipo != QEvent::KeyPress && tipo != QEvent::MouseButtonPress && tipo != QEvent::MouseButtonDblClick)
        return false;
    auto* widget = qobject_cast<QWidget*>(alvo);
    if (widget == nullptr || widget->window() != this) return false;
    if (tipo != QEvent::KeyPress) {
        const auto botao = static_cast<QMouseEvent*>(evento)->button();
        linha_estado_->mostra_aviso({});
        if (botao != Qt::BackButton && botao != Qt::ForwardButton) return false;
        anda(botao == Qt::BackButton ? -1 : +1);
        return true;
    }
    auto& tecla = static_cast<QKeyEvent&>(*evento);
    // An event goes on to those around a widget that left it.
    if (widget != focusWidget()) return false;
    if (!so_modificador(tecla) && !e_enter(tecla)) linha_estado_->mostra_aviso({});
    // A reader sends its codes wherever the keyboard is; tables and fields see to theirs.
    const bool toma_texto = qobject_cast<QLineEdit*>(widget) != nullptr ||
                            qobject_cast<QAbstractItemView*>(widget) != nullptr ||
                            qobject_cast<QComboBox*>(widget) != nullptr;
    if (toma_texto || escrito(tecla).trimmed().isEmpty()) return false;
    procura_->escreve(tecla);
    return true;
}

} // namespace orvex::platform::qt::consulta
