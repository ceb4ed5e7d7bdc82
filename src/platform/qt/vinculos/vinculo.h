// One control of a screen and the widget that shows it. The model is written into the widget by `mostra`;
// what the user does goes to the screen. The window keeps the bindings and filters the events of their
// widgets.
#pragma once

#include "common/ecra.h"

#include "platform/qt/textos.h"

#include <QKeySequence>
#include <QString>

class QAbstractButton;
class QComboBox;
class QEvent;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QShortcut;
class QTabWidget;
class QWidget;

namespace orvex::platform::qt {

class JanelaQt;
class VistaGrelha;

class Vinculo {
  public:
    Vinculo(JanelaQt& janela, common::Controlo& controlo, QWidget& widget);
    virtual ~Vinculo() = default;
    Vinculo(const Vinculo&) = delete;

    common::Controlo& controlo() const { return controlo_; }
    QWidget& widget() const { return widget_; }
    virtual QWidget& alvo_do_foco() const { return widget_; }

    virtual void mostra(); // enabled, visible
    virtual void recebeu_foco() {}
    // Each is true when the event was used up. Tab, and leaving another control, the window sees to.
    virtual bool tecla(QKeyEvent&) { return false; }
    virtual bool rato(QEvent&) { return false; }          // a press, after the keyboard came to this control
    virtual bool atalho();                                // the access key
    virtual bool entra_ao_premir() const { return true; } // the keyboard comes with the mouse's press
    virtual bool termina_edicao() { return true; }
    virtual void larga_edicao() {}
    virtual bool larga_procura() { return false; } // true where there was one, which Esc then leaves
    virtual QString ajuda() const { return {}; }   // which keys work here
    virtual void guarda() const {}                 // what the user changed in its looks, for the next time

    // The label whose access key comes here; the control's own, if no other is given.
    void define_acesso(const std::string& legenda) { legenda_ = legenda; }
    QKeySequence acesso() const;
    // As the help names them.
    virtual QString nome() const { return qs(legenda()); }
    virtual QKeySequence tecla_do_nome() const { return acesso(); }
    bool alcancavel() const; // be it by turning to its page

  protected:
    const std::string& legenda() const { return legenda_.empty() ? controlo_.Legenda : legenda_; }
    common::Ecra& ecra() const;
    JanelaQt& janela_;

  private:
    void mostra_acesso();

    common::Controlo& controlo_;
    QWidget& widget_;
    std::string legenda_;
    QShortcut* acesso_ = nullptr; // the window's
};

class VinculoCampo : public Vinculo {
  public:
    VinculoCampo(JanelaQt& janela, common::Campo& campo, QLineEdit& linha);
    void mostra() override;
    void recebeu_foco() override;
    bool tecla(QKeyEvent& evento) override;
    QString ajuda() const override;
    void marca_lista() { com_lista_ = true; }
    void marca_fecho() { fecha_ = true; } // Esc in it closes the screen

  private:
    void esc();

    common::Campo& campo_;
    QLineEdit& linha_;
    bool com_lista_ = false;
    bool fecha_ = false;
};

class VinculoData : public Vinculo {
  public:
    VinculoData(JanelaQt& janela, common::SelectorData& selector, QLineEdit& linha);
    void mostra() override;
    void recebeu_foco() override;
    bool tecla(QKeyEvent& evento) override;
    QString ajuda() const override;

  private:
    void abre_calendario();
    int parte_do_cursor() const;
    void muda(int passo);

    common::SelectorData& selector_;
    QLineEdit& linha_;
};

class VinculoBotao : public Vinculo {
  public:
    VinculoBotao(JanelaQt& janela, common::Botao& botao, QAbstractButton& widget);
    void mostra() override;
    bool tecla(QKeyEvent& evento) override;
    bool rato(QEvent& evento) override;
    bool atalho() override;
    QString nome() const override;
    QKeySequence tecla_do_nome() const override;
    bool entra_ao_premir() const override { return botao_.papel == common::Botao::Papel::faz; }
    QString ajuda() const override;

  private:
    void prime();
    common::Botao& botao_;
    QAbstractButton& tecla_;
};

class VinculoCombo : public Vinculo {
  public:
    VinculoCombo(JanelaQt& janela, common::Combo& combo, QComboBox& caixa);
    void mostra() override;
    bool tecla(QKeyEvent& evento) override;
    QString ajuda() const override { return "F4 lista   Enter seguinte   Esc anterior"; }

  private:
    common::Combo& combo_;
    QComboBox& caixa_;
    std::vector<std::string> itens_; // as the widget has them
};

class VinculoSeparadores : public Vinculo {
  public:
    VinculoSeparadores(JanelaQt& janela, common::Separadores& separadores, QTabWidget& paginas);
    QWidget& alvo_do_foco() const override;
    void mostra() override;
    bool tecla(QKeyEvent& evento) override;
    bool rato(QEvent& evento) override;
    QString ajuda() const override {
        return "Setas mudam de página   Ctrl+Tab em qualquer lado   Tab seguinte";
    }
    // Turns to a page, where the control that is left lets it.
    bool muda(int pagina);
    QString nome() const override { return "Páginas"; }
    bool vira(int passos); // and from the last one to the first

  private:
    common::Separadores& separadores_;
    QTabWidget& paginas_;
};

class VinculoEtiqueta : public Vinculo {
  public:
    VinculoEtiqueta(JanelaQt& janela, common::Etiqueta& etiqueta, QLabel& texto);
    void mostra() override;

  private:
    common::Etiqueta& etiqueta_;
    QLabel& texto_;
};

class VinculoGrelha : public Vinculo {
  public:
    VinculoGrelha(JanelaQt& janela, common::Grelha& grelha, VistaGrelha& vista);
    void mostra() override;
    bool tecla(QKeyEvent& evento) override;
    bool termina_edicao() override;
    void larga_edicao() override;
    bool larga_procura() override;
    QString ajuda() const override;
    void guarda() const override;

  private:
    VistaGrelha& vista_;
};

} // namespace orvex::platform::qt
