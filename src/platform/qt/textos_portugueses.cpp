#include "platform/qt/textos_portugueses.h"

#include "platform/qt/papel/textos_de_papel.h"

#include <array>
#include <cstring>

namespace orvex::platform::qt {
namespace {

constexpr Palavra palavras[] = {
    {"OK", "&OK"},
    {"&OK", "&OK"},
    {"Cancel", "&Cancelar"},
    {"&Cancel", "&Cancelar"},
    {"&Yes", "&Sim"},
    {"Yes", "&Sim"},
    {"&No", "&Não"},
    {"No", "&Não"},
    {"Close", "Fechar"},
    {"&Close", "&Fechar"},
    {"Save", "Guardar"},
    {"&Save", "&Guardar"},
    {"Open", "Abrir"},
    {"Apply", "Aplicar"},
    {"Help", "Ajuda"},
    {"Abort", "Interromper"},
    {"Retry", "Tentar de novo"},
    {"Ignore", "Ignorar"},
    {"Discard", "Rejeitar"},
    {"Show Details...", "Mostrar detalhes..."},
    {"Hide Details...", "Esconder detalhes..."},
    {"&Undo", "&Desfazer"},
    {"&Redo", "&Refazer"},
    {"Cu&t", "Cor&tar"},
    {"&Copy", "&Copiar"},
    {"&Paste", "Co&lar"},
    {"Delete", "Eliminar"},
    {"Select All", "Seleccionar tudo"},
    {"&Select All", "&Seleccionar tudo"},
    {"&Delete", "&Eliminar"},
    {"Clear", "Limpar"},
    {"&Step up", "&Aumentar"},
    {"Step &down", "&Diminuir"},
    {"Scroll here", "Deslocar para aqui"},
    {"Left edge", "Extremo esquerdo"},
    {"Right edge", "Extremo direito"},
    {"Top", "Início"},
    {"Bottom", "Fim"},
    {"Page left", "Página à esquerda"},
    {"Page right", "Página à direita"},
    {"Page up", "Página acima"},
    {"Page down", "Página abaixo"},
    {"Scroll left", "Deslocar para a esquerda"},
    {"Scroll right", "Deslocar para a direita"},
    {"Scroll up", "Deslocar para cima"},
    {"Scroll down", "Deslocar para baixo"},
    {"Scroll Left", "Separadores anteriores"},
    {"Scroll Right", "Separadores seguintes"},
};

constexpr std::array contextos = {"QPlatformTheme", "QDialogButtonBox", "QMessageBox", "QLineEdit",
                                  "QAbstractSpinBox", "QScrollBar", "QTabBar", "QWidgetTextControl",
                                  // of choosing a file and of printing
                                  "QFileDialog", "QFileSystemModel", "QSidebar", "QAbstractPrintDialog",
                                  "QPrintDialog", "QPrintWidget", "QPrintPropertiesWidget",
                                  "QPageSetupWidget", "QPrintPropertiesDialog", "QPrintSettingsOutput"};

const char* procura(const auto& tabela, const char* texto) {
    for (const Palavra& palavra : tabela)
        if (std::strcmp(palavra.original, texto) == 0) return palavra.portugues;
    return nullptr;
}

} // namespace

QString TextosPortugueses::translate(const char* contexto, const char* texto, const char*, int) const {
    for (const char* nosso : contextos) {
        if (std::strcmp(nosso, contexto) != 0) continue;
        const char* comum = procura(palavras, texto);
        return QString::fromUtf8(comum != nullptr ? comum : procura(palavras_de_papel, texto));
    }
    return {};
}

} // namespace orvex::platform::qt
