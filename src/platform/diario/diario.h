// The journal of the confirmations of a running program: each one's intention and steps are on the disk
// before they are taken, so that whatever kills the program, the next start can tell what became of them.
#pragma once

#include "confirmacao/observador.h"
#include "platform/diario/gaveta.h"
#include "platform/diario/recuperacao.h"
#include "startup/sessao_bd.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvex::platform::diario {

struct Identidade {
    std::string empresa{};
    std::string utilizador{}; // of the machine
    std::string maquina{};
};

// What it cannot write it refuses: before the confirmation begins with Recusada, later by throwing.
class Diario : public confirmacao::Observador {
  public:
    struct Meios {
        Identidade identidade;
        // An open session that nobody else uses: what the journal reads is no part of the confirmation.
        std::function<std::unique_ptr<startup::SessaoBD>()> abre_sessao;
        // Settles a journal of this very program, left open because nobody could tell how it ended.
        std::function<Tratamento(FicheiroDiario&)> resolve;
        std::function<void(const std::string&)> engole; // a failure that changes nothing
    };

    Diario(Gaveta& gaveta, Meios meios) : gaveta_(gaveta), meios_(std::move(meios)) {}

    // From the intention to the last box of a confirmation.
    bool a_meio() const { return ficheiro_ != nullptr; }
    // The journal of the confirmation that is running.
    std::filesystem::path caminho() const {
        return a_meio() ? ficheiro_->caminho() : std::filesystem::path();
    }

    void intencao(const confirmacao::Intencao& intencao) override;
    void antes_do_erp(const confirmacao::PedidoERP& pedido) override;
    void depois_do_erp(const confirmacao::PedidoERP& pedido,
                       const confirmacao::RespostaERP& resposta) override;
    void antes_de_confirmar() override;
    void feita() noexcept override;
    void compensada(const confirmacao::Compensacao& fim) noexcept override;

  private:
    void resolve_pendentes();
    Cabecalho cabecalho(const confirmacao::Intencao& intencao);
    startup::SessaoBD& sessao();
    std::optional<Resultado> assente(const confirmacao::Compensacao& fim);
    bool anulado(const startup::ChaveDocumento& chave); // read back from the ERP
    void acaba_se(const std::function<std::optional<Resultado>()>& assente) noexcept;
    void acaba(Resultado resultado) noexcept;

    Gaveta& gaveta_;
    Meios meios_;
    std::unique_ptr<startup::SessaoBD> sessao_;
    std::unique_ptr<FicheiroDiario> ficheiro_; // of the confirmation that is running
    std::vector<std::unique_ptr<FicheiroDiario>> pendentes_;
};

} // namespace orvex::platform::diario
