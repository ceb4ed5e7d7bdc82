// A database session that tells a listener what is asked of it and of its record sets, and changes nothing:
// neither what is asked, nor the answers, nor the kind of a failure.
#pragma once

#include "platform/operacoes/ouvinte.h"
#include "startup/sessao_bd.h"

namespace orvex::platform::operacoes {

class SessaoBDOuvida : public startup::SessaoBD {
  public:
    // The listener must outlive the session and its sets.
    SessaoBDOuvida(std::unique_ptr<startup::SessaoBD> real, Ouvinte& ouvinte)
        : real_(std::move(real)), ouvinte_(ouvinte) {}

    bool Abre(const std::string& ligacao) override;

    std::unique_ptr<startup::ConjuntoRegistos> Consulta(const std::string& sql) override;
    std::unique_ptr<startup::ConjuntoRegistos> AbreActualizavel(const std::string& sql) override;
    void Executa(const std::string& sql) override;

    void IniciaTransaccao() override;
    void Tranca() override;
    void ConfirmaTransaccao() override;
    void AnulaTransaccao() override;
    bool EmTransaccao() override;

    // The work goes through this session, and tells of itself; what fails of it later is told as what it was.
    void EmPasso(const std::vector<std::string>& perguntas, const std::function<void()>& trabalho) override;
    void EmExclusivo(const std::function<void()>& trabalho) override { real_->EmExclusivo(trabalho); }
    std::size_t Comprimento(const std::string& tabela, const std::string& coluna) override;

    // Lists are listened to as well.
    startup::SessaoBD& Ligacao() override { return *this; }

    void Fecha() override { real_->Fecha(); }

  protected:
    startup::SessaoBD& real() { return *real_; }

  private:
    std::unique_ptr<startup::SessaoBD> real_;
    Ouvinte& ouvinte_;
};

} // namespace orvex::platform::operacoes
