// Settles what a program that died, or a server that did not answer, left unfinished. Everything is decided
// by what ERP and ledger hold now, read before it is decided and again before and after it is acted on, so
// that a recovery that dies is taken up by the next. Nothing is ever cancelled without being told to.
#pragma once

#include "base/formato_regional.h"
#include "confirmacao/observador.h"
#include "platform/diario/decisao.h"
#include "platform/diario/gaveta.h"
#include "startup/sessao_bd.h"
#include "startup/sessao_erp.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace orvex::platform::diario {

// Who answers for the user. Never asked under a lock.
class Atendimento {
  public:
    virtual ~Atendimento() = default;
    // False when it went without having been read, because the program is ending.
    virtual bool diz(const std::string& texto) = 0;
    // True for the first button; the other is the default, and what a box closed without an answer means.
    virtual bool aceita(const std::string& texto, const char* sim, const char* nao) = 0;
};

// How the ledger's rows name notes and their returns.
struct DocumentosDeGuias {
    std::string SerieEscrita; // of notes, as the parameters file writes it
    std::string TpDocDevolucao;
};

struct Tratamento {
    bool assente = false; // settled for good
    bool dito = false;    // the user was told something of it
};

class Recuperacao {
  public:
    // Before an ERP out of process can be known to have nothing more to come.
    static constexpr std::chrono::minutes segunda_vista{10};

    struct Meios {
        startup::SessaoBD& BD;
        startup::SessaoERP& gERP;
        Atendimento& atendimento;
        const base::FormatoRegional& formato;
        std::string empresa; // whose journals these are
        std::function<DocumentosDeGuias()> guias;
        confirmacao::Observador& observador;
        std::function<std::chrono::sys_seconds()> agora;
    };

    Recuperacao(Gaveta& gaveta, Meios meios) : gaveta_(gaveta), meios_(std::move(meios)) {}

    // Every unfinished journal that nobody holds. What cannot be read or settled is said, and stays.
    void trata_tudo();
    // One that this program holds. Throws when it, or what became of it, cannot be read.
    Tratamento trata(FicheiroDiario& ficheiro);

  private:
    Decisao decide_agora(const Passos& passos);
    bool oferece(FicheiroDiario& ficheiro, const Passos& passos, const Decisao& decisao);
    bool anula(FicheiroDiario& ficheiro, const Passos& passos, const startup::ChaveDocumento& chave);
    bool completa(const Passos& passos, const startup::ChaveDocumento& chave);
    void retira_do_livro(confirmacao::Fluxo fluxo, const startup::ChaveDocumento& chave);
    bool espera(FicheiroDiario& ficheiro, const Passos& passos);
    std::string pede_anulacao(const startup::ChaveDocumento& chave);
    std::string descricao(const Passos& passos) const;

    Gaveta& gaveta_;
    Meios meios_;
};

} // namespace orvex::platform::diario
