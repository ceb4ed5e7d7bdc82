#include "platform/qt/janelas/faixa_rascunho.h"

#include "platform/qt/aplicacao.h"
#include "platform/qt/janelas/janela_qt.h"
#include "platform/qt/textos.h"

#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>

namespace orvex::platform::qt {
namespace {

using Oferta = delivery::GuardaRascunhos::Oferta;
using Estado = delivery::GuardaRascunhos::Estado;

QString descricao(const Oferta& oferta) {
    const auto linhas = oferta.rascunho.linhas.size();
    return qs("guia por acabar de " + oferta.quando.data_hora() + ", cliente " + oferta.rascunho.Cliente +
              ", " + std::to_string(linhas) + (linhas == 1 ? " linha" : " linhas"));
}

QString texto(const Oferta& oferta) {
    switch (oferta.estado) {
    case Estado::por_assentar:
        return "Ainda não se sabe se foi emitida a " + descricao(oferta) +
               ". Volta a ver-se quando o programa voltar a ser aberto.";
    case Estado::sem_noticia:
        return "Pode ter sido emitida a " + descricao(oferta) + ". Veja no ERP.";
    case Estado::livre:
        break;
    }
    return "Há uma " + descricao(oferta) + ".";
}

QPushButton* novo_botao(const char* nome, const char* legenda, const char* dica) {
    auto* botao = new QPushButton(legenda);
    botao->setObjectName(nome);
    botao->setToolTip(dica);
    botao->setAutoDefault(false);
    botao->setFocusPolicy(Qt::NoFocus); // the keyboard is where the screen says
    return botao;
}

} // namespace

void FaixaRascunho::poe_sobre(QLabel& titulo) {
    faixa_ = new QFrame(&titulo);
    faixa_->setObjectName("faixaRascunho");
    pinta_fundo(*faixa_, cor_etiquetas, Qt::black);
    QFont letra = QGuiApplication::font(); // not the title's
    letra.setPointSizeF(letra.pointSizeF());
    faixa_->setFont(letra);
    texto_ = new EtiquetaElidida;
    texto_->setObjectName("rascunho");
    retoma_ = novo_botao("retomaRascunho", "&Retomar", "Volta a pôr a guia no ecrã.");
    auto* deita_fora_ = novo_botao("deitaForaRascunho", "Deitar fora (&X)", "Esquece a guia.");
    QObject::connect(retoma_, &QPushButton::clicked, faixa_, [this] { retoma(); });
    QObject::connect(deita_fora_, &QPushButton::clicked, faixa_, [this] { deita_fora(); });

    auto* disposicao = new QHBoxLayout(faixa_);
    disposicao->setContentsMargins(8, 2, 4, 2);
    disposicao->addWidget(texto_, 1);
    disposicao->addWidget(retoma_);
    disposicao->addWidget(deita_fora_);
    titulo.setMinimumHeight(faixa_->sizeHint().height()); // with the offer or without it
    auto* sobre = new QHBoxLayout(&titulo);
    sobre->setContentsMargins(0, 0, 0, 0);
    sobre->addWidget(faixa_);
    faixa_->hide();
}

void FaixaRascunho::actualiza() {
    if (a_retomar_) return;
    const auto de_lado = ecra_.retira_posta_de_lado();
    if (de_lado && (rascunhos_ == nullptr || !rascunhos_->larga())) ecra_.lembra(*de_lado);
    if (rascunhos_ == nullptr) return;
    if (!ecra_.GuiaCarregada()) rascunhos_->guarda(ecra_.rascunho());
    mostra();
}

void FaixaRascunho::mostra() {
    const Oferta* oferta = rascunhos_->oferta();
    const bool a_vista = oferta != nullptr && ecra_.pode_repor();
    if (a_vista) {
        texto_->setText(texto(*oferta));
        retoma_->setVisible(oferta->estado == Estado::livre);
    }
    faixa_->setVisible(a_vista);
}

void FaixaRascunho::retoma() {
    const Oferta* oferta = rascunhos_->oferta();
    if (a_retomar_ || oferta == nullptr || oferta->estado != Estado::livre) return;
    janela_.larga_edicao();
    {
        const QScopedValueRollback a_retomar(a_retomar_, true);
        if (ecra_.utilizador_repoe(oferta->rascunho)) rascunhos_->retoma();
    }
    actualiza();
}

void FaixaRascunho::deita_fora() {
    const Oferta* oferta = rascunhos_->oferta();
    if (a_retomar_ || oferta == nullptr) return;
    if (oferta->estado == Estado::livre) ecra_.lembra(oferta->rascunho);
    rascunhos_->deita_fora();
    mostra();
}

bool FaixaRascunho::tecla(const QObject& alvo, const QKeyEvent& evento) {
    if (!evento.matches(QKeySequence::Undo)) return false;
    const auto* linha = qobject_cast<const QLineEdit*>(&alvo);
    if (linha != nullptr && linha->isUndoAvailable()) return false;
    if (!evento.isAutoRepeat())
        ecra_.utilizador_desfaz(); // held down, it stops at the end of the field's own
    return true;
}

} // namespace orvex::platform::qt
