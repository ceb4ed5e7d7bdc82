// The common base of the three screens: their services (message boxes, sent keys, pick lists, parameters, the
// price rule), the keyboard convention, and the failure and compensation path.
//
// A window passes the user's events to the `utilizador_` members. Each runs its handlers, then moves the
// focus as the handlers asked, then has the window show the result. A failure that no handler traps ends the
// event and is shown.
#pragma once

#include "base/formato_regional.h"
#include "common/foco.h"
#include "common/grelha.h"
#include "common/janela.h"
#include "confirmacao/confirmacao.h"
#include "startup/arranque.h"
#include "startup/parametros.h"
#include "startup/sessao_bd.h"
#include "startup/sessao_erp.h"

#include <exception>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvex::common {

// What start-up hands a screen. The sessions are process-wide and outlive it.
struct ServicosEcra {
    startup::SessaoBD& BD;
    startup::SessaoERP& gERP;
    startup::Parametros parametros;
    base::FormatoRegional formato;
    std::function<base::DataHora()> agora;
    confirmacao::Observador& observador = confirmacao::sem_observador();
};

class Ecra : private Foco::Ouvinte {
  public:
    Ecra(ServicosEcra servicos, std::string titulo_janela);
    ~Ecra() override = default;

    // The window must be set before Form_Load and outlive the screen's last event.
    void define_janela(Janela& janela) { janela_ = &janela; }
    const std::string& titulo_janela() const { return titulo_janela_; }
    const base::FormatoRegional& formato() const { return servicos_.formato; }

    const std::vector<Controlo*>& controlos() const { return controlos_; }
    Controlo& controlo(std::string_view nome); // throws Falha for an unknown name
    Foco& foco() { return foco_; }
    const std::string& estado() const { return estado_; } // for the status line

    virtual void Form_Load() = 0;
    virtual void Form_Terminate() {} // the window is gone and the program ends

    // Events of the user, from the window

    void utilizador_abre(); // the window was shown: the first control takes the focus
    void utilizador_edita(Campo& campo, const std::string& texto);
    // A key of a field: Enter moves on, Esc moves back (the window sends Tab as utilizador_avanca).
    void utilizador_tecla(Campo& campo, int codigo);
    void utilizador_lista(Campo& campo); // F4
    void utilizador_avanca(int passos);  // Tab +1, Shift+Tab -1
    // A click on a control. False when the field left refused; the click must then do nothing.
    bool utilizador_foca(Controlo& controlo);
    void utilizador_prime(Botao& botao);
    bool utilizador_esc(Controlo& controlo); // false where Esc presses no button
    // Typed into a picker: read when the keyboard leaves it, and kept there while it is no date.
    void utilizador_edita(SelectorData& selector, const std::string& texto);
    void utilizador_data(SelectorData& selector, const base::DataHora& valor); // chosen, not typed
    // The date the picker would leave with; empty while its text is none.
    std::optional<base::DataHora> data_escrita(const SelectorData& selector) const;
    void utilizador_tecla(SelectorData& selector, int codigo, int shift);
    void utilizador_escolhe(Combo& combo, int indice);
    void utilizador_pagina(Separadores& separadores, int pagina);

    void utilizador_celula(Grelha& grelha, int linha, int coluna); // moves the current cell; linha from 1
    // A key of a grid: true when the handler swallowed it. Enter and the space bar pick the row like a double
    // click.
    bool utilizador_tecla(Grelha& grelha, int codigo, int shift);
    void utilizador_duplo_clique(Grelha& grelha);
    // The text typed into the current cell, be it what was there, is about to be stored. False when it was
    // refused.
    bool utilizador_edita_celula(Grelha& grelha, const std::string& texto);
    void utilizador_apaga_linha(Grelha& grelha);

  protected:
    // Handlers a screen overrides; each does what its name says in the screens' own language.
    virtual void campo_Validate(int Index, bool& Cancel) = 0;
    virtual void btFx_Click(int Index) = 0;
    virtual const Campo* campo_de_fecho() const = 0; // Esc in it closes the screen
    virtual void limparform() = 0;
    virtual Campo& primeiro_campo() = 0;
    // A failure that no handler trapped. Shown with its text; the screen stays open unless it says otherwise.
    virtual void falha_sem_tratamento(const std::exception& falha);

