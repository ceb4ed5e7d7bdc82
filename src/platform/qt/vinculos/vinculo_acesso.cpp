// The access key of a control, and when it leads there.
#include "platform/qt/acesso.h"
#include "platform/qt/janelas/janela_qt.h"
#include "platform/qt/vinculos/vinculo.h"

#include <QShortcut>

namespace orvex::platform::qt {

bool Vinculo::atalho() {
    janela_.vai_para(*this);
    return true;
}

QKeySequence Vinculo::acesso() const {
    const QChar letra = letra_de_acesso(qs(legenda()));
    return letra.isNull() ? QKeySequence() : QKeySequence(QString("Alt+") + letra);
}

bool Vinculo::alcancavel() const {
    bool a_vista = true;
    for (const common::Controlo* este = &controlo_; este != nullptr; este = este->dentro_de)
        a_vista = a_vista && este->Visible;
    return a_vista && controlo_.Enabled;
}

void Vinculo::mostra_acesso() {
    const QKeySequence teclas = acesso();
    if (acesso_ == nullptr) {
        if (teclas.isEmpty()) return;
        acesso_ = new QShortcut(&janela_);
        QObject::connect(acesso_, &QShortcut::activated, &widget_, [this] { atalho(); });
    }
    if (acesso_->key() != teclas) acesso_->setKey(teclas);
    acesso_->setEnabled(alcancavel());
}

} // namespace orvex::platform::qt
