// One confirmation: a transaction of the ledger and the ERP documents that go with it. They stand or fall
// together, though the ERP knows nothing of the transaction: what it made is cancelled again when the ledger
// cannot follow, and what is then left differing is named to the user.
//
//     Confirmacao confirmacao(meios);
//     const auto fim = confirmacao.executa([&] {
//         ...                              // checks that may still refuse; nothing has begun
//         confirmacao.Inicia(intencao);
//         ...                              // the ledger's lock and guards, its rows, Cria..., Anula
//         confirmacao.Confirma();
//     }, erro_a_mostrar);                  // falhou: rolled back, compensated and told
//
// Every document is noted before the ERP is asked for it and settled by its answer; a call that raises, or
// whose outcome cannot be read, leaves it noted, and a failure names it.
#pragma once

#include "base/formato_regional.h"
#include "confirmacao/observador.h"
#include "startup/sessao_bd.h"
#include "startup/sessao_erp.h"

#include <exception>
#include <functional>
#include <string>
#include <vector>

namespace orvex::confirmacao {

// What a confirmation works with. All of it outlives the confirmation.
struct Meios {
    startup::SessaoBD& BD;
    startup::SessaoERP& gERP;
    Observador& observador;
    const base::FormatoRegional& formato;
    std::function<void(const std::string& texto)> avisa; // an information box; never under a lock
    // By what the user sees that the confirmation was carried out, when the program cannot tell.
    std::string sinal = "o documento está nos movimentos da ORVEX";
};

// How the creation of a document is asked of the ERP.
struct Criacao {
    // What the document is to hold, for when it has to be named without a number: "REEL1 1,2 t".
    std::string conteudo{};
    // Asks for it, and tells whether the ERP created it. `anota` takes its key as soon as that is known,
    // before the outcome is read.
    std::function<bool(const std::function<void(const startup::ChaveDocumento&)>& anota)> pede{};
    // The ERP's own text, asked for once it refused.
    std::function<std::string()> porque{};
};

// Where the outcome of a cancellation stands: the ERP tells it twice.
enum class Leitura { resposta, resultado_ultimo };

// Throws Falha for the key of a document that the ERP says it created without telling its number. Thrown
// where it was asked for, the document is named by what it holds.
void ExigeNumero(const startup::ChaveDocumento& criada);

class Confirmacao {
  public:
    explicit Confirmacao(Meios meios) : meios_(std::move(meios)) {}
    Confirmacao(const Confirmacao&) = delete;
    Confirmacao& operator=(const Confirmacao&) = delete;

    enum class Fim {
        acabou,   // committed, or never begun
        recusada, // before it began, and the user told why: the screen keeps everything
        falhou    // rolled back, shown and compensated
    };

    // Runs it whole. A failure is shown with the text that `erro` gives, also one before it began, except
    // that of the parameters file (FalhaParametro), which goes to the caller: it costs the user nothing. Work
    // that began and returns without having committed has failed.
    Fim executa(const std::function<void()>& trabalho,
                const std::function<std::string(const std::exception&)>& erro);

    // Tells the observer, and begins the transaction. Locks nothing yet.
    void Inicia(const Intencao& intencao);

    // The key is that asked for; a number of 0 is not known yet. Not successful when the ERP refused: nothing
    // is noted then, and the message is its own.
    startup::ResultadoERP Cria(const startup::ChaveDocumento& pedida, const Criacao& criacao);
    // A stock document of one line. Throws erp_recusou with the ERP's own text when it refuses.
    startup::ChaveDocumento CriaDocStock(const startup::PedidoDocStock& pedido);
    static constexpr std::int32_t erp_recusou = 5000;
    // The document created last.
    const startup::ChaveDocumento& Criado() const { return DocsCriados.back(); }

    // Cancels a document whose rows this transaction takes out of the ledger. Until the commit the ledger
    // does not follow it, and a failure names it.
    startup::ResultadoERP Anula(const startup::ChaveDocumento& chave, Leitura leitura);
    // Cancels the document that another one replaces. Refused or not, the replacement goes on: a document
    // that stays in force is named once it is done. True when it was cancelled.
    bool AnulaSubstituido(const startup::ChaveDocumento& chave);
    // Has a failure offer this document to the ERP for cancellation, as if it had been created here.
    void Anota(const startup::ChaveDocumento& chave) { DocsCriados.push_back(chave); }

    // Commits; what ERP and ledger hold now agrees, but for replaced documents that the ERP kept in force.
    void Confirma();

    // Names those. After Confirma: until they are named, the confirmation is not done.
    void AvisaPorAnular();

    // Ends a transaction that nothing was written in, by committing it: the user was told why.
    void Desiste(const std::string& porque);

  private:
    // A cancellation asked of the ERP, and whether it is known to have been carried out.
    struct Anulacao {
        startup::ChaveDocumento chave;
        bool certa = false;
    };

    void anuncia_anulacao(const startup::ChaveDocumento& chave);
    startup::ResultadoERP pede_anulacao(const startup::ChaveDocumento& chave, Leitura leitura);
    void compensa(const std::exception& falha, const std::string& texto_erro);
    void desfaz_transaccao();
    void anula_criados(Compensacao& fim);
    void avisa_por_saber(Compensacao& fim);
    void avisa_por_anular(const std::vector<startup::ChaveDocumento>& documentos);
    void avisa(const std::string& texto);
    void relanca_caixa();
    void avisa_por_verificar(const std::string& texto, Compensacao& fim);
    void conta_feita();
    void conta(const std::function<void(Observador&)>& passo);

    Meios meios_;
    std::vector<startup::ChaveDocumento> DocsCriados;
    std::vector<std::string> por_nomear_;           // asked for and perhaps created, their keys unknown
    std::vector<Anulacao> anulacoes_;               // that the ledger has not confirmed
    std::vector<startup::ChaveDocumento> PorAnular; // that this confirmation replaces and the ERP kept
    bool iniciada_ = false;
    bool confirmada_ = false;
    bool feita_ = false;
    bool falhou_ = false;
    std::exception_ptr caixa_falhada_; // the first box of a compensation that could not be shown
};

} // namespace orvex::confirmacao
