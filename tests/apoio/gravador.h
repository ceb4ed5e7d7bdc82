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
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvex::testes {

struct Diario : platform::operacoes::Ouvinte {
    using Operacao = platform::operacoes::Operacao;
    using Especie = Operacao::Especie;
    // Of failing: an ERP operation can also refuse, and of a commit nobody may know whether it was done.
    // Through automation a component can also say nothing of its failure, give an answer as another type, or
    // end.
    enum class Maneira {
        lanca,
        recusa,
        faz_e_lanca,
        perde,
        sem_descricao,
        como_texto,
        como_real,
        como_nulo,
        termina,
        faz_e_termina
    };
    // What else fails, once the step has failed.
    enum class Depois { nada, anulacao_recusada, tudo_lanca };

    std::vector<std::string> linhas;
    int passos = 0;
    int falha_no = 0; // the step that fails, from 1; 0 is none
    Maneira maneira = Maneira::lanca;
    std::optional<Maneira> do_commit{}; // in which the next commit fails, whatever its step
    Depois depois_disso = Depois::nada;
    bool so_do_erp = false; // only what the ERP answers is a step
    bool falhou = false;
    bool a_recusar = false;                              // the operation that begins
    std::optional<Maneira> a_estragar;                   // its answer, by the component
    std::function<void(const std::string& linha)> espia; // sees each statement or operation before it runs
    std::function<void(const Operacao&)> momento;        // before anything at all is asked for

    void antes(const Operacao& esta) override;
    void depois(const Operacao& esta, const platform::operacoes::Fim& fim) override;

    // What others could see, or what could show what they did: not what is only done in the program's memory.
    static bool sai_do_programa(const Operacao& esta);

    void passo(const std::string& linha) { linhas.push_back(linha); }
    // What begins so fails, each time, before it runs.
    void lanca_em(const std::string& inicio, const auto& falha) {
        espia = [=](const std::string& linha) {
            if (linha.starts_with(inicio)) throw falha;
        };
    }
    std::string texto() const;
    void recomeca() { *this = Diario{}; }

  private:
    bool tambem(Depois qual) const { return falhou && depois_disso == qual; }
    bool e_passo(const Operacao& esta) const;
    void escreve(const Operacao& esta);
};

// Whatever is called of a document goes through the session.
class SessaoERPDesviada : public platform::erp::SessaoERPEmbebida {
  public:
    startup::ReferenciaERP CriaObjecto(const std::string& classe) override;
    std::int16_t SubmeteDocumento(std::int16_t especie, const startup::ReferenciaERP& documento) override;
    startup::ReferenciaERP DocumentoSubmetido() override;

    using Argumentos = startup::ObjectoERP::Argumentos;
    virtual startup::ValorERP chama(const startup::ReferenciaERP& real, std::string_view membro,
                                    Argumentos& argumentos) = 0;
    inline static const startup::ResultadoERP recusado{false, "O ERP recusou."};
};

// Refuses what the record says.
class SessaoERPQueRecusa : public SessaoERPDesviada {
  public:
    explicit SessaoERPQueRecusa(Diario& diario) : diario_(diario) {}

    startup::ChaveDocumento CriaDocStock(const startup::PedidoDocStock& pedido) override {
        return recusa() ? startup::ChaveDocumento{} : SessaoERPEmbebida::CriaDocStock(pedido);
    }
    std::int16_t SubmeteDocumento(std::int16_t especie, const startup::ReferenciaERP& documento) override {
        return recusa() ? std::int16_t{-1} : SessaoERPDesviada::SubmeteDocumento(especie, documento);
    }
    startup::ResultadoERP AnulaDocumento(std::int16_t um, const startup::ChaveDocumento& chave) override {
        return recusa() ? recusado : SessaoERPEmbebida::AnulaDocumento(um, chave);
    }
    startup::ResultadoERP ResultadoUltimo() override {
        return recusada_ ? recusado : SessaoERPEmbebida::ResultadoUltimo();
    }
    startup::ValorERP chama(const startup::ReferenciaERP& real, std::string_view membro,
                            Argumentos& argumentos) override;

  private:
    bool recusa() { return recusada_ = std::exchange(diario_.a_recusar, false); }

    Diario& diario_;
    bool recusada_ = false;  // the last operation was refused here, not by the real session
    bool documento_ = false; // what was called last of a document
};

// The emulation of the ERP, recorded and failing as the record says; on Windows, where the environment says
// ORVEX_TESTE_ERP=automacao, behind a component, which the program's own client talks to. Any other value
// there is the name of a component's class; what it is asked is recorded.
std::unique_ptr<startup::SessaoERP> erp_gravado(Diario& diario);

bool pela_automacao(); // as the environment says, where there is automation
std::unique_ptr<startup::SessaoERP> pelo_caminho_pedido(std::unique_ptr<startup::SessaoERP> real,
                                                        Diario& diario);

} // namespace orvex::testes
