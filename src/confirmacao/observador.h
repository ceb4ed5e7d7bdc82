// The steps of one confirmation, told as they are taken to whoever keeps a record of them.
#pragma once

#include "base/datahora.h"
#include "base/falha.h"
#include "base/moeda.h"
#include "startup/sessao_erp.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvex::confirmacao {

enum class Fluxo {
    emite_guia,
    anula_guia,
    devolve,
    ajusta,
    substitui_ajuste,
    anula_ajuste,
    transfere_para_orvex,
    transfere_para_cliente,
};

inline constexpr Fluxo fluxos[] = {Fluxo::emite_guia,
                                   Fluxo::anula_guia,
                                   Fluxo::devolve,
                                   Fluxo::ajusta,
                                   Fluxo::substitui_ajuste,
                                   Fluxo::anula_ajuste,
                                   Fluxo::transfere_para_orvex,
                                   Fluxo::transfere_para_cliente};

// The name that records keep of a flow: "emite_guia". Read back, nothing for a name that is none.
const char* nome(Fluxo fluxo);
std::optional<Fluxo> le_fluxo(std::string_view texto);

// What of an article a confirmation is to move.
struct ArtigoMovido {
    std::string Artigo{};
    base::Moeda Quantidade{}; // tonnes, never negative
    std::string Armazem{};
};

// What a confirmation is about to do, known whole before it begins.
struct Intencao {
    Fluxo fluxo{};
    // The document it creates, without its number. Of a transfer to a client, which creates none, and of a
    // cancellation: empty type.
    startup::ChaveDocumento cria{};
    std::vector<startup::ChaveDocumento> anula{}; // documents in force that it cancels
    std::string Cliente{}; // the note's client, the adjustment's holder, the new holder
    base::DataHora Data{};
    std::vector<ArtigoMovido> artigos{};
};

enum class AccaoERP { cria, anula };
enum class Desfecho {
    feito,       // the ERP says it did it
    recusado,    // the ERP says it did not
    sem_resposta // the call, or the reading of its outcome, raised: it may be done
};

struct PedidoERP {
    AccaoERP accao{};
    // Of a document being created: without its number, until an answer gives it.
    startup::ChaveDocumento chave{};
};

struct RespostaERP {
    Desfecho desfecho{};
    startup::ChaveDocumento chave{}; // with its number, where the ERP gave one
    std::string mensagem{};          // the ERP's own, or that of the failure
};

// How a confirmation ended that was not carried out. Told once its boxes were dismissed.
struct Compensacao {
    std::string erro{};     // as shown to the user
    bool avisado = true;    // every box of it was shown, and dismissed by the user
    bool por_saber = false; // nobody knows whether the commit happened: nothing was cancelled
    std::vector<startup::ChaveDocumento> anulados{};   // created here, and cancelled again
    std::vector<startup::ChaveDocumento> por_anular{}; // created here, named to the user for him to cancel
    // Whatever else the user was told may not agree between ledger and ERP, one text each.
    std::vector<std::string> por_verificar{};
};

// Thrown by an observer that cannot keep its record of an intention: the confirmation is refused before it
// begins, and costs the user nothing.
class Recusada : public base::FalhaGuarda {
  public:
    using FalhaGuarda::FalhaGuarda;
};

// Steps come in this order: intencao; antes_do_erp and depois_do_erp around every call that creates or
// cancels a document, those of the compensation too; antes_de_confirmar; feita or compensada. A failure
// before the transaction begins ends in compensada too, with or without an intention.
//
// What throws in intencao keeps the transaction from beginning, and what throws Recusada there leaves the
// screen as it is; in the three after it, what throws has the confirmation rolled back and compensated. feita
// and compensada must not throw.
class Observador {
  public:
    virtual ~Observador() = default;

    virtual void intencao(const Intencao&) {}
    virtual void antes_do_erp(const PedidoERP&) {}
    virtual void depois_do_erp(const PedidoERP&, const RespostaERP&) {}
    virtual void antes_de_confirmar() {}
    virtual void feita() noexcept {}
    virtual void compensada(const Compensacao&) noexcept {}

    // A failure on the way that changed nothing of what is done next, and that nobody is told of.
    virtual void engolida(const std::string& /*texto*/) noexcept {}
};

// One that keeps no record.
Observador& sem_observador();

// Several, told in their order. One that throws keeps those after it from being told; what must not throw is
// told to all.
class Observadores : public Observador {
  public:
    // They outlive it.
    void junta(Observador& outro) { todos_.push_back(&outro); }

    void intencao(const Intencao& intencao) override;
    void antes_do_erp(const PedidoERP& pedido) override;
    void depois_do_erp(const PedidoERP& pedido, const RespostaERP& resposta) override;
    void antes_de_confirmar() override;
    void feita() noexcept override;
    void compensada(const Compensacao& compensacao) noexcept override;
    void engolida(const std::string& texto) noexcept override;

  private:
    std::vector<Observador*> todos_;
};

} // namespace orvex::confirmacao
