// What records everything the program asks of the database and of the ERP, to the letter and in order, and
// fails at any step asked for.
//
// A step is a statement, a row update, the begin, the lock or the commit of a transaction, the creation of an
// ERP object, a member put, got or called, a submission, a cancellation. Of a step that fails nothing was
// done (a refused commit leaves the transaction open), or all of it was, and only the answer is lost.
#pragma once

#include "platform/erp/sessao_erp_embebida.h"
#include "platform/operacoes/sessao_erp_ouvida.h"
#include "startup/sessao_bd.h"
#include "tests/servidor/empresa_no_servidor.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace orvex::testes {

struct Diario : platform::operacoes::Ouvinte {
    using Operacao = platform::operacoes::Operacao;
    using Especie = Operacao::Especie;
    // Of failing: an ERP operation can also refuse, and of a commit nobody may know whether it was done.
    enum class Maneira { lanca, recusa, faz_e_lanca, perde };
    // What else fails, once the step has failed.
    enum class Depois { nada, anulacao_recusada, tudo_lanca };

    std::vector<std::string> linhas;
    int passos = 0;
    int falha_no = 0; // the step that fails, from 1; 0 is none
    Maneira maneira = Maneira::lanca;
    Depois depois_disso = Depois::nada;
    bool falhou = false;
    bool a_recusar = false;                              // the operation that begins
    std::function<void(const std::string& linha)> espia; // sees each statement or operation before it runs
    std::function<void(const Operacao&)> momento;        // before anything at all is asked for

    void antes(const Operacao& esta) override;
    void depois(const Operacao& esta, const platform::operacoes::Fim& fim) override;

    void passo(const std::string& linha) { linhas.push_back(linha); }
    std::string texto() const;
    void recomeca() { *this = Diario{}; }

  private:
    bool tambem(Depois qual) const { return falhou && depois_disso == qual; }
    void escreve(const Operacao& esta);
};

// Refuses what the record says.
class SessaoERPQueRecusa : public platform::erp::SessaoERPEmbebida {
  public:
    explicit SessaoERPQueRecusa(Diario& diario) : diario_(diario) {}

    startup::ReferenciaERP CriaObjecto(const std::string& classe) override;
    startup::ChaveDocumento CriaDocStock(const startup::PedidoDocStock& pedido) override {
        return recusa() ? startup::ChaveDocumento{} : SessaoERPEmbebida::CriaDocStock(pedido);
    }
    std::int16_t SubmeteDocumento(std::int16_t especie, const startup::ReferenciaERP& documento) override;
    startup::ReferenciaERP DocumentoSubmetido() override;
    startup::ResultadoERP AnulaDocumento(std::int16_t um, const startup::ChaveDocumento& chave) override {
        return recusa() ? recusado : SessaoERPEmbebida::AnulaDocumento(um, chave);
    }
    startup::ResultadoERP ResultadoUltimo() override {
        return recusada_ ? recusado : SessaoERPEmbebida::ResultadoUltimo();
    }

  private:
    bool recusa() { return recusada_ = std::exchange(diario_.a_recusar, false); }

    inline static const startup::ResultadoERP recusado{false, "O ERP recusou."};
    Diario& diario_;
    bool recusada_ = false; // the last operation was refused here, not by the real session
};

class SessaoERPGravada : public platform::operacoes::SessaoERPOuvida {
  public:
    explicit SessaoERPGravada(Diario& diario)
        : SessaoERPOuvida(std::make_unique<SessaoERPQueRecusa>(diario), diario) {}
};

} // namespace orvex::testes