    void campo_KeyPress(Campo& campo, int& KeyAscii);
    void campo_BotaoLista(int Index) { btFx_Click(Index); }

    // Adds a control under its name.
    void regista(Controlo& controlo, std::string nome);
    // Members of the array `campo`.
    void regista_campo(Campo& campo, int Index, const char* ToolTip, const char* Legenda);
    void regista_botao(Botao& botao, std::string nome, const char* Caption, const char* ToolTip,
                       std::function<void()> Click);
    // A date picker in which Enter moves on and Esc moves back.
    void regista_selector(SelectorData& selector, std::string nome, const char* ToolTip, const char* Legenda);

    // Services

    struct ColunaBD {
        const char* tabela;
        const char* coluna;
    };
    // The longest text that all of these columns take, as the connected database describes them; 0 when none
    // of them limits it.
    int Comprimento(std::initializer_list<ColunaBD> colunas);

    // Asks about every date that the user gave, far from today, and was not asked about yet. False when one
    // is not meant so: the cursor is then on its way there.
    bool AceitaDatas(std::initializer_list<SelectorData*> selectores);

    // Kinds: 1 mandatory field, 2 information, 3 OK/Cancel (Cancel the default), 4 Yes/No; any other shows
    // nothing.
    std::int32_t Avisa(const std::string& campo, const std::string& Aviso, std::int16_t Tipo);
    // Titled with the program's description; 0 exclamation, 1 information, 2 critical; any other shows
    // nothing.
    std::int16_t MostraMensagem(const std::string& Texto, int Tipo);
    void xelSendkeys(const std::string& sKey); // "{TAB}" or "+{TAB}"
    void SetFocus(Controlo& controlo) { foco_.pede(controlo); }
    void Unload();
    // Unit price of an article for a stock movement: average cost of its stock, or the last purchase price.
    double PrecoMovimento(const std::string& chave);

    // The first column of the row the user chose, or the empty text.
    std::string escolhe_da_lista(const ListaPesquisa& lista);
    // Opens the list; on a choice puts it into the field, whose validation then runs as the focus moves on.
    void preenche_da_lista(Campo& campo, const ListaPesquisa& lista);

    startup::ReferenciaERP CriaObjectoERP(const std::string& classe) { return gERP.CriaObjecto(classe); }

    // A confirmation, and the text of its last failure: ultimo_erro.cpp

    // What a confirmation of this screen works with.
    confirmacao::Meios meios();

    // Runs a procedure that writes: a failure leaves its text in UltimoErro and goes on to the caller.
    void regista_falha(const std::function<void()>& procedimento);

    // The same, with the failure's number before its text, counted from where the automation's own numbers
    // begin.
    void regista_falha_numerada(const std::function<void()>& procedimento);

    // What the failure path shows: the text kept by the procedure that failed, or the failure's own.
    std::string erro_a_mostrar(const std::exception& falha) const;

    // An empty UltimoErro takes the failure's own text, unless that is one to be shown and not kept.
    void completa_erro(const std::exception& falha);

    base::DataHora agora() const { return servicos_.agora(); }

    startup::SessaoBD& BD;
    startup::SessaoERP& gERP;
    const startup::Parametros& parametros() const { return servicos_.parametros; }

    // What the status line says until the rules say otherwise; empty for nothing.
    void define_estado(std::string texto) { estado_ = std::move(texto); }

    bool bDigitado = false; // the user typed since the last validation
    std::string UltimoErro;

  private:
    void corre(const std::function<void()>& manipulador);
    void resolve_foco();
    Janela& janela();

    bool le_texto(SelectorData& selector);
    void poe_a_vista(const Controlo& controlo); // turns to the page it lies on

    bool valida_ao_sair(Controlo& controlo) override;
    void perdeu(Controlo& controlo) override;
    void ganhou(Controlo& controlo) override;

    ServicosEcra servicos_;
    std::string titulo_janela_;
    Janela* janela_ = nullptr;
    std::vector<Controlo*> controlos_;
    Foco foco_{*this};
    std::string estado_;
    bool em_curso_ = false; // an event is being handled; a second press of a button is ignored
    bool a_fechar_ = false;
};

} // namespace orvex::common
