#include "platform/qt/vinculos/vinculo.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/caixa.h"
#include "platform/qt/grelhas/vista_grelha.h"
#include "platform/qt/janelas/janela_qt.h"
#include "platform/qt/teclas.h"
#include "platform/qt/textos.h"
#include "platform/qt/vinculos/limite_texto.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTabWidget>

namespace orvex::platform::qt {

Vinculo::Vinculo(JanelaQt& janela, common::Controlo& controlo, QWidget& widget)
    : janela_(janela), controlo_(controlo), widget_(widget) {
    const QString dica = qs(controlo.ToolTip);
    widget.setObjectName(qs(controlo.nome));
    widget.setToolTip(dica);
    widget.setAccessibleDescription(dica);
    // The keyboard goes where the screen says: a click asks it first, and so does the wheel.
    widget.setFocusPolicy(Qt::TabFocus);
    QSizePolicy politica = widget.sizePolicy();
    politica.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(politica);
}

common::Ecra& Vinculo::ecra() const { return janela_.ecra(); }

void Vinculo::mostra() {
    if (const QString nome = qs(controlo_.Legenda); !nome.isEmpty() && widget_.accessibleName() != nome)
        widget_.setAccessibleName(nome);
    if (widget_.isEnabledTo(widget_.parentWidget()) != controlo_.Enabled)
        widget_.setEnabled(controlo_.Enabled);
    if (widget_.isHidden() == controlo_.Visible) widget_.setVisible(controlo_.Visible);
    mostra_acesso();
}

// Entry field

VinculoCampo::VinculoCampo(JanelaQt& janela, common::Campo& campo, QLineEdit& linha)
    : Vinculo(janela, campo, linha), campo_(campo), linha_(linha) {
    linha.setValidator(new LimiteTexto(
        &linha, [&campo] { return campo.MaxLength; }, [&campo] { return qs(campo.Text); }));
    if (campo.numerico) linha.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    linha.setProperty(marca_de_quantidade, campo.numerico);
    // What is closed to typing is there to be read.
    QPalette cores = linha.palette();
    cores.setColor(QPalette::Disabled, QPalette::Text, cores.color(QPalette::Active, QPalette::Text));
    linha.setPalette(cores);
    QObject::connect(&linha, &QLineEdit::textEdited, &linha,
                     [this](const QString& texto) { ecra().utilizador_edita(campo_, texto.toStdString()); });
}

void VinculoCampo::mostra() {
    Vinculo::mostra();
    if (linha_.isReadOnly() != campo_.so_leitura) {
        linha_.setReadOnly(campo_.so_leitura);
        QPalette cores = linha_.palette();
        cores.setColor(QPalette::Base, campo_.so_leitura ? cor_leitura : cores_do_programa().base().color());
        linha_.setPalette(cores);
    }
    if (const QString texto = qs(campo_.Text); texto != linha_.text()) {
        linha_.setText(texto);
        if (linha_.hasFocus())
            recebeu_foco();
        else
            linha_.setCursorPosition(0); // a long text shows its beginning
    }
}

void VinculoCampo::recebeu_foco() { linha_.setSelection(campo_.SelStart, campo_.SelLength); }

bool VinculoCampo::tecla(QKeyEvent& evento) {
    if (e_enter(evento))
        ecra().utilizador_tecla(campo_, common::tecla_enter);
    else if (evento.key() == Qt::Key_Escape)
        esc();
    else if (evento.key() == Qt::Key_F4 && evento.modifiers() == Qt::NoModifier)
        ecra().utilizador_lista(campo_);
    else
        return false;
    return true;
}

void VinculoCampo::esc() {
    if (!fecha_ || janela_.pode_sair()) ecra().utilizador_tecla(campo_, common::tecla_esc);
}

QString VinculoCampo::ajuda() const {
    return QString(com_lista_ ? "F4 lista   " : "") + "Enter seguinte   " +
           (fecha_ ? "Esc sair" : "Esc anterior");
}

// Button

VinculoBotao::VinculoBotao(JanelaQt& janela, common::Botao& botao, QAbstractButton& widget)
    : Vinculo(janela, botao, widget), botao_(botao), tecla_(widget) {
    QObject::connect(&widget, &QAbstractButton::clicked, &widget, [this] { prime(); });
}

void VinculoBotao::mostra() {
    Vinculo::mostra();
    if (const QString texto = qs(botao_.Caption); texto != tecla_.text()) tecla_.setText(texto);
}

void VinculoBotao::prime() {
    janela_.diz({});
    ecra().esquece_feito();
    if (botao_.papel == common::Botao::Papel::sai && !janela_.pode_sair()) return;
    if (botao_.papel != common::Botao::Papel::faz)
        janela_.larga_edicao();
    else if (!janela_.termina_edicao())
        return;
    ecra().utilizador_prime(botao_);
}

bool VinculoBotao::tecla(QKeyEvent& evento) {
    switch (evento.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        prime();
        return true;
    case Qt::Key_Left:
    case Qt::Key_Up:
        ecra().utilizador_avanca(-1);
        return true;
    case Qt::Key_Right:
    case Qt::Key_Down:
        ecra().utilizador_avanca(+1);
        return true;
    default:
        return false;
    }
}

bool VinculoBotao::rato(QEvent&) {
    // A box that came up when the field was left has swallowed the release of the mouse button.
    if (!janela_.caixa_neste_evento()) return false;
    prime();
    return true;
}

QString VinculoBotao::nome() const {
    return legenda().empty() ? qs(botao_.Caption).remove('&') : tecla_.accessibleName();
}

QKeySequence VinculoBotao::tecla_do_nome() const {
    return legenda().empty() ? QKeySequence::mnemonic(qs(botao_.Caption)) : acesso();
}

QString VinculoBotao::ajuda() const {
    return QString("Enter carrega   Tab seguinte") + (botao_.cancela() != nullptr ? "   Esc cancela" : "");
}

bool VinculoBotao::atalho() {
    prime();
    return true;
}

// Combo

VinculoCombo::VinculoCombo(JanelaQt& janela, common::Combo& combo, QComboBox& caixa)
    : Vinculo(janela, combo, caixa), combo_(combo), caixa_(caixa) {
    QObject::connect(&caixa, &QComboBox::currentIndexChanged, &caixa, [this](int indice) {
        ecra().utilizador_escolhe(combo_, indice);
        janela_.mostra();
    });
}

void VinculoCombo::mostra() {
    Vinculo::mostra();
    const QSignalBlocker calado(caixa_);
    if (itens_ != combo_.itens) {
        itens_ = combo_.itens;
        caixa_.clear();
        for (const std::string& item : itens_)
            caixa_.addItem(qs(item));
    }
    if (caixa_.currentIndex() != combo_.ListIndex) caixa_.setCurrentIndex(combo_.ListIndex);
}

bool VinculoCombo::tecla(QKeyEvent& evento) {
    if (e_enter(evento))
        ecra().utilizador_avanca(+1);
    else if (evento.key() == Qt::Key_Escape)
        ecra().utilizador_avanca(-1);
    else
        return false;
    return true;
}

// Tabs

VinculoSeparadores::VinculoSeparadores(JanelaQt& janela, common::Separadores& separadores,
                                       QTabWidget& paginas)
    : Vinculo(janela, separadores, paginas), separadores_(separadores), paginas_(paginas) {
    paginas.setFocusPolicy(Qt::NoFocus);
    paginas.tabBar()->setFocusPolicy(Qt::TabFocus);
    paginas.tabBar()->setAccessibleName("Páginas");
}

QWidget& VinculoSeparadores::alvo_do_foco() const { return *paginas_.tabBar(); }

void VinculoSeparadores::mostra() {
    Vinculo::mostra();
    for (int i = 0; i < paginas_.count() && i < static_cast<int>(separadores_.Captions.size()); ++i) {
        const QString texto = qs(separadores_.Captions[static_cast<std::size_t>(i)]);
        if (paginas_.tabText(i) != texto) paginas_.setTabText(i, texto);
    }
    if (paginas_.currentIndex() != separadores_.Tab) paginas_.setCurrentIndex(separadores_.Tab);
}

bool VinculoSeparadores::muda(int pagina) {
    if (!separadores_.recebe_foco() || pagina < 0 || pagina >= paginas_.count()) return false;
    if (janela_.termina_edicao()) ecra().utilizador_pagina(separadores_, pagina);
    return separadores_.Tab == pagina;
}

bool VinculoSeparadores::vira(int passos) {
    const int paginas = paginas_.count();
    return muda((separadores_.Tab + passos + paginas) % paginas);
}

bool VinculoSeparadores::tecla(QKeyEvent& evento) {
    switch (evento.key()) {
    case Qt::Key_Left:
        muda(separadores_.Tab - 1);
        return true;
    case Qt::Key_Right:
        muda(separadores_.Tab + 1);
        return true;
    case Qt::Key_Escape:
        ecra().utilizador_avanca(-1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        ecra().utilizador_avanca(+1);
        return true;
    default:
        return false;
    }
}

bool VinculoSeparadores::rato(QEvent& evento) {
    // The page turns when the screen has let it: the bar itself never turns it.
    const auto& premido = static_cast<QMouseEvent&>(evento);
    const int pagina = paginas_.tabBar()->tabAt(premido.position().toPoint());
    if (premido.button() == Qt::LeftButton && pagina != separadores_.Tab) muda(pagina);
    return true;
}

// Label

VinculoEtiqueta::VinculoEtiqueta(JanelaQt& janela, common::Etiqueta& etiqueta, QLabel& texto)
    : Vinculo(janela, etiqueta, texto), etiqueta_(etiqueta), texto_(texto) {
    texto.setFocusPolicy(Qt::NoFocus);
    texto.setTextFormat(Qt::PlainText);
}

void VinculoEtiqueta::mostra() {
    // A disabled label stays as readable as any other.
    if (texto_.isHidden() == etiqueta_.Visible) texto_.setVisible(etiqueta_.Visible);
    if (const QString texto = qs(etiqueta_.Caption); texto != texto_.text()) texto_.setText(texto);
}

// Grid

VinculoGrelha::VinculoGrelha(JanelaQt& janela, common::Grelha& grelha, VistaGrelha& vista)
    : Vinculo(janela, grelha, vista), vista_(vista) {
    vista.define_janela(
        {[this](int passos) { ecra().utilizador_avanca(passos); },
         [this] { return janela_.termina_edicao() && ecra().utilizador_foca(this->controlo()); },
         [this](const QString& texto) { janela_.diz(texto); }, [this] { janela_.consulta_o_actual(); }});
}

void VinculoGrelha::mostra() {
    Vinculo::mostra();
    vista_.mostra();
}

bool VinculoGrelha::tecla(QKeyEvent& evento) { return vista_.tecla(evento); }
bool VinculoGrelha::termina_edicao() { return vista_.termina_edicao(); }
bool VinculoGrelha::larga_procura() { return vista_.larga_procura(); }
void VinculoGrelha::larga_edicao() { vista_.fecha_editor(); }
void VinculoGrelha::guarda() const { vista_.guarda_larguras(); }
QString VinculoGrelha::ajuda() const { return vista_.ajuda(); }

} // namespace orvex::platform::qt
