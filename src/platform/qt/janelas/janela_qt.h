// The window of a screen: binds each control to a widget, shows what the rules decided and passes on what the
// user does.
//
// The keyboard is where the screen's Foco says, always: widgets are asked for it by nothing else. A layout
// derives from this class, makes the widgets with `vincula` and places them.
#pragma once

#include "common/janela.h"
#include "platform/qt/memoria.h"
#include "platform/qt/pecas.h"
#include "platform/qt/vinculos/vinculo.h"

#include <QHash>
#include <QWidget>

#include <chrono>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QSplitter;
class QTabWidget;

namespace orvex::platform::qt {

class JanelaQt : public QWidget, public common::Janela {
  public:
    // The screen must outlive the window.
    JanelaQt(common::Ecra& ecra, const EstadoSessao& sessao, QSize tamanho_habitual = {1160, 780});
    ~JanelaQt() override;

    common::Ecra& ecra() const { return ecra_; }
    // Called once, when the window has closed.
    void define_ao_fechar(std::function<void()> ao_fechar) { ao_fechar_ = std::move(ao_fechar); }
    // Opens an item or client in the program of the enquiries. Gives what kept it from that, for the user;
    // nothing once that program was started.
    using AbreConsulta = std::function<std::string(const common::CodigoEscrito& codigo)>;
    void define_consulta(AbreConsulta abre) { abre_consulta_ = std::move(abre); }
    // Shows the window as it was left the last time, and starts the screen.
    void abre();

    void mostra() override;
    void da_foco(common::Controlo& controlo) override;
    int caixa(const std::string& texto, const std::string& titulo, common::Icone icone,
              common::Botoes botoes) override;
    std::string escolhe(const common::ListaPesquisa& lista) override;
    void ocupado(bool sim) override;
    bool prossegue(const std::string& progresso) override;
    void descarrega() override;

    // Stores an open cell edit, wherever it is. False when it was refused.
    bool termina_edicao();
    void larga_edicao(); // of an open cell, unstored
    // In the status line, until the next key.
    void diz(const QString& texto) { linha_estado_->mostra_aviso(texto); }
    void consulta_o_actual(); // what the keyboard is on; everything stays as it is
    // True where nothing would be lost, or the user says that it may be.
    bool pode_sair();
    // Brings the keyboard to a control, as a click does, be it on another page.
    void vai_para(Vinculo& destino);
    // A modal box was shown while the event being passed on was handled.
    bool caixa_neste_evento() const { return caixas_ != caixas_antes_; }

  protected:
    bool eventFilter(QObject* alvo, QEvent* evento) override;
    void closeEvent(QCloseEvent* evento) override;

    // Make and bind the widget of a control.
    QWidget* vincula(common::Campo& campo, int largura_em_letras);
    QWidget* vincula(common::SelectorData& selector);
    QWidget* vincula(common::Botao& botao);
    QWidget* vincula(common::Combo& combo);
    EtiquetaElidida* vincula(common::Etiqueta& etiqueta);
    VistaGrelha* vincula(common::Grelha& grelha);
    QTabWidget* vincula(common::Separadores& separadores);
    void vincula(common::Quadro& quadro, QWidget& painel);
    // A field with the small list button at its side; the button is no stop of the Tab key.
    QWidget* vincula_com_lista(common::Campo& campo, int largura_em_letras, common::Botao& botao);
    // The label of a field that is only filled by its list: its access key presses the list's button.
    QLabel* legenda_da_lista(const common::Campo& campo, common::Botao& botao);
    // Makes the label of a grid known as such.
    void legenda_de(QLabel& legenda, const common::Controlo& controlo);
    // The foot of a window: the confirming button first, the one that undoes a document (if any) away from
    // the others, leaving last.
    QWidget* barra_botoes(std::initializer_list<common::Botao*> primeiros, common::Botao* desfaz,
                          common::Botao& sair);
    // Also tells the status line that Esc in this field closes the screen.
    void marca_fecho(const common::Campo& campo);
    void recorda(QSplitter& divisao, const QString& nome);

    LinhaEstado& linha_estado() { return *linha_estado_; }
    bool a_meio() const { return ocupado_; } // of a handler

  private:
    template <typename Tipo, typename Modelo, typename Widget>
    Tipo& acrescenta(Modelo& modelo, Widget& widget);
    void observa(QObject& alvo, Vinculo& vinculo);
    Vinculo* vinculo_de(const common::Controlo* controlo) const;
    bool entra(Vinculo& destino);
    bool tecla(Vinculo& vinculo, QKeyEvent& evento);
    void teclas_da_janela();
    void mostra_ajuda();
    QString consulta(const std::optional<common::CodigoEscrito>& codigo) const; // what came of it
    QString texto_das_teclas() const;
    VinculoSeparadores* separadores() const; // none where there are no pages
    void vira_pagina(int passos);
    void muda_de_pagina(int pagina);
    bool passa_a_pagina(int passos); // where Tab leaves the last control of one
    void poe_foco();

    common::Ecra& ecra_;
    QSize tamanho_habitual_; // until the user gives it another
    LugarDaJanela lugar_;
    EstadoSessao sessao_;
    LinhaEstado* linha_estado_;
    std::vector<std::unique_ptr<Vinculo>> vinculos_;
    QHash<const QObject*, Vinculo*> por_alvo_;
    std::vector<std::pair<QSplitter*, QString>> divisoes_;
    std::function<void()> ao_fechar_;
    AbreConsulta abre_consulta_ = [](const auto&) { return "A consulta não está instalada."; };
    const common::Controlo* ultimo_foco_ = nullptr;
    int caixas_ = 0;
    int caixas_antes_ = 0;
    bool a_mostrar_ = false;
    bool ocupado_ = false;                           // a handler is running
    std::chrono::steady_clock::time_point inicio_{}; // of it, or of what it does after a box
    bool esc_gasto_ = false;                         // on giving up; it may still be held down
    bool fecha_depois_ = false;                      // once it has returned, as the rules decided
    bool quer_fechar_ = false;                       // once it has returned, if the user still wants to
    bool a_perguntar_ = false;
    bool saida_aceite_ = false; // nothing is asked any more
};

} // namespace orvex::platform::qt
