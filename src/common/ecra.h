// What the three screens derive from: their controls by name, the services that their rules call, the events
// of the user.
#pragma once

#include "common/eventos.h"
#include "common/servicos.h"
#include "confirmacao/confirmacao.h"
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

class Ecra : protected Servicos, public Eventos {
  public:
    Ecra(ServicosEcra servicos, std::string titulo_janela);
    ~Ecra() override = default;

    using Servicos::define_janela;
    using Servicos::formato;
    const std::string& titulo_janela() const { return titulo_janela_; }

    const std::vector<Controlo*>& controlos() const { return controlos_; }
    Controlo& controlo(std::string_view nome); // throws Falha for an unknown name
    // The user would lose work by leaving now: a client's code alone is none.
    virtual bool por_gravar() const { return false; }
    const std::string& estado() const { return estado_; } // for the status line

    // What was confirmed last, for the status line until the user's next key; empty for nothing.
    const std::string& feito() const { return feito_; }
    void esquece_feito() { feito_.clear(); }

    // The item or client that the keyboard is on: of a field the code as it stands there, be it half typed,
    // of a grid the current row's article. None where there is nothing to look up. Runs no rule.
    std::optional<CodigoEscrito> codigo_actual();

    // Reads the parameters and empties the screen. Called once, before the window is shown.
    virtual void Form_Load() = 0;
    virtual void Form_Terminate() {} // the window is gone and the program ends

  protected:
    virtual void limparform() = 0;

    // Adds a control under its name, or makes a member of an array, or all its fields, and adds it under the
    // array's.
    void regista(Controlo& controlo, std::string nome);
    template <typename Tipo>
    Tipo& regista(Vector<Tipo>& vector, int Index) {
        Tipo& membro = vector.cria(Index);
        regista(membro, vector.nome(Index));
        return membro;
    }
    struct DescricaoCampo {
        int Index;
        const char* ToolTip;
        const char* Legenda;
    };
    void regista(Vector<Campo>& vector, std::initializer_list<DescricaoCampo> descricoes);
    // The button that opens the list of the field with this index.
    void regista_lista(Vector<Botao>& vector, int Index, const char* ToolTip);
    void regista_botao(Botao& botao, std::string nome, const char* Caption, const char* ToolTip,
                       std::function<void()> Click, Botao::Papel papel = Botao::Papel::faz);
    // A date picker in which Enter moves on and Esc moves back.
    void regista_selector(SelectorData& selector, std::string nome, const char* ToolTip, const char* Legenda);

    // Asks about every date that the user gave, far from today, and was not asked about yet. False when one
    // is not meant so: the cursor is then on its way there.
    bool AceitaDatas(std::initializer_list<SelectorData*> selectores);

    // Unit price of an article for a stock movement: average cost of its stock, or the last purchase price.
    double PrecoMovimento(const std::string& chave);

    // An information box, and the cursor in the control that it is about. False, for who refuses.
    bool recusa(const std::string& aviso, Controlo& onde);
    // The empty screen, the cursor in its first field.
    void RecomecaEcra();

    // Opens the list where the field is; on a choice puts it into the field, whose validation then runs as
    // the focus moves on.
    void preenche_da_lista(Campo& campo, ListaPesquisa lista);

    // A confirmation, and the text of its last failure: ultimo_erro.cpp

    // What a confirmation of this screen works with.
    confirmacao::Meios meios();

    // Runs a procedure that writes: a failure, unless a guard's, leaves its text in UltimoErro and goes on to
    // the caller.
    void com_ultimo_erro(const std::function<void()>& procedimento);

    // The same, with the failure's number before its text, counted from where the automation's own numbers
    // begin.
    void com_ultimo_erro_numerado(const std::function<void()>& procedimento);

    // What the failure path shows: the text kept by the procedure that failed, or the failure's own.
    std::string erro_a_mostrar(const std::exception& falha) const;

    // An empty UltimoErro takes the failure's own text, unless that is one to be shown and not kept.
    void completa_erro(const std::exception& falha);

    // What the status line says until the rules say otherwise; empty for nothing.
    void define_estado(std::string texto) { estado_ = std::move(texto); }

    // Told once it is confirmed, of a text made before: nothing may fail between the commit and its box.
    void define_feito(std::string texto) { feito_ = std::move(texto); }

    // The text kept last. What empties it is the screen's matter, so it may be of an earlier confirmation.
    std::string UltimoErro;

  private:
    void poe_a_vista(const Controlo& controlo); // turns to the page it lies on

    std::string titulo_janela_;
    std::vector<Controlo*> controlos_;
    std::string estado_;
    std::string feito_;
};

} // namespace orvex::common
