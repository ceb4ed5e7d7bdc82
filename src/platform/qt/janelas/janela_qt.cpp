#include "platform/qt/janelas/janela_qt.h"

#include "base/descricao.h"
#include "platform/qt/caixa.h"
#include "platform/qt/espera.h"
#include "platform/qt/listas/janela_lista.h"
#include "platform/qt/teclas.h"
#include "platform/qt/textos.h"

#include <QAbstractScrollArea>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QSplitter>
#include <QTableView>

#include <algorithm>
#include <optional>
#include <utility>

namespace orvex::platform::qt {

namespace {

using Relogio = std::chrono::steady_clock;

struct CursorEspera {
    CursorEspera() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~CursorEspera() { QGuiApplication::restoreOverrideCursor(); }
    CursorEspera(const CursorEspera&) = delete;
};

// While a box is up, the busy cursor rests, and nobody waits for the handler.
struct CursorNormal {
    CursorNormal(bool ocupado, Relogio::time_point& inicio) : ocupado_(ocupado), inicio_(inicio) {
        if (ocupado_) QGuiApplication::restoreOverrideCursor();
    }
    ~CursorNormal() {
        if (ocupado_) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        inicio_ = Relogio::now();
    }
    CursorNormal(const CursorNormal&) = delete;
    bool ocupado_;
    Relogio::time_point& inicio_;
};

} // namespace

JanelaQt::JanelaQt(common::Ecra& ecra, const EstadoSessao& sessao, QSize tamanho_habitual)
    : ecra_(ecra), tamanho_habitual_(tamanho_habitual), lugar_(qs(ecra.titulo_janela())), sessao_(sessao),
      linha_estado_(new LinhaEstado(sessao)) {
    setObjectName("janela");
    setWindowTitle(qs(ecra.titulo_janela()));
    linha_estado_->setParent(this);
    teclas_da_janela();
    ecra.define_janela(*this);
}

JanelaQt::~JanelaQt() {
    if (ocupado_) QGuiApplication::restoreOverrideCursor();
}

void JanelaQt::abre() {
    mostra();
    lugar_.repoe(*this, tamanho_habitual_);
    for (const auto& [divisao, nome] : divisoes_)
        repoe_divisao(*divisao, nome);
    show();
    ecra_.utilizador_abre();
}

// What the screen asks

void JanelaQt::mostra() {
    if (a_mostrar_) return;
    {
        const QScopedValueRollback a_mostrar(a_mostrar_, true);
        for (const auto& vinculo : vinculos_)
            vinculo->mostra();
        linha_estado_->mostra_estado(qs(ecra_.estado()));
        linha_estado_->mostra_feito(qs(ecra_.feito()));
    }
    poe_foco();
}

void JanelaQt::da_foco(common::Controlo& controlo) {
    mostra();
    if (Vinculo* vinculo = vinculo_de(&controlo)) vinculo->recebeu_foco();
}

namespace {

void poe_a_vista(QScrollArea& area, const QWidget& alvo, const QRect& parte) {
    const QPoint meio = alvo.mapTo(area.widget(), parte.center());
    area.ensureVisible(meio.x(), meio.y(), parte.width() / 2 + 4, parte.height() / 2 + 4);
}

// Scrolls what lies around the widget that has the keyboard; of a grid the current cell is what counts.
void poe_a_vista(QWidget& alvo) {
    for (QWidget* em_volta = alvo.parentWidget(); em_volta != nullptr; em_volta = em_volta->parentWidget()) {
        auto* area = qobject_cast<QScrollArea*>(em_volta);
        if (area == nullptr) continue;
        poe_a_vista(*area, alvo, alvo.rect());
        if (const auto* grelha = qobject_cast<QTableView*>(&alvo))
            poe_a_vista(*area, *grelha->viewport(), grelha->visualRect(grelha->currentIndex()));
    }
}

} // namespace

void JanelaQt::poe_foco() {
    Vinculo* vinculo = vinculo_de(ecra_.foco().actual());
    if (vinculo == nullptr) return;
    QWidget& alvo = vinculo->alvo_do_foco();
    const QWidget* com_foco = focusWidget();
    if (com_foco == nullptr || (com_foco != &alvo && !alvo.isAncestorOf(com_foco)))
        alvo.setFocus(Qt::OtherFocusReason);
    poe_a_vista(alvo);
    if (ultimo_foco_ == &vinculo->controlo()) return;
    ultimo_foco_ = &vinculo->controlo();
    vinculo->recebeu_foco();
    linha_estado_->mostra_ajuda(vinculo->ajuda());
}

int JanelaQt::caixa(const std::string& texto, const std::string& titulo, common::Icone icone,
                    common::Botoes botoes) {
    const CursorNormal cursor(ocupado_, inicio_);
    ++caixas_;
    return mostra_caixa(this, texto, titulo, icone, botoes);
}

std::string JanelaQt::escolhe(const common::ListaPesquisa& lista) {
    ++caixas_;
    const CursorNormal cursor(ocupado_, inicio_);
    try {
        std::optional<JanelaLista> janela;
        {
            const CursorEspera espera;
            janela.emplace(this, lista, ecra_.formato(),
                           [this](const auto& codigo) { return consulta(codigo); });
        }
        janela->exec();
        return janela->escolha();
    } catch (const std::exception& falha) {
        mostra_caixa(this, base::descricao(falha), lista.titulo, common::Icone::critico, common::Botoes::ok);
        return {};
    }
}

void JanelaQt::ocupado(bool sim) {
    if (sim == ocupado_) return;
    ocupado_ = sim;
    inicio_ = Relogio::now();
    linha_estado_->define_progresso({});
    if (sim) {
        comeca_outra_espera();
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        return;
    }
    QGuiApplication::restoreOverrideCursor();
    if (std::exchange(fecha_depois_, false))
        JanelaQt::descarrega();
    else if (std::exchange(quer_fechar_, false))
        QMetaObject::invokeMethod(
            this, [this] { close(); }, Qt::QueuedConnection);
}

bool JanelaQt::prossegue(const std::string& progresso) {
    if (!ocupado_) return true;
    linha_estado_->define_progresso(qs(progresso + " (Esc desiste)"));
    esc_gasto_ = !da_um_momento(inicio_);
    return !esc_gasto_;
}

void JanelaQt::descarrega() {
    saida_aceite_ = true;
    if (ocupado_) {
        fecha_depois_ = true;
        return;
    }
    QMetaObject::invokeMethod(
        this, [this] { close(); }, Qt::QueuedConnection);
}

void JanelaQt::closeEvent(QCloseEvent* evento) {
    if (ocupado_) { // a handler waits for the answer to a box: closing would take the sessions from under it
        quer_fechar_ = true;
        evento->ignore();
        return;
    }
    if (!pode_sair()) return evento->ignore();
    lugar_.guarda(*this);
    for (const auto& [divisao, nome] : divisoes_)
        guarda_divisao(*divisao, nome);
    for (const auto& vinculo : vinculos_)
        vinculo->guarda();
    evento->accept();
    ecra_.utilizador_fecha();
    if (const auto ao_fechar = std::exchange(ao_fechar_, nullptr)) ao_fechar();
}

// What the user does

bool JanelaQt::termina_edicao() {
    return std::all_of(vinculos_.begin(), vinculos_.end(),
                       [](const auto& vinculo) { return vinculo->termina_edicao(); });
}

void JanelaQt::larga_edicao() {
    for (const auto& vinculo : vinculos_)
        vinculo->larga_edicao();
}

bool JanelaQt::pode_sair() {
    if (saida_aceite_ || !ecra_.por_gravar()) return true;
    if (a_perguntar_) return false;
    const QScopedValueRollback a_perguntar(a_perguntar_, true);
    ++caixas_;
    saida_aceite_ = mostra_escolha(this, "Abandonar sem gravar?", ecra_.titulo_janela(), "&Sim", "&Não");
    return saida_aceite_;
}

bool JanelaQt::entra(Vinculo& destino) {
    return termina_edicao() && ecra_.utilizador_foca(destino.controlo());
}

bool JanelaQt::tecla(Vinculo& vinculo, QKeyEvent& evento) {
    if (!so_modificador(evento)) {
        diz({});
        if (!evento.isAutoRepeat()) { // that confirmed, and is still held down
            ecra_.esquece_feito();
            linha_estado_->mostra_feito({});
        }
    }
    if (evento.key() == Qt::Key_Tab || evento.key() == Qt::Key_Backtab) {
        const bool recua = evento.key() == Qt::Key_Backtab || evento.modifiers().testFlag(Qt::ShiftModifier);
        if (!passa_a_pagina(recua ? -1 : +1)) ecra_.utilizador_avanca(recua ? -1 : +1);
        return true;
    }
    if (evento.key() == Qt::Key_Escape) {
        esc_gasto_ = esc_gasto_ && evento.isAutoRepeat();
        if (esc_gasto_ || vinculo.larga_procura() || ecra_.utilizador_esc(vinculo.controlo())) return true;
    }
    return vinculo.tecla(evento);
}

bool JanelaQt::eventFilter(QObject* alvo, QEvent* evento) {
    Vinculo* vinculo = por_alvo_.value(alvo, nullptr);
    if (vinculo == nullptr) return QWidget::eventFilter(alvo, evento);
    switch (evento->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        diz({});
        caixas_antes_ = caixas_;
        if (!vinculo->entra_ao_premir()) return false;
        return !entra(*vinculo) || vinculo->rato(*evento);
    case QEvent::Drop: // as a click, and then as a paste
        return !entra(*vinculo);
    case QEvent::KeyPress:
        return tecla(*vinculo, static_cast<QKeyEvent&>(*evento));
    case QEvent::Shortcut:
        return vinculo->atalho();
    case QEvent::Wheel:
        // The wheel turns what has the keyboard, and pages of grids; nothing changes in passing.
        if (qobject_cast<QAbstractScrollArea*>(alvo->parent()) != nullptr || vinculo->widget().hasFocus())
            return false;
        evento->ignore(); // it goes on to what scrolls around it
        return true;
    default:
        return QWidget::eventFilter(alvo, evento);
    }
}

Vinculo* JanelaQt::vinculo_de(const common::Controlo* controlo) const {
    for (const auto& vinculo : vinculos_)
        if (&vinculo->controlo() == controlo) return vinculo.get();
    return nullptr;
}

} // namespace orvex::platform::qt
