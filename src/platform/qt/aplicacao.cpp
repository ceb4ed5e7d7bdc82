#include "platform/qt/aplicacao.h"

#include "platform/qt/estilo.h"
#include "platform/qt/textos_portugueses.h"

#include <QApplication>
#include <QLocale>
#include <QWidget>

namespace orvex::platform::qt {

void prepara_aplicacao(QApplication& aplicacao) {
    QLocale::setDefault(QLocale(QLocale::Portuguese, QLocale::Portugal));
    QApplication::setStyle(new Estilo);
    QCoreApplication::installTranslator(new TextosPortugueses(&aplicacao));

    QPalette cores;
    cores.setColor(QPalette::Window, QColor(0xEE, 0xF1, 0xF8));
    cores.setColor(QPalette::Button, QColor(0xE4, 0xE9, 0xF4));
    cores.setColor(QPalette::Base, Qt::white);
    cores.setColor(QPalette::AlternateBase, QColor(0xF4, 0xF7, 0xFC));
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        cores.setColor(papel, QColor(0x1A, 0x1F, 0x2B));
    cores.setColor(QPalette::PlaceholderText, QColor(0x6B, 0x74, 0x88));
    cores.setColor(QPalette::Highlight, QColor(0x3D, 0x63, 0xAB));
    cores.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        cores.setColor(QPalette::Disabled, papel, QColor(0x76, 0x7C, 0x8A));
    cores.setColor(QPalette::Disabled, QPalette::Base, QColor(0xF1, 0xF3, 0xF7));
    QApplication::setPalette(cores);
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
