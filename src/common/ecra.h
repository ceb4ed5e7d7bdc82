// What the three screens derive from: their controls by name, the services that their rules call, the events
// of the user.
#pragma once

#include "common/eventos.h"
#include "common/servicos.h"
#include "confirmacao/observador.h"
#include "startup/sessao_bd.h"
#include "startup/sessao_erp.h"

#include <exception>
#include <functional>
#include <initializer_list>
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
    Controlo& controlo(std::string_view nome);            // throws Falha for an unknown name
    const std::string& estado() const { return estado_; } // for the status line

    virtual void Form_Load() = 0;
    virtual void Form_Terminate() {} // the window is gone and the program ends

  protected:
    virtual void limparform() = 0;

    // Adds a control under its name.
    void regista(Controlo& controlo, std::string nome);
    // Members of the array `campo`.
    void regista_campo(Campo& campo, int Index, const char* ToolTip, const char* Legenda);
    void regista_botao(Botao& botao, std::string nome, const char* Caption, const char* ToolTip,
                       std::function<void()> Click);
    // A date picker in which Enter moves on and Esc moves back.
    void regista_selector(SelectorData& selector, std::string nome, const char* ToolTip, const char* Legenda);

    // Asks about every date that the user gave, far from today, and was not asked about yet. False when one
    // is not meant so: the cursor is then on its way there.
    bool AceitaDatas(std::initializer_list<SelectorData*> selectores);

    // Unit price of an article for a stock movement: average cost of its stock, or the last purchase price.
    double PrecoMovimento(const std::string& chave);

    // The condition on xel_ORVEX_Mov that a row is of one of the document types and series of FACTURAS.
    // Throws FalhaParametro when a group is incomplete or has a series that is no number.
    static std::string filtro_documentos(const startup::ListaParametros& FACTURAS);

    // Opens the list; on a choice puts it into the field, whose validation then runs as the focus moves on.
    void preenche_da_lista(Campo& campo, const ListaPesquisa& lista);

    // One confirmation, and what becomes of it when it fails: compensacao.cpp

    // Runs a procedure that writes: a failure leaves its text in UltimoErro and goes on to the caller.
    void regista_falha(const std::function<void()>& procedimento);

    // The same, with the failure's number before its text, counted from where the automation's own numbers
    // begin.
    void regista_falha_numerada(const std::function<void()>& procedimento);

    // What the failure path shows: the text kept by the procedure that failed, or the failure's own.
    std::string erro_a_mostrar(const std::exception& falha) const;

    // An empty UltimoErro takes the failure's own text, unless that is one to be shown and not kept.
    void completa_erro(const std::exception& falha);

    // Has the ERP create a document. `cria` puts its key into DocsCriados as soon as it is known, and tells
    // whether the ERP created it. Until then it may exist without a key: what was asked for, and what it was
    // to hold, then names it.
    bool CriaNoERP(const startup::ChaveDocumento& pedida, const std::string& conteudo,
                   const std::function<bool()>& cria);

    // Has the ERP create a stock document of one line, and gives its key. Throws erp_recusou with the ERP's
    // own text when it refuses.
    startup::ChaveDocumento CriaDocStock(const startup::PedidoDocStock& pedido);
    static constexpr std::int32_t erp_recusou = 5000;

    // Has the ERP cancel a document whose rows this transaction takes out of the ledger, and gives what the
    // ERP said. From then until the commit the ledger does not follow it, and a failure must name it.
    startup::ResultadoERP AnulaNoERP(const startup::ChaveDocumento& chave,
                                     const std::function<startup::ResultadoERP()>& anula);

    // Commits; what ERP and ledger hold now agrees.
    void ConfirmaGravacao();

    // The failure path of every confirmation: rolls back, shows the text, has the ERP cancel every document
    // created by this confirmation and names what is left for the user to put right. When nobody knows
    // whether the commit happened, nothing is cancelled on a guess.
    void compensa(const std::exception& falha) { compensa(falha, erro_a_mostrar(falha)); }
    void compensa(const std::exception& falha, const std::string& texto_erro);

    // By what the user sees that a confirmation was carried out: "o documento está nos
    // movimentos da ORVEX".
    virtual std::string sinal_de_confirmada() const;

    // Names the documents that the user must cancel in the ERP, if any.
    void avisa_por_anular(const std::vector<startup::ChaveDocumento>& documentos);

    // What the status line says until the rules say otherwise; empty for nothing.
    void define_estado(std::string texto) { estado_ = std::move(texto); }

    std::vector<startup::ChaveDocumento> DocsCriados;
    std::vector<startup::ChaveDocumento> PorAnular; // that this confirmation replaces and the ERP kept
    std::string UltimoErro;

  private:
    // A cancellation asked of the ERP, and whether it is known to have been carried out.
    struct Anulacao {
        startup::ChaveDocumento chave;
        bool certa = false;
    };

    void desfaz_transaccao();
    void avisa_por_saber();
    void avisa_pedido_sem_resposta();
    void avisa_anulacoes();
    void esquece_documentos();

    void poe_a_vista(const Controlo& controlo); // turns to the page it lies on

    std::string titulo_janela_;
    std::vector<Controlo*> controlos_;
    std::string estado_;
    std::string pedido_sem_resposta_; // the document being created, as long as its outcome is not known
    std::vector<Anulacao> anulacoes_; // that the ledger has not confirmed
};

} // namespace orvex::common
