#include "platform/qt/papel/papel.h"

#include "base/descricao.h"
#include "delivery/folha_guia.h"
#include "delivery/guias_remessa.h"
#include "platform/qt/janelas/janela_qt.h"
#include "platform/qt/papel/folha.h"
#include "platform/qt/papel/impressao.h"
#include "platform/qt/textos.h"

#include <QHBoxLayout>
#include <QPagedPaintDevice>
#include <QShortcut>
#include <QToolButton>

namespace orvex::platform::qt {
namespace {

// The note as something to be printed; it must outlive it.
Impresso impresso(const delivery::FolhaGuia& guia) {
    return {.o_que = "a guia",
            .nome = "Guia " + (guia.numero.empty() ? QString("por confirmar") : qs(guia.numero)),
            .folha = folha_a4(),
            .teclas_do_pdf = "Ctrl+Shift+P",
            .dispoe = [&guia](QPagedPaintDevice& papel) {
                return std::make_unique<Folha>(guia, papel, espaco_de(papel));
            }};
}

} // namespace

BotoesPapel::BotoesPapel(JanelaQt& janela, delivery::GuiasRemessa& ecra, const EstadoSessao& sessao,
                         LinhaEstado& linha)
    : janela_(janela), ecra_(ecra), linha_(linha), empresa_(empresa_no_papel(sessao)) {
    auto* disposicao = new QHBoxLayout(this);
    disposicao->setContentsMargins(0, 0, 0, 0);
    disposicao->setSpacing(2);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    novo_botao("Imprimir", "Imprimir a guia", QKeySequence("Ctrl+P"), &BotoesPapel::imprime_guia);
    novo_botao("PDF", "Guardar a guia em PDF", QKeySequence("Ctrl+Shift+P"), &BotoesPapel::guarda_pdf);
}

void BotoesPapel::novo_botao(const QString& texto, const QString& dica, const QKeySequence& teclas,
                             void (BotoesPapel::*faz)()) {
    auto* botao = new QToolButton;
    botao->setObjectName("papel " + texto);
    botao->setText(texto);
    botao->setAccessibleName(dica);
    botao->setToolTip(dica + " (" + teclas.toString() + ")");
    botao->setAutoRaise(true);
    botao->setFocusPolicy(Qt::NoFocus);
    layout()->addWidget(botao);
    connect(botao, &QToolButton::clicked, this, faz);
    auto* atalho = new QShortcut(teclas, &janela_);
    atalho->setWhatsThis(dica); // for the help
    connect(atalho, &QShortcut::activated, this, faz);
}

void BotoesPapel::diz(const std::string& texto) {
    janela_.caixa(texto, ecra_.titulo_janela(), common::Icone::exclamacao, common::Botoes::ok);
}

// A field is left, and so validated, as it is before a button happens; the keyboard comes back to it.
bool BotoesPapel::aceita_o_digitado() {
    if (!janela_.termina_edicao()) return false;
    common::Controlo* com_teclado = ecra_.foco().actual();
    if (com_teclado == nullptr || !ecra_.SSTab1.recebe_foco()) return true;
    if (dynamic_cast<common::Campo*>(com_teclado) == nullptr &&
        dynamic_cast<common::SelectorData*>(com_teclado) == nullptr)
        return true;
    if (!ecra_.utilizador_foca(ecra_.SSTab1)) return false;
    ecra_.utilizador_foca(*com_teclado);
    return true;
}

std::optional<delivery::FolhaGuia> BotoesPapel::folha() {
    if (!aceita_o_digitado()) return {};
    try {
        delivery::FolhaGuia feita;
        if (!ecra_.sem_outros([&] { feita = delivery::folha_da_guia(ecra_, empresa_); })) return {};
        if (!feita.linhas.empty()) return feita;
        diz("A guia não tem linhas: nada há para imprimir.");
    } catch (const std::exception& falha) {
        diz(base::descricao(falha));
    }
    return {};
}

void BotoesPapel::imprime_guia() {
    leva([this](const Impresso& guia) { imprime(janela_, guia); });
}

void BotoesPapel::guarda_pdf() {
    leva([this](const Impresso& guia) {
        const QString caminho = qt::guarda_pdf(janela_, guia);
        if (!caminho.isEmpty()) linha_.mostra_feito("Guia guardada em " + entre_aspas(caminho));
    });
}

void BotoesPapel::leva(const std::function<void(const Impresso&)>& faz) {
    const auto guia = folha();
    if (!guia) return;
    try {
        faz(impresso(*guia));
    } catch (const std::exception& falha) {
        diz(base::descricao(falha));
    }
}

} // namespace orvex::platform::qt
