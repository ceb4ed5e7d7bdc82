// A script of keys for a real window, played inside the event loop as a person would play it: one step after
// the other, in whatever window has the keyboard at that moment, modal boxes included.
#pragma once

#include <QImage>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

class QWidget;

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
    Roteiro& faz(std::function<void()> accao);

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
