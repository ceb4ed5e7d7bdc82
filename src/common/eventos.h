// The events of the user: one at a time, what each runs, and where the keyboard goes.
//
// A window passes them to the `utilizador_` members. Each runs its handlers, then moves the focus as the
// handlers asked, then has the window show the result. While one runs, also while it shows a box or a list,
// any other is ignored.
//
// A failure that no handler traps takes back what that handler asked for, and is shown. One of the window
// itself, also that of showing a failure, goes on to who passed the event. Whatever fails, the screen listens
// to the next event and the busy cursor is off.
#pragma once

#include "common/foco.h"
#include "common/grelha.h"
#include "common/servicos.h"

#include <exception>
#include <functional>
#include <optional>
#include <string>

namespace orvex::common {

class Eventos : private Foco::Ouvinte {
  public:
    explicit Eventos(Servicos& servicos) : servicos_(servicos) {}

    Foco& foco() { return foco_; }

    void utilizador_abre();                       // the window was shown: the first control takes the focus
    void utilizador_fecha() { a_fechar_ = true; } // the window goes: no handler begins any more
    // Runs what the window asks for itself, as an event runs: no other begins meanwhile. False where one is
    // running or the window is closing. Shows nothing.
    bool sem_outros(const std::function<void()>& trabalho);
    void utilizador_edita(Campo& campo, const std::string& texto);
    // A key of a field: Enter moves on, Esc moves back (the window sends Tab as utilizador_avanca).
    void utilizador_tecla(Campo& campo, int codigo);
    void utilizador_lista(Campo& campo); // F4
    void utilizador_avanca(int passos);  // Tab +1, Shift+Tab -1
    // A click on a control. False when the field left refused, or its validation put the keyboard elsewhere;
    // the click must then do nothing. A button that is pressed happens after every good validation.
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
    void utilizador_ordena(Grelha& grelha, int coluna); // the heading of a column

  protected:
    // Handlers a screen overrides; each does what its name says in the screens' own language.
    virtual void campo_Validate(int Index, bool& Cancel) = 0;
    virtual void btFx_Click(int Index) = 0;
    virtual const Campo* campo_de_fecho() const = 0; // Esc in it closes the screen
    virtual Campo& primeiro_campo() = 0;
    // A failure that no handler trapped. Shown with its text; the screen stays open unless it says otherwise.
    virtual void falha_sem_tratamento(const std::exception& falha);

    void campo_KeyPress(Campo& campo, int& KeyAscii);
    void campo_BotaoLista(int Index) { btFx_Click(Index); }

    // What a handler asks for; carried out when it has returned.
    void xelSendkeys(const std::string& sKey); // no keys, but moves of the focus: "{TAB}" or "+{TAB}"
    void SetFocus(Controlo& controlo) { foco_.pede(controlo); }
    void larga_o_digitado(); // nothing of it is validated when it is left
    void Unload();           // closes the window, and with it the program, once the handler has returned

    // Runs an event that only this screen has, as every other runs.
    void corre(const std::function<void()>& manipulador) {
        decorre([&] { trata(manipulador); });
    }

    bool bDigitado = false; // the user typed since the last validation

  private:
    class EmCurso;

    void decorre(const std::function<void()>& evento);    // unless one is running or the screen is closing
    bool trata(const std::function<void()>& manipulador); // false when it failed
    void conta(const std::exception& falha);
    void resolve_foco();
    bool le_texto(SelectorData& selector);

    bool valida_ao_sair(Controlo& controlo) override;
    void perdeu(Controlo& controlo) override;
    void ganhou(Controlo& controlo) override;

    Servicos& servicos_;
    Foco foco_{*this};
    bool aceite_ = true;    // no validation of the last event refused
    bool em_curso_ = false; // an event is being handled; a second press of a button is ignored
    bool a_fechar_ = false;
};

} // namespace orvex::common
