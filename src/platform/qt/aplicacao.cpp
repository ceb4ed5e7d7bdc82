#include "platform/qt/aplicacao.h"

#include "platform/qt/estilo.h"
#include "platform/qt/tabela_acessivel.h"
#include "platform/qt/textos_portugueses.h"

#include <QApplication>
#include <QLocale>
#include <QToolTip>
#include <QWidget>

namespace orvex::platform::qt {

void prepara_aplicacao(QApplication& aplicacao) {
    QLocale::setDefault(QLocale(QLocale::Portuguese, QLocale::Portugal));
    QApplication::setStyle(new Estilo);
    QCoreApplication::installTranslator(new TextosPortugueses(&aplicacao));

    instala_tabelas_acessiveis();

    const QPalette cores = cores_do_programa();
    QApplication::setPalette(cores);
    QToolTip::setPalette(cores);
}

// Every role, so that nothing comes from a dark theme of the desktop.
QPalette cores_do_programa() {
    const QColor tinta(0x1A, 0x1F, 0x2B);
    const QColor papel(Qt::white);
    QPalette cores(QColor(0xE4, 0xE9, 0xF4), QColor(0xEE, 0xF1, 0xF8)); // buttons, windows; and their edges
    for (const auto papel_da_letra :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        cores.setColor(papel_da_letra, tinta);
        cores.setColor(QPalette::Disabled, papel_da_letra, QColor(0x52, 0x58, 0x66));
    }
    cores.setColor(QPalette::Base, papel);
    cores.setColor(QPalette::Disabled, QPalette::Base, QColor(0xF1, 0xF3, 0xF7));
    cores.setColor(QPalette::AlternateBase, QColor(0xF4, 0xF7, 0xFC));
    cores.setColor(QPalette::ToolTipBase, QColor(0xFF, 0xFC, 0xE8));
    cores.setColor(QPalette::PlaceholderText, QColor(0x5A, 0x60, 0x70));
    cores.setColor(QPalette::Highlight, QColor(0x3D, 0x63, 0xAB));
    cores.setColor(QPalette::HighlightedText, papel);
    cores.setColor(QPalette::BrightText, papel);
    cores.setColor(QPalette::Link, QColor(0x1F, 0x4E, 0xA8));
    cores.setColor(QPalette::LinkVisited, QColor(0x5B, 0x3A, 0x8C));
    return cores;
}

base::FormatoRegional formato_do_sistema() {
    const QLocale sistema = QLocale::system();
    if (sistema.language() == QLocale::C || sistema.decimalPoint() == ",") return {',', '.'};
    return {'.', ','};
}

void pinta_fundo(QWidget& widget, const QColor& fundo, const QColor& texto) {
    QPalette cores = widget.palette();
    cores.setColor(QPalette::Window, fundo);
    if (texto.isValid()) cores.setColor(QPalette::WindowText, texto);
    widget.setPalette(cores);
    widget.setAutoFillBackground(true);
}

} // namespace orvex::platform::qt
