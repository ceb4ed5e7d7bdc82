// A script of keys for a real window, played inside the event loop as a person would play it: one step after
// the other, in whatever window has the keyboard at that moment, modal boxes included.
#pragma once

#include <QImage>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QPaintDevice;
class QSizeF;
class QWidget;

namespace orvex::platform::qt {
class Paginas;
} // namespace orvex::platform::qt

namespace orvex::demo {

class Roteiro {
  public:
    // Pictures go to the folder, by their names.
    Roteiro(QWidget& janela, std::filesystem::path pasta);

    Roteiro& tecla(Qt::Key codigo, Qt::KeyboardModifiers modificadores = {}, int vezes = 1);
    Roteiro& escreve(const char* texto);
    Roteiro& clica(const char* controlo); // of the screen's window
    Roteiro& retrata(const char* nome);
    Roteiro& retrata_folha(const char* nome, const std::string& empresa); // of the note on the screen
    // The first of the pages that `paginas` lays out.
    using NoPapel = std::function<std::unique_ptr<platform::qt::Paginas>(QPaintDevice&, QSizeF)>;
    Roteiro& retrata_papel(const char* nome, NoPapel paginas);
    Roteiro& faz(std::function<void()> accao);
    // For what is answered in the background.
    Roteiro& espera(std::function<bool()> pronto);

    // Plays the steps and returns when the last has run.
    void corre();

  private:
    void proximo();
    void guarda(const QImage& imagem, const char* nome) const;
    QWidget& com_teclado() const;
    QImage imagem() const;

    QWidget& janela_;
    std::filesystem::path pasta_;
    std::vector<std::function<void()>> passos_;
    std::size_t seguinte_ = 0;
};

} // namespace orvex::demo
