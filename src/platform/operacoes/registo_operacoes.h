// The operation log: who started the program on what, what was posted, refused and shown, what failed though
// nobody was told, what was slow. One line for each; docs/installation.md tells where it is.
//
// No password is in it, no ordinary statement, and no values of rows and documents but keys, codes and
// weights. Whatever is wrong with the log stops nothing.
#pragma once

#include "confirmacao/observador.h"
#include "platform/operacoes/ficheiro_rotativo.h"
#include "platform/operacoes/linha.h"
#include "platform/operacoes/ouvinte.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orvex::platform::operacoes {

class RegistoOperacoes : public Ouvinte, public confirmacao::Observador {
  public:
    static constexpr std::chrono::milliseconds demora{1000}; // what takes so long is slow

    // `diz` is told once, the first time that a line could not be written.
    RegistoOperacoes(std::filesystem::path pasta, std::function<void(const std::string&)> diz);

    bool avariado() const { return avariado_; } // a line could not be written

    void inicio(const std::string& versao, const std::string& modo);
    void empresa(const std::string& nome, const std::string& motor, const std::string& controlador);
    // A box, before it is shown; and what the user answered where he had a choice.
    void caixa(const std::string& texto);
    void resposta(const std::string& dada);
    void falha(const std::string& texto); // that ends the program; one that ends a screen is told in its box
    void engolida(const std::string& texto) noexcept
        override; // that nobody is told of: the program knows what to do about it
    void fim(const std::string& como);

    // Ouvinte
    void depois(const Operacao& operacao, const Fim& fim) override;
    void segredo(const std::string& texto) override { segredos_.junta(texto); }

    // Observador
    void intencao(const confirmacao::Intencao& intencao) override;
    void depois_do_erp(const confirmacao::PedidoERP& pedido,
                       const confirmacao::RespostaERP& resposta) override;
    void feita() noexcept override;
    void compensada(const confirmacao::Compensacao& compensacao) noexcept override;

  private:
    using Relogio = std::chrono::steady_clock;

    // Of the confirmation that is running.
    struct Confirmacao {
        confirmacao::Intencao intencao;
        Relogio::time_point inicio;
        std::vector<startup::ChaveDocumento> criados, anulados; // as the ERP said
    };

    Linha linha(const char* acontecimento) const { return {acontecimento, segredos_}; }
    Linha linha_da_confirmacao(const char* desfecho) const;
    void escreve(const Linha& linha) noexcept;

    FicheiroRotativo ficheiro_;
    std::function<void(const std::string&)> diz_;
    Segredos segredos_;
    std::optional<Confirmacao> confirmacao_;
    bool avariado_ = false;
};

} // namespace orvex::platform::operacoes
