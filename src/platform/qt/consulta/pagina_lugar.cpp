// Where the user is in a view.
#include "platform/qt/consulta/pagina.h"
#include "platform/qt/textos.h"

#include <QTabWidget>
#include <QTableView>

namespace orvex::platform::qt::consulta {

void Pagina::foca() {
    quer_foco_ = a_meio();
    if (VistaQuadro* tabela = actual()) {
        quer_foco_ = false;
        tabela->tabela().setFocus();
    } else {
        setFocus();
    }
}

VistaQuadro* Pagina::actual() const {
    for (const Bloco& este : blocos_)
        if (este.tabela && lugar_de(este.tabela) == separadores_->currentIndex()) return este.tabela;
    return nullptr;
}

std::string Pagina::separador() const {
    const QWidget* folha = separadores_->currentWidget();
    return folha != nullptr ? folha->objectName().toStdString() : std::string();
}

void Pagina::abre_separador(const std::string& chave) { quer_separador_ = chave; }

void Pagina::vira(int passos) {
    const int quantos = separadores_->count();
    if (quantos < 2) return;
    separadores_->setCurrentIndex((separadores_->currentIndex() + passos + quantos) % quantos);
    actual()->tabela().setFocus();
}

int Pagina::lugar_de(const VistaQuadro* tabela) const {
    return tabela == nullptr ? -1 : separadores_->indexOf(tabela->parentWidget());
}

void Pagina::guarda_lugar() {
    if (separadores_->count() == 0) return;
    quer_separador_ = separador();
    for (const Bloco& este : blocos_)
        // One that is asked for again before it was whole stays as the user left it.
        if (este.tabela && (este.tabela->tocada() || !lugares_.contains(este.parte.quadro.chave)))
            lugares_[este.parte.quadro.chave] = {este.tabela->filtro(),
                                                 este.tabela->tabela().currentIndex().row()};
}

void Pagina::repoe_lugar() {
    for (const Bloco& este : blocos_) {
        const auto lugar = lugares_.find(este.parte.quadro.chave);
        if (!este.tabela || lugar == lugares_.end() || este.tabela->tocada()) continue;
        este.tabela->quantas(); // with what arrived last
        if (lugar->second.linha > 0) este.tabela->tabela().selectRow(lugar->second.linha);
    }
    lugares_.clear();
}

} // namespace orvex::platform::qt::consulta
