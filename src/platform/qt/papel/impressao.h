// Something to be printed: sent to the system's printers, or written to a PDF. And where files of the user's
// go, and what is said where they do not.
#pragma once

#include "platform/qt/pecas.h"

#include <QGuiApplication>
#include <QPageLayout>
#include <QString>

#include <functional>
#include <memory>

class QPagedPaintDevice;
class QSaveFile;
class QWidget;

namespace orvex::platform::qt {

class Paginas;

// As it stands on paper; a training company says so.
inline constexpr const char* marca_de_demonstracao = "EMPRESA DE DEMONSTRAÇÃO";
std::string empresa_no_papel(const EstadoSessao& sessao);

QPageLayout folha_a4(QPageLayout::Orientation orientacao = QPageLayout::Portrait);

// While it lives, the cursor says that the program is at work.
class Ocupado {
  public:
    Ocupado() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    Ocupado(const Ocupado&) = delete;
    Ocupado& operator=(const Ocupado&) = delete;
    ~Ocupado() { QGuiApplication::restoreOverrideCursor(); }
};

struct Impresso {
    QString o_que;           // "a guia", as sentences have it
    QString nome;            // of the file, and of what is sent to the printer
    QPageLayout folha;       // at first: the user may choose another for the printer
    QString teclas_do_pdf{}; // where there are any
    std::function<std::unique_ptr<Paginas>(QPagedPaintDevice&)> dispoe; // on this device
};

// Both ask first: false, or an empty path, where the user gave it up. Throw Falha, for the user.
bool imprime(QWidget& janela, const Impresso& este);
QString guarda_pdf(QWidget& janela, const Impresso& este);

// The files that the user keeps: in the documents folder at first, under a name that any file system takes.
// Empty where the user gave it up.
struct FicheiroPedido {
    QString titulo; // of the window that asks
    QString nome;   // with its suffix
    QString filtro; // "PDF (*.pdf)"
};
QString pede_ficheiro(QWidget& janela, const FicheiroPedido& pedido);
// Whole or not at all: what was there under this name stays until the new one is. `escreve` is false where it
// could not. Throws Falha.
void grava_ficheiro(const QString& caminho, const std::function<bool(QSaveFile&)>& escreve);
QString entre_aspas(const QString& caminho); // «C:\...», as sentences have it

} // namespace orvex::platform::qt
