// The keys that a window has wherever the keyboard is in it.
#include "platform/qt/janelas/janela_ajuda.h"
#include "platform/qt/janelas/janela_qt.h"
#include "platform/qt/textos.h"

#include <QLayout>
#include <QShortcut>
#include <QToolButton>

#include <algorithm>

namespace orvex::platform::qt {

void JanelaQt::teclas_da_janela() {
    const auto tecla = [this](const char* nome, auto accao) {
        auto* atalho = new QShortcut(QKeySequence(nome), this);
        connect(atalho, &QShortcut::activated, this, accao);
    };
    tecla("F1", [this] { mostra_ajuda(); });
    auto* consulta = new QShortcut(QKeySequence("Ctrl+I"), this);
    consulta->setWhatsThis("Abrir na consulta o artigo ou o cliente em que está");
    consulta->setAutoRepeat(false); // each opens a window
    connect(consulta, &QShortcut::activated, this, [this] { consulta_o_actual(); });
    auto* botao = new QToolButton; // for the mouse, and to be found
    botao->setObjectName("botao_ajuda");
    botao->setText("?");
    botao->setToolTip("Ajuda (F1)");
    botao->setAccessibleName("Ajuda");
    botao->setAutoRaise(true);
    botao->setFocusPolicy(Qt::NoFocus);
    connect(botao, &QToolButton::clicked, this, [this] { mostra_ajuda(); });
    linha_estado_->layout()->addWidget(botao);
    tecla("Ctrl+Tab", [this] { vira_pagina(+1); });
    tecla("Ctrl+Shift+Tab", [this] { vira_pagina(-1); });
    tecla("Alt+1", [this] { muda_de_pagina(0); });
    tecla("Alt+2", [this] { muda_de_pagina(1); });
}

VinculoSeparadores* JanelaQt::separadores() const {
    for (const auto& vinculo : vinculos_)
        if (auto* este = dynamic_cast<VinculoSeparadores*>(vinculo.get())) return este;
    return nullptr;
}

void JanelaQt::vira_pagina(int passos) {
    if (VinculoSeparadores* paginas = separadores()) paginas->vira(passos);
}

void JanelaQt::muda_de_pagina(int pagina) {
    if (VinculoSeparadores* paginas = separadores()) paginas->muda(pagina);
}

void JanelaQt::vai_para(Vinculo& destino) {
    if (ocupado_ || !destino.alcancavel()) return;
    const common::Controlo& controlo = destino.controlo();
    VinculoSeparadores* paginas = separadores();
    const bool noutra =
        paginas != nullptr && controlo.dentro_de == &paginas->controlo() && !controlo.a_vista();
    if (!noutra || paginas->muda(controlo.pagina)) entra(destino);
}

// The Tab key goes through all that there is to fill in, page after page; the order of the rules, which Enter
// follows, passes over what is out of sight.
bool JanelaQt::passa_a_pagina(int passos) {
    const common::Controlo* actual = ecra_.foco().actual();
    const VinculoSeparadores* paginas = separadores();
    if (actual == nullptr || paginas == nullptr || actual->dentro_de != &paginas->controlo()) return false;
    const auto& ordem = ecra_.foco().ordem();
    auto i = std::find(ordem.begin(), ordem.end(), actual) - ordem.begin();
    for (i += passos; i >= 0 && i < std::ssize(ordem); i += passos) {
        const common::Controlo* este = ordem[static_cast<std::size_t>(i)];
        Vinculo* vinculo = vinculo_de(este);
        if (este->dentro_de != actual->dentro_de || este->recebe_foco()) return false;
        if (este->pagina == actual->pagina || vinculo == nullptr || !vinculo->alcancavel()) continue;
        vai_para(*vinculo);
        return true;
    }
    return false;
}

QString JanelaQt::texto_das_teclas() const {
    QString texto = "F1\tEsta ajuda\n";
    if (separadores() != nullptr)
        texto += "Ctrl+Tab\tPágina seguinte (Alt+1 e Alt+2: a primeira e a segunda)\n";
    for (const QShortcut* atalho : findChildren<QShortcut*>()) // of what has a name of its own
        if (!atalho->whatsThis().isEmpty())
            texto += atalho->key().toString() + '\t' + atalho->whatsThis() + '\n';
    for (const auto& vinculo : vinculos_) {
        const QKeySequence tecla = vinculo->tecla_do_nome();
        const bool botao = dynamic_cast<const VinculoBotao*>(vinculo.get()) != nullptr;
        const QString ajuda = botao ? QString() : vinculo->ajuda();
        if (!vinculo->alcancavel() || (tecla.isEmpty() && ajuda.isEmpty())) continue;
        texto += tecla.toString() + '\t' + vinculo->nome();
        if (!ajuda.isEmpty()) texto += ": " + QString(ajuda).replace("   ", "; ");
        texto += '\n';
    }
    return texto;
}

void JanelaQt::mostra_ajuda() {
    if (ocupado_) return;
    JanelaAjuda(*this, texto_das_teclas(), sessao_).exec();
}

void JanelaQt::consulta_o_actual() {
    if (!ocupado_) diz(consulta(ecra_.codigo_actual()));
}

QString JanelaQt::consulta(const std::optional<common::CodigoEscrito>& codigo) const {
    if (!codigo) return "Aqui não há artigo nem cliente para consultar.";
    const std::string impedimento = abre_consulta_(*codigo);
    if (!impedimento.empty()) return qs(impedimento);
    return (codigo->de == common::CodigoDe::artigo ? "A abrir na consulta o artigo "
                                                   : "A abrir na consulta o cliente ") +
           qs(codigo->codigo) + "...";
}

} // namespace orvex::platform::qt
