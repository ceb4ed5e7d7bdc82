// The parts every screen's window is put together from: title band, labels, status line.
#pragma once

#include "common/controlos.h"
#include "platform/espera/espera.h"

#include <QLabel>
#include <QScrollArea>

#include <functional>
#include <optional>
#include <string>

class QGridLayout;

namespace orvex::platform::qt {

// Where the user is working, for the status line.
struct EstadoSessao {
    std::string empresa;
    std::string motor;
    std::string utilizador;
    bool demonstracao = false; // a training company, shown so that nobody takes it for the real one
    std::function<std::string()>
        aviso{};                    // what is to be said beside it from some moment on; asked again and again
    std::string pasta_do_registo{}; // of the operation log
};

// A label that never asks for more room than it is given: what does not fit is elided, with the whole as tool
// tip.
class EtiquetaElidida : public QLabel {
  public:
    explicit EtiquetaElidida(QWidget* pai = nullptr);
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* evento) override;
    bool event(QEvent* evento) override;
};

// What a screen that is too low shows a part of: it scrolls then, and title and buttons stay. It is never
// narrower than its content.
class AreaQueCabe : public QScrollArea {
  public:
    explicit AreaQueCabe(QWidget* conteudo);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
};

inline constexpr int margem_janela = 14; // left and right of everything in a window

void negrito(QLabel& texto);

// The label beside a field, which is its buddy.
QLabel* nova_legenda(const std::string& texto, QWidget* campo = nullptr);

// A label and its field in two neighbouring cells. Gives the label.
QLabel* par(QGridLayout& grelha, int linha, int coluna, const common::Controlo& controlo, QWidget* campo);

// The band at the top of a window. `titulo` is placed in it and dressed for it.
QWidget* nova_faixa_titulo(QLabel* titulo, const EstadoSessao& sessao);

// The foot of a window: the keys that work at this moment or, instead, what the rules have to say; and always
// company, engine, user and the program's version.
class LinhaEstado : public QWidget {
  public:
    explicit LinhaEstado(const EstadoSessao& sessao);
    void mostra_ajuda(const QString& texto);
    void mostra_estado(const QString& texto); // empty for nothing
    void mostra_feito(const QString& texto);  // what was confirmed last; empty for nothing
    // In the place of all these what came of a key, until the next one, a press of the mouse or something new
    // of them; empty for nothing.
    void mostra_aviso(const QString& texto);
    // In the place of all what is waited for, or how far the handler is that waits; none for nothing.
    void mostra_espera(std::optional<espera::Motivo> motivo);
    void define_progresso(const QString& texto); // of the handler that runs, for when it is waited for

  private:
    void mostra();
    QString texto() const;

    EstadoSessao sessao_;
    QLabel* texto_;
    QLabel* quem_;
    QString ajuda_;
    QString estado_;
    QString feito_;
    QString aviso_;
    QString progresso_;
    std::optional<espera::Motivo> espera_;
};

} // namespace orvex::platform::qt
