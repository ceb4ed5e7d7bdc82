// A screen at work on the small company, in its window. The keyboard starts in its first field.
#pragma once

#include "platform/qt/janela_qt.h"
#include "tests/apoio/empresa_teste.h"
#include "tests/qt/apoio_qt.h"

#include <QTableView>

namespace orvex::testes {

inline const std::vector<Qt::Key> ok{Qt::Key_Return};
inline const std::vector<Qt::Key> para_ok{Qt::Key_Left, Qt::Key_Return}; // from Cancelar, the default

template <typename TBancada, typename TJanela>
struct NaJanela : TBancada {
    template <typename... Argumentos>
    explicit NaJanela(Argumentos... argumentos)
        : TBancada(argumentos...), qt(this->ecra, {"Bobines, Lda.", "SQLite", "demo", true}) {
        qt.abre();
        activa();
    }
    ~NaJanela() { qt.close(); }

    void activa() { // no window manager gives the keyboard back after a box
        qt.activateWindow();
        if (!QTest::qWaitForWindowActive(&qt)) throw std::runtime_error("A janela não ficou activa.");
    }
    void tecla(Qt::Key codigo, Qt::KeyboardModifiers modificadores = {}) {
        testes::tecla(qt, codigo, modificadores);
    }
    // Presses a key, answers the windows it brings up with these keys each, and tells what the boxes said.
    std::vector<std::string> tecla(Qt::Key codigo, Qt::KeyboardModifiers modificadores,
                                   const std::vector<std::vector<Qt::Key>>& teclas) {
        Respostas respostas;
        for (const auto& dadas : teclas)
            respostas.carrega(dadas);
        tecla(codigo, modificadores);
        activa();
        return respostas.textos;
    }
    void escreve(const char* texto) { testes::escreve(qt, texto); }
    void escreve_e_entra(const char* texto) {
        escreve(texto);
        tecla(Qt::Key_Return);
    }
    void clica(const char* nome) { QTest::mouseClick(&em<QWidget>(nome), Qt::LeftButton); }
    void clica_celula(const char* grelha, int linha, int coluna) {
        QTest::mouseClick(em<QTableView>(grelha).viewport(), Qt::LeftButton, {},
                          celula(qt, grelha, linha, coluna));
    }

    template <typename Tipo>
    Tipo& em(const char* nome) {
        return widget<Tipo>(qt, nome);
    }
    std::string com_teclado() const { // name of the control
        return qt.focusWidget() == nullptr ? "" : qt.focusWidget()->objectName().toStdString();
    }
    QRect lugar(const QWidget& w) { // in the window
        QCoreApplication::processEvents();
        return {w.mapTo(&qt, QPoint()), w.size()};
    }

    TJanela qt;
};

} // namespace orvex::testes
